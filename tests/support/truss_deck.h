// A small truss deck in the making: nodes, bars, load patterns and STAT segments in, card images out.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace tidearc::test {

/// One load segment; the defaults take the whole load in one step of at most ten iterations and stop when they fail.
struct SegmentCards {
  double STEP0 = 1.0;
  int NSTEPS = 1;
  int MAXIT = 10;
  int KTERM = 1;
  double FQUIT = 0.0;
  int KSSTF = 1;
  int KISTF = 1;
  int KISTA = 0;
  int KPRINT = 2;
  int KEVENT = 0;
  int MACPR = 0;
  int KPOST = 0;
  int KPOSTN = 0;
  double ULTFAC = 0.0;
  int IROB = 0;
  int KUTYPE = 0;
  int KUMOM = 0;
  double TOLU = 1e-6;
  double TOLL = 0.0;
  double USCALE = 0.0;
  double SUP = 0.0;
  double SLOW = 0.0;
  double TOLS = 0.0;
  int NTOP = 0;
  std::string card4 = "";              ///< restep card, used when KTERM is 0
  std::vector<double> factors{1.0};    ///< nodal pattern factors
  std::vector<double> pfactors{};      ///< prescribed displacement factors
  std::vector<double> temperatures{};  ///< temperature pattern factors
  std::vector<double> generated{};     ///< self weight, buoyancy and current factors
  int KSTEP = 1, KNMS = 0;
  double SEGVAL = 0.0;
  int NSVEC = 0, KDIR = 1, KITER = 1, KIPAR = 0;
  std::string vectors = "";  ///< stepping, direction and iteration vectors: their cards, see vector_cards
  int KBFGS = 0;
  double ARCL = 0.0, STEPSZI = 0.0;
  int NLS = 1;
};

/// A vector of one term: node, component, factor, under its increment scale factor.
std::string vector_cards(int node, int component, double factor, double scale = 1.0);

/// The cards of a segment.
std::string segment_text(const SegmentCards& segment);
/// A number in ten columns with all the digits that fit.
std::string ten(double value);

class TrussDeck {
 public:
  std::string title = "P4.314  A TRUSS";
  std::string command = "STAR";

  int node(double x, double y, double z);
  void fix(int node, const std::string& codes);  ///< six digits
  /// Material: modulus, hardening ratio, yield stresses in tension and compression.
  int material(double E, double ratio = 0.0, double tension = 0.0, double compression = 0.0, double ductility = 0.0,
               const std::string& overshoot = "");  ///< overshoot strain at yield, as on the card
  int section(double area);
  void bar(int i, int j, int material = 1, int section = 1, int geometry = 0, int buckling = 0, double force = 0.0);
  /// Curve card of the bar that was added last (BUCK code 2): deformation, force, deformation, force, ..
  void curve(const std::vector<double>& pairs);
  /// A nodal pattern with one command: forces, and a moment about Z.
  void pattern(int node, double fx, double fy, double fz, double mz = 0.0);
  void prescribe(int node, int component, double value);  ///< a prescribed pattern with one entry
  void stat(const std::vector<SegmentCards>& segments);
  void macro(const std::string& card);

  std::string text() const;     ///< the whole deck, NONE and STOP included
  std::string problem() const;  ///< the same without the STOP card

 private:
  std::string nodes_, fixes_, materials_, sections_, bars_, patterns_, prescribed_, macros_;
  int node_count_ = 0, fix_count_ = 0, material_count_ = 0, section_count_ = 0, bar_count_ = 0, pattern_count_ = 0,
      prescribed_count_ = 0;
};

/// One bar of length 10 and EA 1000 along X from a fixed node 1 to node 2, which moves along X alone; EA/L is 100. With
/// a yield stress it yields at that force in tension and compression and hardens by `ratio`.
TrussDeck bar_along_x(double ratio = 0.0, double yield = 0.0);
/// The same, pulled at node 2.
TrussDeck loaded_bar(double load, double ratio = 0.0, double yield = 0.0);

/// The shallow two-bar truss: bars of EA 1,000,000 that turn with their ends, from fixed nodes 1 and 3 at (-10, 0) and
/// (10, 0) in the plane of X and Z to node 2, the apex, at (x, 0.5), with `load` downwards on it. An apex in the middle
/// moves along Z alone, one beside it along X too. With a yield stress the bars yield and harden as above.
TrussDeck two_bar_truss(double load, double x = 0.0, double ratio = 0.0, double yield = 0.0);

/// Nodes 1, 2 and 3 at 0, 10 and `end` along X; the first is fixed, the others move along X alone.
TrussDeck nodes_in_a_row(double end);
/// The same with bars 1-2 and 2-3 of modulus 1000 and areas 1 and `second_area`; EA/L of the first is 100. With a yield
/// stress both yield at it in tension and compression and harden by `ratio`.
TrussDeck bars_in_a_row(double end, double second_area, double ratio = 0.0, double yield = 0.0);

}  // namespace tidearc::test
