// Result and envelope tables of the beams, line by line.
#include <gtest/gtest.h>

#include "group_deck.h"
#include "support/scratch.h"

namespace tidearc::test {
namespace {

/// Two cantilevers from node 1 along x to node 2, and along z to node 3; the second segment takes the load away and
/// puts half of it on the other side. NSTEPS is negative: envelopes are printed.
template <class Group, class Section>
RunResult run_two(Group group, const Section& section) {
  FrameDeck deck;
  deck.node(0, 0, 0);
  deck.node(2, 0, 0);
  deck.node(0, 0, 2);
  deck.fix(1, "111111");
  group.title = "MY MEMBERS";
  group.section(section);
  group.NFIRST = 7;
  group.last = 6;
  group.element({.I = 1, .J = 2});
  group.element({.I = 1, .J = 3});
  group.last = 2;  // elements of the group
  deck.group(group.text());
  deck.load(2, {1, 2, 3, 4, 0, 0});
  SegmentCards there = one_step(1e-6);
  there.NSTEPS = -1;
  SegmentCards back = there;
  back.factors = {-1.5};
  deck.stat({there, back});
  return run_static(deck.text());
}

TEST(BeamReport, OfLinearBeamsHasEndForcesAndEndDisplacements) {
  const RunResult run = run_two(LinearGroup{.E = 1e6}, LinearGroup::Section{.A = 1, .J = 1, .I3 = 1, .I2 = 1});
  EXPECT_EQ(run.status, 0) << run.errors;
  // Cantilever of length 2, E 1E6, G 4E5, all section values 1: u = 2E-6, v = 16/3E6, w = 8E-6, twist 2E-5, slopes 6E-6
  // about 2 (negative) and 4E-6 about 3.
  expect_lines(lines_from(run.report, " RESULTS FOR GROUP", 10),
               {"      RESULTS FOR GROUP  1 (LINEAR BEAM ELEMENTS) TIME =  0.0000E+00", "", "     MY MEMBERS", "",
                " ELEM   NODE    --------------------------FORCES------------------------    ----------------------"
                "DISPLACEMENTS---------------------",
                " NAME            AXIAL   SHEAR-2   SHEAR-3   TORSION  MOMENT-2  MOMENT-3     AXIAL   SHEAR-2   SHEAR-3"
                "   TORSION     ROT-2     ROT-3",
                "    7      1 -0.10E+01 -0.20E+01 -0.30E+01 -0.40E+01  0.60E+01 -0.40E+01  0.00E+00  0.00E+00  0.00E+00"
                "  0.00E+00  0.00E+00  0.00E+00",
                "           2  0.10E+01  0.20E+01  0.30E+01  0.40E+01  0.00E+00  0.00E+00  0.20E-05  0.53E-05  0.80E-05"
                "  0.20E-04 -0.60E-05  0.40E-05",
                "    8      1  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00"
                "  0.00E+00  0.00E+00  0.00E+00",
                "           3  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00"
                "  0.00E+00  0.00E+00  0.00E+00"});
}

TEST(BeamReport, OfLinearEnvelopesHasEightLinesForEachElement) {
  const RunResult run = run_two(LinearGroup{.E = 1e6}, LinearGroup::Section{.A = 1, .J = 1, .I3 = 1, .I2 = 1});
  const std::string times = "   0.000   0.000   0.000   0.000   0.000   0.000";
  const std::string zeros = "  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00  0.00E+00";
  const std::vector<std::string> all = lines_of(run.report);
  std::size_t last = 0;
  for (std::size_t i = 0; i < all.size(); ++i)
    if (all[i].find("FORCE(MAX)") != std::string::npos && all[i].rfind("    7", 0) == 0) last = i;
  ASSERT_GT(last, 7u);
  std::vector<std::string> found(all.begin() + static_cast<std::ptrdiff_t>(last) - 6,
                                 all.begin() + static_cast<std::ptrdiff_t>(last) + 9);
  // The moments of the free end are zero but for rounding.
  for (const std::size_t line : {10u, 12u}) found[line].replace(64, 20, "  0.00E+00  0.00E+00");
  expect_lines(
      found,
      {"  LINEAR BEAM ELEMENTS", "", "     MY MEMBERS", "",
       " ELEM   NODE                 -----------------FORCES AND DEFORMATIONS---------------      -------------"
       "RESPECTIVE TIMES-------------",
       "                             AXIAL   SHEAR-2   SHEAR-3   TORSION  MOMENT-2  MOMENT-3      T1      T2      T3"
       "      T4      T5      T6",
       // The second load level is -0.5: extremes of I are those of -load and of half the load.
       "    7      1 FORCE(MAX)   0.50E+00  0.10E+01  0.15E+01  0.20E+01  0.60E+01  0.20E+01" + times,
       "             DEFOR      " + zeros + times,
       "             FORCE(MIN)  -0.10E+01 -0.20E+01 -0.30E+01 -0.40E+01 -0.30E+01 -0.40E+01" + times,
       "             DEFOR      " + zeros + times,
       "           2 FORCE(MAX)   0.10E+01  0.20E+01  0.30E+01  0.40E+01  0.00E+00  0.00E+00" + times,
       "             DEFOR        0.20E-05  0.53E-05  0.80E-05  0.20E-04  0.30E-05  0.40E-05" + times,
       "             FORCE(MIN)  -0.50E+00 -0.10E+01 -0.15E+01 -0.20E+01  0.00E+00  0.00E+00" + times,
       "             DEFOR       -0.10E-05 -0.27E-05 -0.40E-05 -0.10E-04 -0.60E-05 -0.20E-05" + times,
       "    8      1 FORCE(MAX) " + zeros + times});
}

TEST(BeamReport, TitlesEndWithTheirLastCharacter) {
  const RunResult run = run_two(LinearGroup{.E = 1e6}, LinearGroup::Section{.A = 1, .J = 1, .I3 = 1, .I2 = 1});
  const std::string below = "\n\n     MY MEMBERS                              \n\n ELEM   NODE  ";
  EXPECT_TRUE(has(run.report, "\n\n\n\n      RESULTS FOR GROUP  1 (LINEAR BEAM ELEMENTS) TIME =  0.0000E+00" + below));
  EXPECT_TRUE(has(run.report, "\n  LINEAR BEAM ELEMENTS " + below));
}

TEST(BeamReport, OfLargeBeamsShowsNaturalDeformations) {
  const RunResult run = run_two(LargeGroup{.E = 1e6}, LargeGroup::Section{.A = 1, .IY = 1, .IZ = 1, .J = 1});
  EXPECT_EQ(run.status, 0) << run.errors;
  const std::vector<std::string> found = lines_from(run.report, " RESULTS FOR GROUP", 8);
  ASSERT_EQ(found.size(), 8u);
  EXPECT_EQ(found[0], "      RESULTS FOR GROUP  1 (NONLINEAR ELASTIC BEAM-COLUMN ELEMENTS) TIME =  0.0000E+00");
  // Rotations against the chord: e1 = 8E-6/2 at I and -6E-6 + 4E-6 at J about 2, -16/6E6 and 4E-6 - 16/6E6 about 3.
  EXPECT_EQ(found[6],
            "    7      1 -0.10E+01 -0.20E+01 -0.30E+01 -0.40E+01  0.60E+01 -0.40E+01  0.20E-05  0.00E+00  0.00E+00"
            "  0.20E-04  0.40E-05 -0.27E-05");
  EXPECT_EQ(found[7].substr(0, 53), "           2  0.10E+01  0.20E+01  0.30E+01  0.40E+01 ");
  EXPECT_EQ(found[7].substr(72), "  0.20E-05  0.00E+00  0.00E+00  0.20E-04 -0.20E-05  0.13E-05");
  EXPECT_NE(run.report.find("\n  LARGE DISPLACEMENT BEAM ELEMENTS \n"), std::string::npos);
}

TEST(BeamReport, OfVortexEnvelopesHasItsOwnTitle) {
  LargeGroup group{.ITYPE = 27, .E = 1e6};
  group.viv = "\n\n\n";
  const RunResult run = run_two(group, LargeGroup::Section{.A = 1, .IY = 1, .IZ = 1, .J = 1});
  EXPECT_EQ(run.status, 0) << run.errors << run.report;
  EXPECT_NE(run.report.find("\n  3-D LINEAR BEAM-COLUMN WITH GEOMETRIC STIFFNESS \n"), std::string::npos);
}

}  // namespace
}  // namespace tidearc::test
