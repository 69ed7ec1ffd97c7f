// Type 7 on decks: the cards of the linear beam, weight and loads beside members that bear them, its report.
#include <gtest/gtest.h>

#include "frame_deck.h"
#include "group_deck.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

LinearGroup group_of(int ITYPE, const WaterCards& water, double weight, double mass) {
  LinearGroup group;
  group.ITYPE = ITYPE;
  group.weight = weight;
  group.mass = mass;
  group.KFEM = 1;
  group.NGAUSS = 4;
  group.title = "MY MEMBERS";
  group.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1, .growth = weight, .water = water});
  group.element({.I = 1, .J = 2, .BUOY = 1});
  return group;
}

/// A cantilever of length 5 at (3,0,4)/5 under weight, current and buoyancy: of one member, or of a member without
/// water and weight beside one of type 7.
RunResult run_cantilever(bool apart, int NSTEPS = 1) {
  const WaterCards water = {.D = 0.5, .CD = 0.7, .CKM = 1.5, .CDS = 0.1, .Db = 0.25};
  FrameDeck deck;
  deck.node(0, 0, -20);
  deck.node(3, 0, -16);
  deck.fix(1, "111111");
  deck.water({.weight = 10, .mass = 1.5, .KBUOY = 1, .current = {1, 2, 0}});
  if (apart) {
    deck.group(group_of(3, {}, 0, 2).text());
    deck.group(group_of(7, water, 3, 2).text());
  } else {
    deck.group(group_of(3, water, 3, 2).text());
  }
  SegmentCards segment = one_step(1e-9);
  segment.NSTEPS = NSTEPS;
  segment.generated = {1.0, 1.0, 1.0};
  deck.stat({segment});
  return run_static(deck.text());
}

TEST(WaveBeam, BesideABareMemberIsTheMemberInWater) {
  const RunResult together = run_cantilever(false);
  EXPECT_EQ(together.status, 0) << together.errors << together.report;
  std::vector<double> mass;
  for (int c = 1; c <= 6; ++c) mass.push_back(pool.reals(masses.AMASS, NEQ1())(equation_of(2, c)));
  const int NSTO = solver.NSTO;
  const RunResult apart = run_cantilever(true);
  EXPECT_EQ(apart.status, 0) << apart.errors << apart.report;
  ASSERT_EQ(apart.U.size(), together.U.size());
  for (std::size_t i = 0; i < together.U.size(); ++i) EXPECT_EQ(apart.U[i], together.U[i]) << i;
  EXPECT_GT(std::abs(together.U[1]), 1e-3);
  // No mass of its own, but the added one; no room in the matrix.
  for (int c = 1; c <= 6; ++c) {
    EXPECT_NEAR(pool.reals(masses.AMASS, NEQ1())(equation_of(2, c)), mass[static_cast<std::size_t>(c - 1)], 1e-12);
  }
  EXPECT_EQ(solver.NSTO, NSTO);
}

TEST(WaveBeam, HasTheBannerOfItsTypeAnEnvelopeAndNoResults) {
  const RunResult run = run_cantilever(true, -1);
  EXPECT_EQ(run.status, 0) << run.errors << run.report;
  EXPECT_TRUE(has(run.report, "     LINEAR BEAM WAVE ELEMENT"));
  EXPECT_TRUE(has(run.report, "LENGTH OF ELEMENT INFORMATION .................. =  300"));
  EXPECT_TRUE(has(run.report, " RESULTS FOR GROUP  1"));
  EXPECT_FALSE(has(run.report, " RESULTS FOR GROUP  2"));
  const std::vector<std::string> lines = lines_from(run.report, "  LINEAR BEAM WAVE ELEMENTS", 14);
  const std::string zeros = "  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00";
  const std::string times = "   0.000   0.000   0.000   0.000   0.000   0.000";
  ASSERT_EQ(lines.size(), 14u);
  EXPECT_EQ(lines[0], "  LINEAR BEAM WAVE ELEMENTS");
  EXPECT_EQ(lines[2], "     MY MEMBERS");
  EXPECT_EQ(lines[6], "    1      1 FORCE(MAX) " + zeros + times);
  EXPECT_EQ(lines[7], "             DEFOR      " + zeros + times);
  EXPECT_EQ(lines[8], "             FORCE(MIN) " + zeros + times);
  EXPECT_EQ(lines[10], "           2 FORCE(MAX) " + zeros + times);
}

TEST(WaveBeam, AloneLeavesTheStructureWithoutStiffness) {
  FrameDeck deck;
  deck.node(0, 0, 0);
  deck.node(3, 0, 0);
  deck.fix(1, "111111");
  deck.group(group_of(7, {}, 0, 0).text());
  deck.load(2, {1, 0, 0, 0, 0, 0});
  deck.stat({one_step()});
  EXPECT_NE(run_static(deck.text()).status, 0);
}

TEST(WaveBeam, HasTheErrorsOfTheLinearBeamsCards) {
  LinearGroup group = linear();
  group.ITYPE = 7;
  group.element({.I = 1, .J = 2, .HI = 2});
  expect_data_error(group.text(), "HINGE CODE     2  IS NOT MADE OF DIGITS 0 AND 1", "columns 73-76");
  LinearGroup far = linear();
  far.ITYPE = 7;
  far.element({.I = 1, .J = 77});
  expect_data_error(far.text(), " OUT OF RANGE, ENTERING CHEC MODE", "columns 11-15");
  LinearGroup none = linear();
  none.ITYPE = 7;
  none.element({.I = 1, .J = 1});
  expect_stop(none.text(), "HAS ZERO LENGTH");
}

}  // namespace
}  // namespace tidearc::test
