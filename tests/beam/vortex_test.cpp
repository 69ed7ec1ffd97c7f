// Type 27: its own cards, and that it is type 2 in everything else.
#include "elements/beam/vortex.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "group_deck.h"

namespace tidearc::test {
namespace {

const std::string vortex_cards =
    "    1    3       0.2       0.9       1.1       2.0       3.0       4.0       0.5       1.4      4711          "
    "256\n"
    "    3    2LIFT COEFFICIENTS\nBY AMPLITUDE\n 0.10 0.20 0.30\n       1.0       2.0\n       3.0       4.0\n"
    "       5.0       6.0\n";

std::string vortex_group(int kviv = 2, int NSUB = 1, const std::string& cards = vortex_cards) {
  LargeGroup group = large(27);
  group.kviv = kviv;
  group.NSUB = NSUB;
  group.viv = cards;
  return with_elements(group);
}

TEST(VortexInput, EchoesItsCardsAndRunsAsALargeBeam) {
  const RunResult run = run_group(vortex_group());
  EXPECT_EQ(run.status, 0) << run.errors << run.report;
  for (const char* words : {"3-D LINEAR BEAM-COLUMN WITH GEOMETRIC STIFFNESS AND VIV",
                            "LENGTH OF ELEMENT INFORMATION .................. = 1484",
                            "MEMBER LOCAL AXIS ORIENTATION (KDEF)",
                            "VIV ALGORITHM (kviv) ........................... =    2",
                            "POST RESULT FLAG (=0 EFFECTIVE FORCE)",
                            "INPLANE MOTION 0=STEADY 1=OSCILLATORY .......... =    1",
                            "NUMBER OF CORRELATED GAUSS POINTS (nnc) ........ =    3",
                            "STROUHAL NUMBER (DEFAULT= Re Dependent)",
                            "BASE LIFT COEFFICIENT (cl0)",
                            "BASE DRAG COEFFICIENT (cd0)",
                            "BEGIN RAMP TIME (trampb)",
                            "LIFT RAMP TIME (trampl)",
                            "START TIME FOR VIV TRACKING (timrwl)",
                            "SHEDDING FREQUENCY DISTRIBUTION (alpha)",
                            "LOCK-IN CUTOFF (cutoff)",
                            "RANDOM NUMBER SEED (iseed) ..................... = 4711",
                            "BLOCK FACTOR (blokfac) (default=1.0) ........... =  0.1000E+01",
                            "LIFT COEFFICIENTS",
                            "BY AMPLITUDE",
                            "0.2000",
                            "6.0000E+00",
                            " (NONLINEAR ELASTIC BEAM-COLUMN ELEMENTS) TIME ="})
    EXPECT_TRUE(has(run.report, words)) << words;
  EXPECT_FALSE(has(run.report, "** warning **"));
}

TEST(VortexInput, OnlyTheSecondAlgorithmExists) {
  for (const int kviv : {0, 1, 3}) {
    expect_stop(vortex_group(kviv), "** ERROR **  Only Rev 2 algorithm available at this time.", "columns 26-30");
  }
}

TEST(VortexInput, SaysNothingOfSegmentsWhereTheGroupHasManyPoints) {
  for (const int NSUB : {0, 1, 2, 5}) {
    const RunResult run = run_group(vortex_group(2, NSUB));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(count_of(run.report, "** warning **"), 0) << NSUB;
  }
}

TEST(VortexInput, ATableMustFit) {
  const std::string first = vortex_cards.substr(0, vortex_cards.find('\n') + 1);
  expect_stop(vortex_group(2, 1, first + "  101    1\n\n"), "COEFFICIENT TABLE OF   101 BY     1 VALUES IS TOO LARGE.");
  expect_stop(vortex_group(2, 1, first + "   90    9\n\n"), "IS TOO LARGE.");
  expect_good(vortex_group(2, 1, first + "    0    0\n\n"));
}

TEST(VortexInput, KeepsEveryFieldOfItsCards) {
  const std::string cards =
      "    1    3      0.21      0.92      1.13      2.04      3.05      4.06      0.57      1.48      4711      0.89"
      "  256\n"
      "    3    2LIFT COEFFICIENTS\nBY AMPLITUDE\n 0.10 0.25 0.30\n       1.5       2.0\n       3.0       4.0\n"
      "       5.0       6.5\n";
  EXPECT_EQ(run_kept(vortex_group(2, 1, cards)).status, 0);
  const VortexControl& v = vortex_control();
  EXPECT_EQ(v.KMOTN, 1);
  EXPECT_EQ(v.nnc, 3);
  EXPECT_EQ(v.iseed, 4711);
  EXPECT_EQ(v.nbuf, 256);
  const double reals[9] = {v.strouhal, v.cl0, v.cd0, v.trampb, v.trampl, v.timrwl, v.alpha, v.cutoff, v.blokfac};
  const double expected[9] = {0.21, 0.92, 1.13, 2.04, 3.05, 4.06, 0.57, 1.48, 0.89};
  for (std::size_t i = 0; i < 9; ++i) EXPECT_EQ(reals[i], expected[i]) << i;
  EXPECT_EQ(v.arguments, 3);
  EXPECT_EQ(v.columns, 2);
  EXPECT_EQ(std::string(v.name[0], 17), "LIFT COEFFICIENTS");
  EXPECT_EQ(std::string(v.name[1], 12), "BY AMPLITUDE");
  const double arguments[3] = {0.1, 0.25, 0.3}, coefficients[6] = {1.5, 2, 3, 4, 5, 6.5};
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(v.argument[i], arguments[i]);
  for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(v.coefficient[i], coefficients[i]);
}

TEST(VortexInput, ABlockFactorOfZeroIsOne) {
  EXPECT_EQ(run_kept(vortex_group()).status, 0);
  EXPECT_EQ(vortex_control().blokfac, 1.0);
}

TEST(VortexInput, EchoesTheControlCardAndTheTableInTheirOrder) {
  const std::vector<std::string> found = lines_from(run_group(vortex_group()).report, "VIV ALGORITHM (kviv)", 24);
  expect_lines(found, {"     VIV ALGORITHM (kviv) ........................... =    2",
                       "     POST RESULT FLAG (=0 EFFECTIVE FORCE) .......... =    0",
                       "",
                       "",
                       "     INPLANE MOTION 0=STEADY 1=OSCILLATORY .......... =    1",
                       "     NUMBER OF CORRELATED GAUSS POINTS (nnc) ........ =    3",
                       "     STROUHAL NUMBER (DEFAULT= Re Dependent) ........ =  0.2000E+00",
                       "     BASE LIFT COEFFICIENT (cl0) .................... =  0.9000E+00",
                       "     BASE DRAG COEFFICIENT (cd0) .................... =  0.1100E+01",
                       "     BEGIN RAMP TIME (trampb) ....................... =  0.2000E+01",
                       "     LIFT RAMP TIME (trampl) ........................ =  0.3000E+01",
                       "     START TIME FOR VIV TRACKING (timrwl) ........... =  0.4000E+01",
                       "     SHEDDING FREQUENCY DISTRIBUTION (alpha) ........ =  0.5000E+00",
                       "     LOCK-IN CUTOFF (cutoff) ........................ =  0.1400E+01",
                       "     RANDOM NUMBER SEED (iseed) ..................... = 4711",
                       "     BLOCK FACTOR (blokfac) (default=1.0) ........... =  0.1000E+01",
                       "     BUFFER SIZE (nbuf) ............................. =  256",
                       "",
                       "     COEFFICIENT TABLE     3     2  LIFT COEFFICIENTS",
                       "                                    BY AMPLITUDE",
                       "     ARGUMENTS",
                       "           0.1000      0.2000      0.3000",
                       "     COEFFICIENTS",
                       "       1.0000E+00  2.0000E+00"});
}

TEST(VortexInput, LeavesOutTheColumnsThatItsCardsDoNotHave) {
  const std::string report = run_group(vortex_group()).report;
  EXPECT_FALSE(has(report, "THEMAL COEFF."));
  EXPECT_FALSE(has(report, "Angle(rad)"));
  const std::vector<std::string> material = lines_from(report, " MAT.     YOUNGS", 4);
  ASSERT_EQ(material.size(), 4u);
  EXPECT_EQ(material[3],
            "    1  1.000E+03  2.50E-01   0.000E+00   0.000E+00       0.000E+00       0.000E+00       0.000E+00");
  const std::vector<std::string> section = lines_from(report, " SEC.        AREA", 4);
  ASSERT_EQ(section.size(), 4u);
  EXPECT_EQ(section[3], "    1  1.0000E+00  0.0000E+00  0.0000E+00  1.0000E+00  1.0000E+00  1.0000E+00  0.0000E+00");
}

/// A bent strip of two members under a load that turns it through half a radian, with fluid, growth and pressure.
LargeGroup same_members(int type) {
  LargeGroup group;
  group.ITYPE = type;
  group.E = 100;
  group.weight = 0.3;
  group.mass = 0.4;
  group.fluid_weight = 0.5;
  group.fluid_mass = 0.6;
  group.pressure = 0.7;
  group.viv = "\n\n\n";
  group.NSUB = 1;
  group.KFEM = 1;
  group.KPOST = 1;
  group.section({.A = 40, .t = 0.25, .ID = 0.5, .IY = 2, .IZ = 1, .J = 3, .growth = 0.125});
  const std::string initial = ten(0.1) + ten(-0.2) + ten(0.3) + ten(0.2) + ten(0.1) + ten(0.5) + "\n";
  group.element({.I = 1, .J = 2, .K = 5, .OUT = 1, .KGI = 1, .KGE = 0, .SD = 3, .WAVE = 2, .BUOY = 1, .axial = 1.5});
  group.element({.I = 2, .J = 3, .KGE = 1, .SD = 1, .INIT = 1, .further = initial});
  return group;
}

TEST(VortexBeam, IsTheLargeBeamFieldForField) {
  std::vector<LargeBeam> records;
  std::vector<std::vector<double>> moves;
  for (const int type : {2, 27}) {
    FrameDeck deck;
    for (const double x : {0.0, 2.0, 4.0, 10.0}) deck.node(x, 0, 0);
    deck.node(1, 0, 3);
    for (const int n : {1, 4, 5}) deck.fix(n, "111111");
    deck.group(same_members(type).text());
    deck.load(3, {1, 15, 5, 2, 0, 0});
    deck.stat({steps_of(4)});
    const RunResult run = run_static(deck.text());
    EXPECT_EQ(run.status, 0) << type << run.report;
    moves.push_back(run.U);
    for (const int element : {1, 2}) records.push_back(type == 2 ? large_record(element) : vortex_record(element).beam);
  }
  EXPECT_EQ(moves[0], moves[1]);
  EXPECT_GT(std::abs(moves[0].back()), 0.3);  // the tip has turned
  for (const std::size_t k : {0u, 1u}) {
    EXPECT_EQ(std::memcmp(&records[k], &records[k + 2], sizeof(LargeBeam)), 0) << "element " << k + 1;
    EXPECT_EQ(records[k].PNU, 0.25);
    EXPECT_EQ(records[k].material.pressure, 0.7);
    EXPECT_EQ(records[k].section.water.growth_weight, 0.125);
  }
}

TEST(VortexBeam, HasNoOffsetTypes) {
  LargeGroup group = large(27);
  group.viv = vortex_cards;
  group.element({.I = 1, .J = 2, .ECC = 1});
  expect_data_error(group.text(), " ELEMENT     1  PROPERTY NUMBER OUT OF RANGE, ENTERING CHEC MODE", "columns 76-80");
}

}  // namespace
}  // namespace tidearc::test
