// Node envelopes: how they grow, and their table.
#include <gtest/gtest.h>

#include "node_model.h"
#include "results/reports.h"

namespace tidearc::test {
namespace {

double value(int vector, int e) { return equation_vector(vector)(e); }

void step_to(double time, double u1, double u2) {
  response.TIME = time;
  equation_vector(arrays.U)(1) = u1;
  equation_vector(arrays.U)(2) = u2;
  update_node_envelopes();
}

TEST(NodeEnvelopes, KeepLargestAndSmallestValuesWithTheirTimes) {
  Scratch scratch;
  free_nodes(1);
  carve_analysis_arrays();
  clear_node_envelopes();
  step_to(1.0, 2.0, -1.0);
  step_to(2.0, 3.0, -5.0);
  step_to(3.0, -1.0, -4.0);
  EXPECT_EQ(value(arrays.ENVMAX, 1), 3.0);
  EXPECT_EQ(value(arrays.TMAX, 1), 2.0);
  EXPECT_EQ(value(arrays.ENVMIN, 1), -1.0);
  EXPECT_EQ(value(arrays.TMIN, 1), 3.0);
  EXPECT_EQ(value(arrays.ENVMIN, 2), -5.0);
  EXPECT_EQ(value(arrays.TMIN, 2), 2.0);
}

TEST(NodeEnvelopes, StartAtZeroSoThatOneSidedMotionKeepsAZeroOnTheOther) {
  Scratch scratch;
  free_nodes(1);
  carve_analysis_arrays();
  clear_node_envelopes();
  step_to(1.0, 2.0, -1.0);
  EXPECT_EQ(value(arrays.ENVMIN, 1), 0.0);
  EXPECT_EQ(value(arrays.TMIN, 1), 0.0);
  EXPECT_EQ(value(arrays.ENVMAX, 2), 0.0);
}

TEST(NodeEnvelopes, TheFirstOfEqualExtremesKeepsItsTime) {
  Scratch scratch;
  free_nodes(1);
  carve_analysis_arrays();
  clear_node_envelopes();
  step_to(1.0, 2.0, 0.0);
  step_to(2.0, 2.0, 0.0);
  EXPECT_EQ(value(arrays.TMAX, 1), 1.0);
}

TEST(NodeEnvelopes, ANewMacroStartsFromZero) {
  Scratch scratch;
  free_nodes(1);
  carve_analysis_arrays();
  step_to(1.0, 2.0, -1.0);
  clear_node_envelopes();
  for (const int vector : {arrays.ENVMAX, arrays.TMAX, arrays.ENVMIN, arrays.TMIN}) {
    for (int e = 1; e <= NEQ1(); ++e) EXPECT_EQ(value(vector, e), 0.0);
  }
}

TEST(NodeEnvelopes, TheSinkStaysZero) {
  Scratch scratch;
  free_nodes(1);
  carve_analysis_arrays();
  equation_vector(arrays.U)(NEQ1()) = 9.0;
  update_node_envelopes();
  EXPECT_EQ(value(arrays.ENVMAX, NEQ1()), 0.0);
}

TEST(NodeEnvelopeTable, HasATitleAndFourLinesForEachNode) {
  Scratch scratch;
  free_nodes(2);
  node_ID()(2, 6) = NEQ1();
  carve_analysis_arrays();
  clear_node_envelopes();
  step_to(0.0, 2.0, -1.0);
  response.TIME = 1.5;
  equation_vector(arrays.U)(11) = -0.5;  // rotation about Y of node 2
  update_node_envelopes();
  NODENV();
  const std::string zero = "       0.00000E+00", zero_time = "       0.000E+00  ";
  const auto repeat = [](const std::string& text, int n) {
    std::string result;
    for (int k = 0; k < n; ++k) result += text;
    return result;
  };
  const std::string expected =
      "\n1" + std::string(47, '*') + "\n NODAL DISPLACEMENT ENVELOPES, TIME = 0.1500E+01\n" + std::string(48, '*') +
      "\n\n\n     NODE              X-DISPLACEMENT    Y-DISPLACEMENT    Z-DISPLACEMENT        X-ROTATION"
      "        Y-ROTATION        Z-ROTATION\n" +
      "\n        1  POSITIVE       0.20000E+01" + repeat(zero, 5) + "\n           TIME    " + repeat(zero_time, 6) +
      "\n           NEGATIVE" + zero + "      -0.10000E+01" + repeat(zero, 4) + "\n           TIME    " +
      repeat(zero_time, 6) + "\n" +  //
      "\n        2  POSITIVE" + repeat(zero, 6) + "\n           TIME    " + repeat(zero_time, 6) +
      "\n           NEGATIVE" + repeat(zero, 4) + "      -0.50000E+00" + zero + "\n           TIME    " +
      repeat(zero_time, 4) + "       0.150E+01  " + zero_time + "\n";
  EXPECT_EQ(trimmed(scratch.report()), trimmed(expected));
}

TEST(NodeEnvelopeTable, StandsForEveryNodeWhateverThePrintLists) {
  Scratch scratch;
  free_nodes(4);
  output.NPR = {0, 0, 0};
  carve_analysis_arrays();
  NODENV();
  EXPECT_EQ(count_of(scratch.report(), "POSITIVE"), 4);
  EXPECT_EQ(scratch.report().find("ELEMENT GROUP"), std::string::npos);  // no groups, no titles
}

}  // namespace
}  // namespace tidearc::test
