// The node response print.
#include <gtest/gtest.h>

#include "node_model.h"
#include "results/reports.h"

namespace tidearc::test {
namespace {

/// Lays down the analysis vectors and gives equation e the displacement e/64.
void displace() {
  carve_analysis_arrays();
  for (int e = 1; e <= sizes.NEQ; ++e) equation_vector(arrays.U)(e) = e / 64.0;
}

TEST(NodeResponse, PrintsDisplacementsAndRotationsOfTheListOfAnAxis) {
  Scratch scratch("    2\n");
  free_nodes(3);
  output.NPR = {0, 1, 0};
  PRLIST();
  displace();
  const std::size_t echo = scratch.report().size();
  NODPRT();
  // Node 2: Y is equation 8, the rotation about Y equation 11.
  EXPECT_EQ(trimmed(scratch.report().substr(echo)),
            "\n\n      Y DISPLACEMENT RESPONSE AT NODES, TIME = 0.0000E+00\n\n\n"
            "      NODE NUMBER               2\n"
            "      DISPLACEMENT         0.12500E+00\n"
            "\n\n     YR     ROTATION RESPONSE AT NODES, TIME = 0.0000E+00\n\n\n"
            "      NODE NUMBER               2\n"
            "      DISPLACEMENT         0.17188E+00\n");
}

TEST(NodeResponse, DirectionsComeInTheOrderOfTheComponents) {
  Scratch scratch;
  free_nodes(1);
  output.NPR = {-1, -1, -1};
  displace();
  NODPRT();
  const std::string report = scratch.report();
  std::size_t last = 0;
  for (const std::string direction : {" X DISPLACEMENT", " Y DISPLACEMENT", " Z DISPLACEMENT", "XR     ROTATION",
                                      "YR     ROTATION", "ZR     ROTATION"}) {
    const std::size_t at = report.find("     " + direction + " RESPONSE AT NODES, TIME =");
    ASSERT_NE(at, std::string::npos) << direction;
    EXPECT_GT(at, last);
    last = at;
  }
}

TEST(NodeResponse, AnEmptyListPrintsNothing) {
  Scratch scratch;
  free_nodes(2);
  output.NPR = {0, 0, 0};
  displace();
  NODPRT();
  EXPECT_EQ(scratch.report(), "");
}

TEST(NodeResponse, NineNodesMakeTwoBlocksAndEightOne) {
  for (const auto& [count, blocks] : {std::pair{8, 1}, {9, 2}, {16, 2}, {17, 3}}) {
    Scratch scratch;
    free_nodes(count);
    output.NPR = {0, 0, -1};
    displace();
    NODPRT();
    EXPECT_EQ(count_of(scratch.report(), "NODE NUMBER"), 2 * blocks);  // translation and rotation
  }
}

TEST(NodeResponse, TheSecondBlockOfNineNodesHasOneColumn) {
  Scratch scratch;
  free_nodes(9);
  output.NPR = {-1, 0, 0};
  displace();
  NODPRT();
  const std::string full =
      "      NODE NUMBER               1            2            3            4            5"
      "            6            7            8";
  EXPECT_EQ(line_after(scratch.report(), full),
            "      DISPLACEMENT         0.15625E-01  0.10938E+00  0.20312E+00  0.29688E+00  0.39062E+00  0.48438E+00"
            "  0.57812E+00  0.67188E+00");
  EXPECT_EQ(line_after(scratch.report(), full, 3), "      NODE NUMBER               9");
  EXPECT_EQ(line_after(scratch.report(), full, 4), "      DISPLACEMENT         0.76562E+00");
}

TEST(NodeResponse, AConstrainedComponentIsZero) {
  Scratch scratch;
  free_nodes(1);
  output.NPR = {-1, 0, 0};
  node_ID()(1, 1) = NEQ1();
  displace();
  equation_vector(arrays.U)(NEQ1()) = 5.0;  // whatever stands in the sink
  NODPRT();
  EXPECT_EQ(line_after(scratch.report(), "      NODE NUMBER               1"),
            "      DISPLACEMENT         0.00000E+00");
}

TEST(NodeResponse, ValuesStayInTheAxesOfTheirNode) {
  Scratch scratch;
  free_nodes(1);
  sizes.NCSYS = 1;
  nodes.ICS = carve_integers(1);
  nodes.AXES = carve_reals(9);
  pool.integers(nodes.ICS, 1)(1) = 1;
  const RealTable axes = axes_of(1);  // local X is global Y
  for (int k = 1; k <= 3; ++k) axes(k % 3 + 1, k) = 1.0;
  output.NPR = {-1, 0, 0};
  displace();
  NODPRT();
  EXPECT_EQ(line_after(scratch.report(), "      NODE NUMBER               1"),
            "      DISPLACEMENT         0.15625E-01");
}

TEST(NodeResponse, AtTimeZeroOnlyDisplacementsStand) {
  Scratch scratch;
  free_nodes(1);
  output.NPR = {-1, -1, -1};
  displace();
  NODPRT();
  EXPECT_EQ(scratch.report().find("VELOCITY"), std::string::npos);
  EXPECT_EQ(scratch.report().find("ACCELERATION"), std::string::npos);
}

TEST(NodeResponse, AtAPositiveTimeVelocityAndAccelerationStandBelow) {
  Scratch scratch;
  free_nodes(1);
  output.NPR = {-1, 0, 0};
  displace();
  equation_vector(arrays.VEL)(1) = 0.5;
  equation_vector(arrays.ACC)(1) = -0.25;
  response.TIME = 2.5;
  NODPRT();
  const std::string head = "      NODE NUMBER               1";
  EXPECT_EQ(line_after(scratch.report(), head, 2), "      VELOCITY             0.50000E+00");
  EXPECT_EQ(line_after(scratch.report(), head, 3), "      ACCELERATION        -0.25000E+00");
  EXPECT_NE(scratch.report().find("      X DISPLACEMENT RESPONSE AT NODES, TIME = 0.2500E+01"), std::string::npos);
}

TEST(NodeResponse, APositiveReportTimeIsShownForTheAnalysisTime) {
  Scratch scratch;
  free_nodes(1);
  output.NPR = {-1, 0, 0};
  displace();
  response.TIME = 2.5;
  response.PRTIME = 4.0;
  NODPRT();
  EXPECT_NE(scratch.report().find("TIME = 0.4000E+01"), std::string::npos);
}

TEST(ResultsReport, CountsTheReportsOfAMacro) {
  Scratch scratch;
  free_nodes(1);
  output.NPR = {-1, 0, 0};
  displace();
  print_results();
  EXPECT_EQ(run.NRESPR, 1);
  EXPECT_NE(scratch.report().find("DISPLACEMENT RESPONSE AT NODES"), std::string::npos);
}

}  // namespace
}  // namespace tidearc::test
