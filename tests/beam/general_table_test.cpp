// The cards of general drag and lift behind a section with load code 7: read, echoed, kept in the records.
#include <gtest/gtest.h>

#include "frame_deck.h"
#include "group_deck.h"

namespace tidearc::test {
namespace {

/// Inertia 1.5, drag 0.1, 0.2, .. 1.2, lift -1, -2, .. -12.
std::vector<double> table() {
  std::vector<double> values = {1.5};
  for (int i = 1; i <= 12; ++i) values.push_back(0.125 * i);
  for (int i = 1; i <= 12; ++i) values.push_back(-i);
  return values;
}

/// Two sections, the second with the table; element 2 has it.
template <class Group, class Section>
std::string two_sections(Group group, Section section, int ICA) {
  section.water = {.D = 2, .CD = 1};
  group.section(section);
  section.water.ICA = ICA;
  section.water.JCA = 1;
  if (ICA == 7) section.water.general = table();
  group.section(section);
  group.element({.I = 1, .J = 2});
  group.element({.I = 2, .J = 3, .SEC = 2});
  return group.text();
}
std::string group_of(int ITYPE, int ICA) {
  if (ITYPE == 3 || ITYPE == 7) {
    LinearGroup group;
    group.ITYPE = ITYPE;
    return two_sections(group, LinearGroup::Section{.A = 1, .J = 1, .I3 = 1, .I2 = 1}, ICA);
  }
  LargeGroup group;
  group.ITYPE = ITYPE;
  group.viv = "\n\n\n";
  return two_sections(group, LargeGroup::Section{.A = 1, .IY = 1, .IZ = 1, .J = 1}, ICA);
}

FrameDeck row(const std::string& group) {
  FrameDeck deck;
  for (const double x : {0.0, 2.0, 4.0}) deck.node(x, 0, 0);
  deck.fix(1, "111111");
  deck.group(group);
  return deck;
}

GeneralCoefficients kept_by(int ITYPE, int running) {
  if (ITYPE == 3) return linear_record(running).general;
  if (ITYPE == 7) return wave_beam_record(running).general;
  return ITYPE == 2 ? large_record(running).general : vortex_record(running).beam.general;
}
BeamWater water_of(int ITYPE, int running) {
  if (ITYPE == 3) return linear_record(running).water;
  if (ITYPE == 7) return wave_beam_record(running).water;
  return (ITYPE == 2 ? large_record(running) : vortex_record(running).beam).section.water;
}

TEST(GeneralTable, StandsBehindASectionWithLoadCode7AndInItsRecords) {
  for (const int ITYPE : {2, 3, 7, 27}) {
    const RunResult run = run_static(row(group_of(ITYPE, 7)).text());
    EXPECT_EQ(run.status, 0) << ITYPE << run.errors << run.report;
    const GeneralCoefficients general = kept_by(ITYPE, 2), none = kept_by(ITYPE, 1);
    EXPECT_EQ(general.inertia, 1.5);
    EXPECT_EQ(none.inertia, 0.0);
    for (std::size_t i = 0; i < 12; ++i) {
      EXPECT_EQ(general.drag[i], 0.125 * static_cast<double>(i + 1));
      EXPECT_EQ(general.lift[i], -static_cast<double>(i + 1));
      EXPECT_EQ(none.drag[i], 0.0);
    }
    EXPECT_EQ(water_of(ITYPE, 2).ICA, 7);
    EXPECT_EQ(water_of(ITYPE, 2).JCA, 1);
    EXPECT_EQ(water_of(ITYPE, 1).ICA, 0);
    EXPECT_EQ(water_of(ITYPE, 1).wave_diameter, 2.0);
    expect_lines(lines_from(run.report, "     COEFFICIENTS OF GENERAL DRAG AND LIFT", 7),
                 {"     COEFFICIENTS OF GENERAL DRAG AND LIFT", "", " SEC.     INERTIA         ANGLE OF ATTACK",
                  "  NO.                         0.      30.      60.      90.     120.     150.     180.     210.     "
                  "240.     270.     300.     330.",
                  "",
                  "    2  1.5000E+00  DRAG   0.1250   0.2500   0.3750   0.5000   0.6250   0.7500   0.8750   1.0000"
                  "   1.1250   1.2500   1.3750   1.5000",
                  "                   LIFT  -1.0000  -2.0000  -3.0000  -4.0000  -5.0000  -6.0000  -7.0000  -8.0000"
                  "  -9.0000 -10.0000 -11.0000 -12.0000"});
  }
}

TEST(GeneralTable, IsReadForNoOtherLoadCode) {
  for (const int ITYPE : {2, 3, 7, 27}) {
    for (const int ICA : {6, 8, -7}) {
      const RunResult run = run_static(row(group_of(ITYPE, ICA)).text());
      EXPECT_EQ(run.status, 0) << ITYPE << run.errors << run.report;
      EXPECT_FALSE(has(run.report, "GENERAL DRAG AND LIFT"));
      EXPECT_EQ(water_of(ITYPE, 2).ICA, ICA);
    }
  }
}

}  // namespace
}  // namespace tidearc::test
