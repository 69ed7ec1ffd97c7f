// Mass commands and the mass summary.
#include "model/masses.h"

#include "load_model.h"

namespace tidearc::test {
namespace {

//                        I5   F10.0 x 6                                                    I5   I5
const std::string one = "    2     1.5       2.0       2.5       0.1       0.2       0.3    0    0\n";

TEST(MassCommands, NoneAtAllPrintNoneAndClearTheVector) {
  LoadModel model("", row_of_nodes(2));
  model.number();
  model.vector(masses.AMASS)(3) = 7.0;
  pool.integers(masses.MARKS, NEQ1())(3) = 9;
  MASSIN();
  EXPECT_EQ(trimmed(model.scratch.report()), "1\n LUMPED MASS GENERATION COMMANDS\n\n (NONE)\n");
  EXPECT_EQ(model.vector(masses.AMASS)(3), 0.0);
  EXPECT_EQ(pool.integers(masses.MARKS, NEQ1())(3), 0);
}

TEST(MassCommands, AddAtTheEquationsOfTheNodeAndMarkThem) {
  LoadModel model(one, row_of_nodes(3));
  model.number();
  sizes.NMASS = 1;
  MASSIN();
  const std::array<double, 6> wanted{1.5, 2.0, 2.5, 0.1, 0.2, 0.3};
  for (int c = 1; c <= 6; ++c) {
    EXPECT_EQ(model.at(masses.AMASS, 2, c), wanted[static_cast<std::size_t>(c - 1)]);
    EXPECT_EQ(model.at(masses.AMASS, 1, c), 0.0);
    EXPECT_EQ(model.at(masses.AMASS, 3, c), 0.0);
    EXPECT_EQ(pool.integers(masses.MARKS, NEQ1())(equation_of(2, c)), 2);
    EXPECT_EQ(pool.integers(masses.MARKS, NEQ1())(equation_of(3, c)), 0);
  }
}

TEST(MassCommands, AreEchoedAndTabulated) {
  LoadModel model(one, row_of_nodes(3));
  model.number();
  sizes.NMASS = 1;
  MASSIN();
  const std::string report = model.scratch.report();
  EXPECT_TRUE(has_line(report,
                       "        2       0.1500E+01  0.2000E+01  0.2500E+01  0.1000E+00  0.2000E+00  0.3000E+00"
                       "        0        0"))
      << report;
  EXPECT_TRUE(has_line(report, " LUMPED MASSES AT NODES"));
  EXPECT_TRUE(has_line(report,
                       "        2       0.1500E+01  0.2000E+01  0.2500E+01       0.1000E+00  0.2000E+00  "
                       "0.3000E+00"))
      << report;
  EXPECT_EQ(count_of_text(report, "        3       0."), 0);  // a node without mass has no line
}

TEST(MassCommands, PrintNoTableWhenRenumberingFollows) {
  LoadModel model(one, row_of_nodes(3));
  model.number();
  sizes.NMASS = 1;
  sizes.IBANDW = 3;
  MASSIN();
  EXPECT_EQ(count_of_text(model.scratch.report(), "LUMPED MASSES AT NODES"), 0);
}

TEST(MassCommands, DifferenceZeroReadsAsOne) {
  LoadModel model("    2     1.0                                                      4    0\n", row_of_nodes(5));
  model.number();
  sizes.NMASS = 1;
  MASSIN();
  for (int n = 1; n <= 5; ++n) EXPECT_EQ(model.at(masses.AMASS, n, 1), n >= 2 && n <= 4 ? 1.0 : 0.0) << n;
}

TEST(MassCommands, RunStopsBeforeALastNodeThatTheDifferenceDoesNotReach) {
  LoadModel model("    1     1.0                                                      4    2\n", row_of_nodes(5));
  model.number();
  sizes.NMASS = 1;
  MASSIN();
  for (int n = 1; n <= 5; ++n) EXPECT_EQ(model.at(masses.AMASS, n, 1), n == 1 || n == 3 ? 1.0 : 0.0) << n;
  EXPECT_EQ(run.RUNMOD, 0);
}

TEST(MassCommands, LastNodeBelowTheFirstLeavesTheFirstAlone) {
  LoadModel model("    3     1.0                                                      2    1\n", row_of_nodes(4));
  model.number();
  sizes.NMASS = 1;
  MASSIN();
  for (int n = 1; n <= 4; ++n) EXPECT_EQ(model.at(masses.AMASS, n, 1), n == 3 ? 1.0 : 0.0) << n;
}

TEST(MassCommands, OnOneNodeAccumulate) {
  LoadModel model(one + one, row_of_nodes(2));
  model.number();
  sizes.NMASS = 2;
  MASSIN();
  EXPECT_EQ(model.at(masses.AMASS, 2, 2), 4.0);
}

TEST(MassCommands, OnAConstrainedComponentGoToTheSinkAndShowNowhere) {
  LoadModel model(one, row_of_nodes(2));
  model.fix(2, {1, 5}).number();
  sizes.NMASS = 1;
  MASSIN();
  MASSUM();
  EXPECT_DOUBLE_EQ(model.vector(masses.AMASS)(NEQ1()), 1.7);
  const std::string line =
      "        2       0.0000E+00  0.2000E+01  0.2500E+01       0.1000E+00  0.0000E+00  0.3000E+00";
  EXPECT_EQ(count_of_text(model.scratch.report(), line), 2);
  EXPECT_TRUE(has_line(model.scratch.report(), "            0.0000      2.0000      2.5000")) << model.scratch.report();
}

TEST(MassCommands, OnATiedComponentAddToTheMastersEquation) {
  LoadModel model(one, row_of_nodes(2));
  model.tie(2, 3, 1).number();
  sizes.NMASS = 1;
  MASSIN();
  EXPECT_EQ(model.at(masses.AMASS, 1, 3), 2.5);
  EXPECT_EQ(model.at(masses.AMASS, 1, 1), 0.0);
}

TEST(MassCommands, OfANodeOutOfRangeAreSkippedAsADataError) {
  for (const std::string node : {"    0", "   -1", "    4"}) {
    LoadModel model(node + one.substr(5) + one, row_of_nodes(3));
    model.number();
    sizes.NMASS = 2;
    MASSIN();
    EXPECT_EQ(run.RUNMOD, 1);
    EXPECT_EQ(model.at(masses.AMASS, 2, 1), 1.5);  // reading went on
    EXPECT_TRUE(has_line(model.scratch.report(),
                         " ***** DATA ERROR *****      NODE " + node + "  OUT OF RANGE, ENTERING CHEC MODE"))
        << model.scratch.report();
    EXPECT_EQ(model.scratch.errors().substr(0, 37), "TAModel.inp line 1, columns 1-5: NODE");
  }
}

TEST(MassCommands, WithALastNodeOutOfRangeAreSkippedAsADataError) {
  LoadModel model("    2     1.0                                                      4    1\n", row_of_nodes(3));
  model.number();
  sizes.NMASS = 1;
  MASSIN();
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_EQ(model.at(masses.AMASS, 2, 1), 0.0);
  EXPECT_EQ(count_of_text(model.scratch.errors(), "line 1, columns 66-70"), 1);
}

TEST(MassCommands, WithANegativeDifferenceAreSkippedAsADataError) {
  LoadModel model("    1     1.0                                                      3   -1\n", row_of_nodes(3));
  model.number();
  sizes.NMASS = 1;
  MASSIN();
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_EQ(model.at(masses.AMASS, 1, 1), 0.0);
  EXPECT_EQ(count_of_text(model.scratch.report(), "IS NEGATIVE, ENTERING CHEC MODE"), 1);
}

TEST(MassCommands, WithoutALastNodeTakeNoNoticeOfTheDifference) {
  for (const std::string difference : {"    3", "   -5"}) {
    LoadModel model("    2     1.0                                                      0" + difference + "\n",
                    row_of_nodes(3));
    model.number();
    sizes.NMASS = 1;
    MASSIN();
    for (int n = 1; n <= 3; ++n) EXPECT_EQ(model.at(masses.AMASS, n, 1), n == 2 ? 1.0 : 0.0) << n;
    EXPECT_EQ(run.RUNMOD, 0);
  }
}

TEST(MassCommands, ThatAreMissingEndTheRunInTheInputLayer) {
  LoadModel model(one, row_of_nodes(3));
  model.number();
  sizes.NMASS = 2;
  EXPECT_EQ(stop_of(MASSIN), status_io);
}

TEST(MassSummary, ShowsTheFinalVectorAndSumsItsTranslations) {
  LoadModel model("", row_of_nodes(3));
  model.number();
  for (int n = 1; n <= 2; ++n) {
    for (int c = 1; c <= 3; ++c) model.vector(masses.AMASS)(equation_of(n, c)) = 10.0 * n + c;
  }
  MASSUM();
  EXPECT_EQ(trimmed(model.scratch.report()),
            "1\n LUMPED MASS SUMMARY\n\n\n LUMPED MASSES AT NODES\n\n"
            "     NODE           TRAN-X      TRAN-Y      TRAN-Z           ROTN-X      ROTN-Y      ROTN-Z\n\n"
            "        1       0.1100E+02  0.1200E+02  0.1300E+02       0.0000E+00  0.0000E+00  0.0000E+00\n"
            "        2       0.2100E+02  0.2200E+02  0.2300E+02       0.0000E+00  0.0000E+00  0.0000E+00\n"
            "\n     TOTAL MASS IN DIRECTIONS:\n\n               X           Y           Z\n"
            "            32.000      34.000      36.000\n");
}

TEST(MassSummary, ShowsASharedEquationAtEachOfItsNodesAndCountsItOnce) {
  LoadModel model("", row_of_nodes(2));
  model.tie(2, 1, 1).number();
  model.vector(masses.AMASS)(1) = 5.0;
  MASSUM();
  EXPECT_TRUE(has_line(model.scratch.report(), "            5.0000      0.0000      0.0000")) << model.scratch.report();
}

}  // namespace
}  // namespace tidearc::test
