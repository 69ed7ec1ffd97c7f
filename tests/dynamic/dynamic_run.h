// Runs the macros of a deck in-process and keeps the state behind them with all its digits; and a deck that is read and
// then left to the test.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dynamic/step.h"
#include "support/run_deck.h"
#include "support/scratch.h"

namespace tidearc::test {

struct DynamicResult {
  RunResult files;
  std::vector<double> U, VEL, ACC, R;  ///< by equation
  Energies energy;
  double TIME = 0.0;
  double diagonal = 0.0;  ///< of the assembled matrix, first equation
  int formations = 0;     ///< NSTUPD
  int NLSTEP = 0;
};
/// A deck of one problem, with STAT, DYN1, DYN2 and EIGN macros, up to its NONE card.
DynamicResult run_dynamic(const std::string& deck, const std::string& pool = "4M");

/// One row of the table of a DYN2 macro.
struct Dyn2Row {
  int step, iteration, sequence, formations;
  double time, applied, unbalance;
  double unbalance_energy, external, kinetic, elastic, viscous;
};
std::vector<Dyn2Row> dyn2_rows(const std::string& progress);

/// A deck that has been read up to its first macro card.
class OpenProblem {
 public:
  explicit OpenProblem(const std::string& deck);
  ~OpenProblem();
  OpenProblem(const OpenProblem&) = delete;
  OpenProblem& operator=(const OpenProblem&) = delete;

  Scratch scratch;
};

}  // namespace tidearc::test
