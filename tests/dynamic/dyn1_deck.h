// Trusses in a row on X under variable steps: deck in the making, whole macros in process, and what they leave.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "dynamic/step.h"
#include "row_deck.h"

namespace tidearc::test {

/// The four cards of a DYN1 macro; the defaults step on with what they are given and end after NSMAX steps.
struct Dyn1CardValues {
  int KSOL = 2, KACC = 0;
  double DT = 0.1, ALPHA = 0.0, BETA = 0.0, DMASS = 0.0;
  int NINIT = 0, KGROUND = 0, NFORCE = 0, NIMPOSED = 0, KENVELOPE = 0;
  double DTMIN = 1.0E-6, DTMAX = 0.0, REDF = 0.5, INCF = 2.0, ERRUP = 1.0E10, ERRLO = 0.0;
  int NBELOW = 2, KMOMENT = 0;
  double PRECF = 0.0, PRECMX = 0.0;
  int NSMAX = 1;
  double TMAX = 1.0E6, UBMAX = 1.0E9, DISMAX = 0.0, EVMAX = 0.0;
  int NSUBMX = 0;
  double VCUT = 0.0;
  int NTOP = 0;
  double UBUP = 0.0, UBLO = 0.0;
  std::string outputs = "";   ///< card 4
  std::string commands = "";  ///< initial conditions, ground, forces, displacements
};
/// The macro with its cards.
std::string dyn1_text(const Dyn1CardValues& cards);
/// A DYN2 macro that iterates to equilibrium from the start of each step.
std::string iterated_macro(double DT, int NSTEP, const std::string& commands, double DMASS = 0.0, int MAXIT = 20);

/// One row of bars of length 10 from the fixed node 1 on; the other nodes move along X.
class Dyn1Deck {
 public:
  /// A bar from the last node to a new one: EA/L, mass of the new node; with a yield force it hardens by `ratio`.
  void bar(double stiffness, double mass, double ratio = 0.0, double yield = 0.0);
  void fix_last();  ///< the last node does not move
  void force_record(const std::vector<std::pair<double, double>>& points);
  void displacement_record(const std::vector<std::pair<double, double>>& points);
  void macro(const std::string& cards) { macros_ += cards; }
  /// The cards of a static prescribed pattern with one entry along X.
  void prescribe(int node, double value);

  double BETAO = 0.0, BETAT = 0.0;
  std::string storage = " CORE SYMM";
  std::string command = "STAR";
  int energies = 0;

  std::string text() const;

 private:
  std::string record(const std::vector<std::pair<double, double>>& points, const char* name) const;
  std::string nodes_, fixes_, masses_, materials_, sections_, bars_, forces_, displacements_, prescribed_, macros_;
  int node_count_ = 0, bar_count_ = 0, mass_count_ = 0, fix_count_ = 0, force_count_ = 0, displacement_count_ = 0,
      prescribed_count_ = 0;
};

/// A bar that yields at an extension of 0.01 (EA/L 100, hardening 0.1, yield force 1) with a mass of 1, and a record of
/// a constant force of 1.5.
Dyn1Deck bilinear_oscillator();

/// What stands behind a macro.
struct Snapshot {
  double TIME = 0.0, DT = 0.0, UB = 0.0, ERR = 0.0, level = 0.0, EFAC = 0.0;
  std::vector<double> U, VEL, ACC, R;
  Energies energy;
  std::vector<char> records;  ///< first portions of all element records, one behind the other
  int logged = 0;             ///< records on the element-state log
  int runmod = 0;
};

/// A line of a DYN1 macro on the progress file.
struct Dyn1Line {
  int type, step, substep, sequence, formations;
  double time, DT, applied, unbalance, ERR, displacement, energy_left, external, kinetic, elastic, viscous, level;
  int node, direction;
  double velocity;
};

struct MacroRun {
  int status = -1;
  std::string report, progress, levels, errors, top;
  std::vector<Snapshot> behind;  ///< one per macro
  std::vector<Dyn1Line> lines;
  const Snapshot& last() const { return behind.back(); }
};

/// Runs the macros of a deck of one problem one after the other, with a snapshot behind each.
MacroRun run_macros(const std::string& deck);
/// The same for a row with one DYN1 macro.
MacroRun run_one(Dyn1Deck deck, const Dyn1CardValues& cards);

}  // namespace tidearc::test
