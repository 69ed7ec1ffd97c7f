// Bars between a few nodes: a model that the assembly can walk over.
#pragma once

#include <string>
#include <vector>

#include "support/scratch.h"

namespace tidearc::test {

struct BarNode {
  double x = 0.0, y = 0.0, z = 0.0;
  std::string free;  ///< components 1..6 that are free, as digits, such as "123456"
};

struct Bar {
  int I = 1, J = 2;
  double force = 0.0;
  int KGEOM = 0;
};

/// Bars of E A = 1000 in the work array, read by element input, ready for assembly; no forces, no displacements. The
/// storage scheme is that of a storage card.
class BarModel {
 public:
  BarModel(const std::vector<BarNode>& model_nodes, const std::vector<Bar>& bars, int KSTOR = 1, int NWDBLK = 0);
  /// The same with cards of element groups of any type.
  BarModel(const std::vector<BarNode>& model_nodes, const std::string& cards, int groups, int KSTOR, int NWDBLK);
  ~BarModel();

  /// Entry of the assembled matrix, 0 outside the profile; of two triangles the one in which it stands.
  double stiffness(int i, int j) const;
  double factor(int i, int j) const;  ///< entry of KFAC, i not above j, inside the profile
  std::string report() const { return scratch_.report(); }
  std::size_t report_size() const { return scratch_.report().size(); }
  std::string errors() const { return scratch_.errors(); }
  std::string progress() const { return scratch_.contents("TAP53"); }
  /// As a macro begins: everything is to be formed.
  void begin_macro() const;
  /// As the first step of a dynamic macro: its constants, its time, everything to be formed.
  void begin_dynamics(double DT, double AB = 0.0, double DMASS = 0.0) const;
  void put_mass(int equation, double mass) const;

 private:
  Scratch scratch_;
};

}  // namespace tidearc::test
