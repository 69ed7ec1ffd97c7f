// A deck of springs in a row in the making: trusses along X from a fixed node 1, masses, damping, records, dynamic
// macros.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace tidearc::test {

/// The cards of a DYN2 macro; the defaults take one iteration a step and print nothing.
struct Dyn2Cards {
  double DT = 0.0, ALPHA = 0.0, BETA = 0.0, DMASS = 0.0;
  int NSTEP = 1, NINIT = 0, KGRND = 0, NFORCE = 0, NIMPOS = 0;
  int KPNOD = 0, KPELM = 0, KPENV = 0, KRST = 0, KENV = 0, KDUMP = 0, KPOST = 0, KRISAV = 0;
  int MAXIT = 1, KSSTF = 1, KISTF = 0, KISTA = 1, KTERM = 0;
  double TOL = 1e-9;
  int KUTYPE = 0, KUMOM = 0, NTOP = 0, ISLULT = 0;
  std::string commands = "";  ///< initial condition cards, ground acceleration card, force and displacement commands
};
/// The three control cards and the commands, without the macro card.
std::string dyn2_text(const Dyn2Cards& cards);

/// Velocity and acceleration along X of a node.
std::string initial_card(int node, double velocity, double acceleration = 0.0);
/// A record that acts along X on a node from its own time 0 on.
std::string command_card(int node, int record, double scale = 1.0, double time = 0.0);
/// Ground acceleration along X.
std::string ground_card(int record, double scale = 1.0, double time = 0.0);

/// Records: tables of points (time, value) and a sine of 10 sin(2 pi t) at points 0.02 s apart. `with_kind` for force
/// and displacement records.
std::string table_record(const std::vector<std::array<double, 2>>& points, bool with_kind);
std::string sine_record(double amplitude, double interval, int points);

/// Springs of EA/L `springs[k]` between nodes k + 1 and k + 2, with `masses[k]` on node k + 2; everything moves along X
/// alone.
struct RowDeck {
  std::vector<double> springs, masses;
  double BETAO = 0.0, BETAT = 0.0;
  double ratio = 0.0, yield = 0.0;            ///< hardening, and yield force of a spring of EA/L 1
  int NGACC = 0, NDFRC = 0, NIDSP = 0;        ///< records
  std::string ground, forces, displacements;  ///< their cards
  int IENRGY = 0;
  std::string storage = " CORE SYMM         0";
  std::string patterns, static_card = "";  ///< static loads: pattern cards, and the card of their counts
  std::string macros;                      ///< macro cards with what follows them

  void dyn2(const Dyn2Cards& cards) { macros += "DYN2    CONSTANT STEPS\n" + dyn2_text(cards); }
  std::string problem(const std::string& command = "STAR") const;  ///< up to the NONE card
  std::string text(const std::string& command = "STAR") const { return problem(command) + " STOP\n"; }
};
/// A mass on one spring: EA/L and mass.
RowDeck one_mass(double spring, double mass);

}  // namespace tidearc::test
