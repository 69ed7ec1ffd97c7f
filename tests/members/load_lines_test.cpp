// TAModel.sac: the compact number field and the lines.
#include "sea/members/load_lines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "run/run_block.h"
#include "run/units.h"
#include "scratch.h"
#include "water.h"

namespace tidearc::test {
namespace {

std::string compact(double value) {
  const auto field = FMT7(value);
  return {field.begin(), field.end()};
}

TEST(CompactField, WritesThePointAmongTheDigits) {
  EXPECT_EQ(compact(1.0), "1.00000");
  EXPECT_EQ(compact(12345.67), "12345.6");
  EXPECT_EQ(compact(123456.7), "123456.");
  EXPECT_EQ(compact(-3.14159265), "-3.1415");
  EXPECT_EQ(compact(-12345.67), "-12345.");
}

TEST(CompactField, CutsDigitsBehindTheRoundingToSeven) {
  EXPECT_EQ(compact(999999.96), ".1000+7");
  EXPECT_EQ(compact(0.99999996), "1.00000");
  EXPECT_EQ(compact(0.99999994), ".999999");
  EXPECT_EQ(compact(1.9999999), "2.00000");
  EXPECT_EQ(compact(1.999999), "1.99999");
}

TEST(CompactField, TakesAPowerWhereDigitsDoNotSuffice) {
  EXPECT_EQ(compact(1234567.0), ".1234+7");
  EXPECT_EQ(compact(123456789.0), ".1234+9");
  EXPECT_EQ(compact(-123456.7), "-.123+6");
  EXPECT_EQ(compact(-123456789.0), "-.123+9");
  EXPECT_EQ(compact(0.0012345678), ".1234-2");
  EXPECT_EQ(compact(-0.0012345678), "-.123-2");
  EXPECT_EQ(compact(1.2345e-10), ".1234-9");
  EXPECT_EQ(compact(-1e-9), "-.100-8");
}

TEST(CompactField, OfSixDigitsBeforeThePointDependsOnTheSign) {
  EXPECT_EQ(compact(654321.0), "654321.");
  EXPECT_EQ(compact(-654321.0), "-.654+6");
}

TEST(CompactField, WritesFractions) {
  EXPECT_EQ(compact(0.5), ".500000");
  EXPECT_EQ(compact(-0.5), "-.50000");
  EXPECT_EQ(compact(0.1), ".100000");
  EXPECT_EQ(compact(0.05), ".050000");
  EXPECT_EQ(compact(0.01), ".010000");
  EXPECT_EQ(compact(-0.0123456), "-.01234");
}

TEST(CompactField, EndsAtPowersOfNine) {
  EXPECT_EQ(compact(999999900.0), ".9999+9");
  EXPECT_EQ(compact(1e9), "*******");
  EXPECT_EQ(compact(-1e9), "*******");
  EXPECT_EQ(compact(9.9e-11), ".000000");
  EXPECT_EQ(compact(-9.9e-11), ".000000");
  EXPECT_EQ(compact(1e-10), ".1000-9");
  EXPECT_EQ(compact(0.0), ".000000");
  EXPECT_EQ(compact(-0.0), ".000000");
}

TEST(CompactField, ShowsWhatIsNoNumberAsAsterisks) {
  EXPECT_EQ(compact(std::numeric_limits<double>::quiet_NaN()), "*******");
  EXPECT_EQ(compact(std::numeric_limits<double>::infinity()), "*******");
}

/// A scratch folder with the load files open.
class LoadLines : public ::testing::Test {
 protected:
  LoadLines() {
    still_sea();
    load_files.wanted = true;
    open_load_files(5, 0.25);
  }
  std::vector<std::string> lines() {
    flush_formatted(UNIT_LOADS_TEXT);
    return lines_of(scratch.contents("TAModel.sac"));
  }
  Scratch scratch;
};

TEST_F(LoadLines, HaveEightyColumns) {
  write_member_line(" X", "GLOB", 12, 34, {0.0, 10.0, 1.5, -2.25}, 3.5);
  write_member_line(" Z", "MEMB", 12, 34, {2.5, 7.25, 0.0, -2.25}, 3.5);
  write_joint_line(12, {1.5, -2.25, 0.0}, 3.5);
  const auto text = lines();
  ASSERT_EQ(text.size(), 3u);
  EXPECT_EQ(text[0], "LOAD X   12  34    0.001.50000  10.00-2.2500                GLOB UNIF       3.50");
  EXPECT_EQ(text[1], "LOAD Z   12  34    2.50.000000   7.25-2.2500                MEMB UNIF       3.50");
  EXPECT_EQ(text[2], "LOAD     12     1.50000-2.2500.000000.000000 .000000.000000 GLOB JOIN       3.50");
  for (const std::string& line : text) EXPECT_EQ(line.size(), 80u);
}

TEST_F(LoadLines, AreCountedOneByOneAndTheirTimesOnce) {
  write_member_line(" X", "GLOB", 1, 2, {}, 0.0);
  write_member_line(" Y", "GLOB", 1, 2, {}, 0.0);
  EXPECT_EQ(load_files.lines, 2);
  EXPECT_EQ(run.NWAVNO, 1);
  write_joint_line(1, {}, 0.5);
  EXPECT_EQ(load_files.lines, 3);
  EXPECT_EQ(run.NWAVNO, 2);
  EXPECT_EQ(load_files.last_time, 0.5);
}

TEST_F(LoadLines, AreDueOnceForATimeAndOnlyWhenWanted) {
  EXPECT_TRUE(load_lines_due(0.0));
  write_joint_line(1, {}, 0.0);
  EXPECT_FALSE(load_lines_due(0.0));
  EXPECT_TRUE(load_lines_due(0.25));
  load_files.wanted = false;
  EXPECT_FALSE(load_lines_due(0.25));
}

/// Writes the lines of one member.
void write_lines(const WaterSection& section, const MemberPlace& place, double time, MemberLoad& load) {
  WAVLD(section, place, MemberMotion{}, time, true, load);
}

TEST_F(LoadLines, OfAMemberInItsOwnAxesAreAPairForEachSegmentAndItsJoints) {
  current_sea({0.0, 20.0, 50.0}, {1.0, 0.5, 0.0});
  WaterSection section = plain_tube();
  section.CDS = 0.1;
  MemberLoad load;
  write_lines(section, member_between({0.0, 0.0, -30.0}, {0.0, 30.0, -10.0}, 2), 3.5, load);
  const auto text = lines();
  ASSERT_EQ(text.size(), 6u);
  // Speeds 1/3, 0.5, 0.75 normal to the member, along -y of its axes: 0.5125 V^2.
  EXPECT_EQ(text[0].substr(0, 45), "LOAD Y    1   2    0.00-.05694  18.03-.12812 ");
  EXPECT_EQ(text[1].substr(0, 45), "LOAD Z    1   2    0.00.000000  18.03.000000 ");
  EXPECT_EQ(text[2].substr(0, 45), "LOAD Y    1   2   18.03-.12812  18.03-.28828 ");
  EXPECT_EQ(text[0].substr(60, 9), "MEMB UNIF");
  EXPECT_EQ(text[4], "LOAD      1     .000000.000000.000000.000000 .000000.000000 GLOB JOIN       3.50");
  EXPECT_EQ(text[5].substr(0, 16), "LOAD      2     ");
  EXPECT_EQ(load_files.lines, 6);
}

TEST_F(LoadLines, OfAMemberInGlobalAxesAreThreeForEachSegmentWithoutJoints) {
  current_sea({0.0, 50.0}, {1.0, 1.0});
  MemberLoad load;
  write_lines(plain_tube(), bar_of(pile(-30.0, -10.0, 2)), 0.0, load);
  const auto text = lines();
  ASSERT_EQ(text.size(), 3u);
  EXPECT_EQ(text[0], "LOAD X   12  34    0.00.512500  20.00.512500                GLOB UNIF       0.00");
  EXPECT_EQ(text[1], "LOAD Y   12  34    0.00.000000  20.00.000000                GLOB UNIF       0.00");
  EXPECT_EQ(text[2], "LOAD Z   12  34    0.00.000000  20.00.000000                GLOB UNIF       0.00");
}

double number(const std::string& text) {
  // The field leaves out the E before a signed power.
  const std::size_t sign = text.find_last_of("+-");
  if (sign != std::string::npos && sign > 0) return std::stod(text.substr(0, sign) + "E" + text.substr(sign));
  return std::stod(text);
}

TEST_F(LoadLines, AddUpToTheLoadOfTheMember) {
  // Uniform flow on an inclined member with tangential drag: lines are uniform, so the sum is exact to the digits kept.
  current_sea({0.0, 50.0}, {1.5, 1.5});
  WaterSection section = plain_tube(0.8);
  section.CDS = 0.2;
  const MemberPlace place = member_between({0.0, 0.0, -20.0}, {10.0, 5.0, -5.0}, 2);
  MemberLoad load;
  write_lines(section, place, 1.0, load);
  const auto text = lines();
  ASSERT_EQ(text.size(), 4u);
  const double length = std::stod(text[0].substr(30, 7));
  Point sum =
      to_global(place.axes, {0.0, number(text[0].substr(23, 7)) * length, number(text[1].substr(23, 7)) * length});
  for (const std::size_t line : {2u, 3u}) {
    for (std::size_t i = 0; i < 3; ++i) sum[i] += number(text[line].substr(16 + 7 * i, 7));
  }
  const Point whole = resultant(place, load).force;
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(sum[i], whole[i], 2e-3);
  EXPECT_GT(std::abs(number(text[2].substr(16, 7))), 0.1);
}

TEST_F(LoadLines, HoldTheRampButNotTheMagnification) {
  current_sea({0.0, 50.0}, {1.0, 1.0});
  wave.ramp_time = 4.0;
  wave.NORAMP = 2;
  force_scale.time[0] = 0.0;
  force_scale.time[1] = 10.0;
  force_scale.multiplier[0] = force_scale.multiplier[1] = 3.0;
  MemberLoad load;
  const MemberPlace place = bar_of(pile(-30.0, -10.0, 2));
  write_lines(plain_tube(), place, 1.0, load);
  EXPECT_EQ(lines()[0].substr(23, 7), ".128125");  // 0.5125/4
  EXPECT_NEAR(resultant(place, load).force[0], 0.128125 * 20.0 * 3.0, 1e-6);
}

TEST_F(LoadLines, OfADryMemberAreNone) {
  current_sea({0.0, 50.0}, {1.0, 1.0});
  MemberLoad load;
  write_lines(plain_tube(), pile(1.0, 10.0, 2), 1.0, load);
  EXPECT_TRUE(lines().empty());
  EXPECT_EQ(run.NWAVNO, 0);
}

TEST_F(LoadLines, DoNotHoldTheCorrectionOfAddedMass) {
  // At time 0 a ramp takes the whole force of the water; the correction has no ramp. Crest 6 over the rest level.
  airy_sea();
  wave.added_mass_code = 1;
  wave.ramp_time = 5.0;
  WaterSection section = plain_tube();
  section.KM = 1.0;
  MemberMotion motion;
  motion.acceleration = {Point{1.0, 0.0, 0.0}, Point{1.0, 0.0, 0.0}};
  MemberLoad load;
  WAVLD(section, bar_of(pile(0.0, 5.0, 2)), motion, 0.0, true, load);
  EXPECT_EQ(lines()[0].substr(23, 7), ".000000");
  EXPECT_NEAR(load[0] + load[6], -0.25 * 3.14159265 * rho * 5.0, 1e-6);
}

TEST(LoadFiles, BeginWithTheNumberOfStepsAndTheirSize) {
  Scratch scratch;
  still_sea();
  open_load_files(200, 0.125);
  const std::array<double, 6> forces{1.5, -2.0, 0.25, 3.0, 4.0, -1e-3};
  write_member_loads(7, 12, 34, forces);
  EXPECT_EQ(load_files.records, 2);
  close_formatted(UNIT_LOADS_TEXT);
  flush_all_units();
  const std::string bytes = scratch.contents("TAModel.rlo");
  ASSERT_EQ(bytes.size(), 12u + 8u + 36u + 8u);
  const auto integer = [&](std::size_t at) {
    int value;
    std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
  };
  const auto real = [&](std::size_t at) {
    float value;
    std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
  };
  double DT;
  std::memcpy(&DT, bytes.data() + 8, sizeof DT);
  EXPECT_EQ(integer(0), 12);
  EXPECT_EQ(integer(4), 200);
  EXPECT_EQ(DT, 0.125);
  EXPECT_EQ(integer(20), 36);
  EXPECT_EQ(integer(24), 7);
  EXPECT_EQ(integer(28), 12);
  EXPECT_EQ(integer(32), 34);
  for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(real(36 + 4 * i), static_cast<float>(forces[i]));
  EXPECT_EQ(integer(60), 36);
}

TEST(LoadFiles, GoOnInALaterMacro) {
  Scratch scratch;
  still_sea();
  open_load_files(200, 0.125);
  write_joint_line(1, {}, 1.0);
  open_load_files(50, 0.5);
  write_joint_line(1, {}, 2.0);
  EXPECT_EQ(load_files.records, 1);
  flush_formatted(UNIT_LOADS_TEXT);
  EXPECT_EQ(lines_of(scratch.contents("TAModel.sac")).size(), 2u);
}

TEST(LoadFiles, AreEmptiedByTheFirstMacroThatWritesThem) {
  Scratch scratch;
  still_sea();
  open_formatted(UNIT_LOADS_TEXT, "TAModel.sac", OpenMode::fresh);
  put_text(UNIT_LOADS_TEXT, "old\n");
  close_formatted(UNIT_LOADS_TEXT);
  open_load_files(1, 1.0);
  flush_all_units();
  EXPECT_EQ(scratch.contents("TAModel.sac"), "");
}

}  // namespace
}  // namespace tidearc::test
