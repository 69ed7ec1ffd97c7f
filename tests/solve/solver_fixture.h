// A problem without elements: nodes with equations, analysis vectors, and a matrix that a test fills by hand.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/scratch.h"

namespace tidearc::test {

class SolverProblem : public testing::Test {
 protected:
  SolverProblem();
  ~SolverProblem() override;

  /// Makes a model of `NUMNP` nodes whose components 1..n of the ID table, read node by node, are equations 1..NEQ.
  void number_nodes(int NUMNP, int NEQ);
  /// Lays down the analysis vectors and a matrix with full columns, all zero.
  void make_full_profile();
  /// Writes nodal force patterns (loads all 1.0) and prescribed patterns (entry per equation, 1.0E10 free) on NT10.
  void write_patterns(int force_patterns, const std::vector<std::vector<double>>& prescribed);

  Scratch scratch;
};

/// Sets entry (i, j) of the assembled matrix, i not above j.
void set_entry(int i, int j, double value);

}  // namespace tidearc::test
