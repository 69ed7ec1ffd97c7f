// A deck of points, springs (bars of unit length and modulus 1, so that their area is their stiffness) and masses, with
// an eigensolution card and macros; and what the report says of its modes.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace tidearc::test {

struct SpringDeck {
  std::string command = "STAR";
  std::string storage = " CORE SYMM         0";
  int IEIGN = 1, IBANDW = 0;
  std::string eigen_card = "    1";
  std::string gravity_card = "";  ///< with text, IGRAV is 1
  std::string patterns = "";      ///< text of nodal patterns, NFPAT of them
  int NFPAT = 0, NZDISP = 0;
  std::string macros = "EIGN\n\n";

  int point(double x, double y, double z, const std::string& codes);  ///< six digits, 1 held
  void mass(int node, const std::array<double, 3>& values);
  void mass(int node, double value) { mass(node, {value, value, value}); }
  void spring(int i, int j, double stiffness);
  void tie(int master, int slave);  ///< one displacement along X
  /// Gives one node axes of its own: X along a, Y along b.
  void turn(int node, const std::array<double, 3>& a, const std::array<double, 3>& b);
  void want(int NFREQ, double FCUT = 0.0, double FSHIFT = 0.0);
  /// Adds an EIGN macro in place of the one that stands; further ones with add_macro.
  void eign(int NPRINT, int NITEM = 0, int KSTURM = 0, double ZCUT = 0.0);
  std::string text() const;
  std::string problem() const;  ///< without the STOP card

 private:
  struct Spring {
    int i, j;
    double stiffness;
  };
  std::string points_, fixes_, masses_, ties_, systems_, assignments_;
  std::vector<Spring> springs_;
  int point_count_ = 0, mass_count_ = 0, tie_count_ = 0, system_count_ = 0;
};

/// A mass of 1 on a spring of stiffness 4 to a wall, free along X; node 1 is the wall, node 2 the mass.
SpringDeck oscillator();
/// n masses m in a row along X, springs of stiffness k between them, and to walls at both ends when held; they move
/// along X alone. Node 1 is the left wall; a free row has no walls, and node 1 is the first mass.
SpringDeck spring_chain(int n, double k, double m, bool held = true);

struct PrintedMode {
  double circular, frequency, period;
  std::vector<std::array<double, 6>> shape;  ///< by node
  std::array<double, 4> cut{};               ///< RX, RY, MX, MY
};
/// The modes of the first EIGN on a report.
std::vector<PrintedMode> printed_modes(const std::string& report);
/// The last eigenvalues that a run with additional printing tells, with eight digits; residuals likewise.
std::vector<double> last_values(const std::string& report, const std::string& kind = "EIGENVALUES");
/// Cycles that such a run took.
int cycles_of(const std::string& report);

}  // namespace tidearc::test
