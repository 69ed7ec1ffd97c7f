// The beams' pass of the sea: ends and their motion with offsets, axes, relative velocity, what the records keep.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>

#include "elements/beam/operations.h"
#include "elements/beam/sea.h"
#include "frame_deck.h"
#include "group_deck.h"
#include "sea/field.h"
#include "sea/sea_factors.h"
#include "support/scratch.h"

namespace tidearc::test {
namespace {

using Six = std::array<double, 6>;
using Nodal = std::array<double, 12>;

/// Water of density 2 that flows along Y at `speed` between -1000 and 0, nothing else.
void flow_along_Y(double speed, const std::vector<double>& levels = {0.0, 1000.0}) {
  wave = WaveState{};
  wave.IWTY = wave_current_only;
  wave.current_code = 1;
  wave.current_stretching = 1;
  wave.sg = -1.0;
  wave.gravity = {0.0, 0.0, -1.0};
  wave.rho = 2.0;
  wave.d = 1000.0;
  wave.mudline = wave.lower_force = wave.lower_current = -1000.0;
  wave.NTIME = 1;
  wave.NLEVEL = static_cast<int>(levels.size());
  current_now = CurrentNow{};
  current_now.time = 0.0;
  current_now.NLEVEL = wave.NLEVEL;
  for (std::size_t i = 0; i < levels.size(); ++i) {
    current_now.level[i] = levels[i];
    current_now.vector[3 * i + 1] = speed;
  }
  force_scale.index = 0;
  sea_factors = {};
}

/// One element between nodes 1 and 2; D 1, CD 1: the load per unit length is the square of the relative speed.
template <class Group>
Group with_water(Group group, typename Group::Section section, const std::array<double, 6>& offset,
                 typename Group::Element element = {}) {
  group.KFEM = 1;
  section.water = {.D = 1, .CD = 1};
  group.section(section);
  if (offset != std::array<double, 6>{}) {
    group.offset(offset);
    element.ECC = 1;
  }
  element.WAVE = 4;
  group.element(element);
  return group;
}
LinearGroup linear_group(const std::array<double, 6>& offset = {}, int ITYPE = 3, LinearGroup::Element element = {}) {
  LinearGroup group;
  group.ITYPE = ITYPE;
  return with_water(group, {.A = 1, .J = 1, .I3 = 1, .I2 = 1}, offset, element);
}
LargeGroup large_group(const std::array<double, 6>& offset = {}, int ITYPE = 2) {
  LargeGroup group;
  group.ITYPE = ITYPE;
  group.viv = "\n\n\n";
  return with_water(group, {.A = 1, .IY = 1, .IZ = 1, .J = 1}, offset);
}

/// Reads a model of that element; node 3 is held.
void read_model(const std::string& group, const std::array<double, 3>& I, const std::array<double, 3>& J) {
  FrameDeck deck;
  deck.node(I[0], I[1], I[2]);
  deck.node(J[0], J[1], J[2]);
  deck.node(0, 99, 0);
  deck.fix(3, "111111");
  deck.group(group);
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors << run.report;
}

/// The pass's operation on the element at hand, with a motion of its nodes; its record stays in the work block.
Nodal load_at(int ITYPE, double time, const Nodal& velocity = {}, const Nodal& displacement = {}) {
  Nodal load{};
  for_each_record({{ITYPE, 1}}, [&](const ElementType& type, const Word* record, int) {
    load_record(record);
    element.EDISP = element.EVEL = element.EACC = {};
    element.ERES.fill(99.0);
    std::copy(velocity.begin(), velocity.end(), element.EVEL.begin());
    std::copy(displacement.begin(), displacement.end(), element.EDISP.begin());
    type.operations.sea(time, false);
    std::copy_n(element.ERES.begin(), 12, load.begin());
  });
  return load;
}

/// Forces and moments about the origin of nodal loads at two points.
Six resultant(const Nodal& f, const std::array<double, 3>& I, const std::array<double, 3>& J) {
  Six sum{};
  for (const std::size_t end : {0u, 1u}) {
    const std::array<double, 3>& x = end == 0 ? I : J;
    const double* F = f.data() + 6 * end;
    sum[0] += F[0];
    sum[1] += F[1];
    sum[2] += F[2];
    sum[3] += F[3] + x[1] * F[2] - x[2] * F[1];
    sum[4] += F[4] + x[2] * F[0] - x[0] * F[2];
    sum[5] += F[5] + x[0] * F[1] - x[1] * F[0];
  }
  return sum;
}
void expect_near(const Six& found, const Six& expected, double tolerance) {
  for (std::size_t i = 0; i < 6; ++i) EXPECT_NEAR(found[i], expected[i], tolerance) << i;
}

constexpr double single = 1e-5;  // Gauss points are single precision values

const std::array<double, 3> foot = {0, 0, -30}, head = {0, 0, -20};

TEST(WaveLoads, AreTheFixedEndForcesInTheRecordAndOnTheNodes) {
  read_model(linear_group().text(), foot, head);
  flow_along_Y(3.0);
  const Nodal load = load_at(3, 1.0);
  // 9 per unit length over 10 along Y: 45 and wL^2/12 = 75 about X, positive turning Y to Z.
  const Nodal expected = {0, 45, 0, -75, 0, 0, 0, 45, 0, 75, 0, 0};
  for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(load[i], expected[i], 1e-4) << i;
  // Local axes of the vertical member: x up, y along X, z along Y.
  const LinearBeamRecord& beam = current_record<LinearBeamRecord>();
  const Nodal local = {0, 0, 45, 0, -75, 0, 0, 0, 45, 0, 75, 0};
  for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(beam.sea.FWAVE[i], local[i], 1e-4) << i;
}

// Ends at (1,2,-30) and (1,2,-20), nodes elsewhere: the load acts on the member's line.
TEST(WaveLoads, OfOffsetEndsActOnTheMembersLine) {
  const std::array<double, 3> I = {0, 5, -31}, J = {3, 2, -20};
  const std::array<double, 6> offset = {1, -3, 1, -2, 0, 0};
  const Six expected = {0, 90, 0, 25 * 90, 0, 1 * 90};  // at (1, 2, -25)
  for (const int type : {3, 7, 2}) {
    read_model(type == 2 ? large_group(offset).text() : linear_group(offset, type).text(), I, J);
    flow_along_Y(3.0);
    expect_near(resultant(load_at(type, 1.0), I, J), expected, 1e-3);
  }
}

TEST(WaveLoads, AreTheSameWithHinges) {
  read_model(linear_group().text(), foot, head);
  flow_along_Y(3.0);
  const Nodal stiff = load_at(3, 1.0);
  read_model(linear_group({}, 3, {.HI = 11, .HJ = 11}).text(), foot, head);
  flow_along_Y(3.0);
  EXPECT_EQ(load_at(3, 1.0), stiff);
}

TEST(WaveLoads, OfGroupAndElementPointsAndOfTheFlag) {
  // The element's own number counts, else the group's, and none means no load.
  for (const int of_element : {0, 2}) {
    for (const int of_group : {0, 3}) {
      LinearGroup group;
      group.NGAUSS = of_group;
      group.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1, .water = {.D = 1, .CD = 1}});
      group.element({.WAVE = of_element});
      read_model(group.text(), foot, head);
      flow_along_Y(3.0);
      const Nodal load = load_at(3, 1.0);
      EXPECT_NEAR(load[1], of_element + of_group > 0 ? 45.0 : 0.0, 1e-4) << of_element << of_group;
      EXPECT_EQ(load[3], 0.0);  // no end moments without the flag
    }
  }
}

TEST(WaveLoads, AreRelativeToTheMotionOfTheOffsetEnds) {
  // Node 1 turns about X at 0.5: its end, 2 above it, moves along -Y at 1, node 2 moves likewise: relative speed 4.
  const std::array<double, 3> I = {0, 0, -32};
  const std::array<double, 6> offset = {0, 0, 2, 0, 0, 0};
  for (const int type : {3, 7, 2}) {
    read_model(type == 2 ? large_group(offset).text() : linear_group(offset, type).text(), I, head);
    flow_along_Y(3.0);
    wave.relative_velocity = 1;
    const Nodal velocity = {0, 0, 0, 0.5, 0, 0, 0, -1, 0, 0, 0, 0};
    EXPECT_NEAR(resultant(load_at(type, 1.0, velocity), I, head)[1], 160.0, 1e-3) << type;
    EXPECT_NEAR(resultant(load_at(type, 0.0, velocity), I, head)[1], 90.0, 1e-3) << type;  // time zero
    wave.relative_velocity = 0;
    EXPECT_NEAR(resultant(load_at(type, 1.0, velocity), I, head)[1], 90.0, 1e-3) << type;
  }
}

// Members of types 3 and 7 as wide as the cutoff diameter see the water alone; the others never.
TEST(SelectiveRelativeVelocity, IsThatOfTheCutoffDiameter) {
  const Nodal velocity = {0, -1, 0, 0, 0, 0, 0, -1, 0, 0, 0, 0};
  struct Case {
    double cutoff;
    bool absolute;
  };
  for (const int type : {3, 7, 2, 27}) {
    read_model(type == 2 || type == 27 ? large_group({}, type).text() : linear_group({}, type).text(), foot, head);
    for (const Case c : {Case{0.0, false}, Case{0.99, true}, Case{1.0, true}, Case{1.0000001, false}}) {
      flow_along_Y(3.0);
      wave.relative_velocity = 1;
      wave.cutoff_diameter = c.cutoff;
      const bool absolute = c.absolute && (type == 3 || type == 7);
      EXPECT_NEAR(load_at(type, 1.0, velocity)[1], absolute ? 45.0 : 80.0, 1e-3) << type << " " << c.cutoff;
    }
  }
}

TEST(SelectiveRelativeVelocity, NeedsACutoffAboveItsLimit) {
  LinearGroup group;
  group.KFEM = 1;
  group.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1, .water = {.D = 2e-5, .CD = 5e4}});
  group.element({.WAVE = 4});
  read_model(group.text(), foot, head);
  const Nodal velocity = {0, -1, 0, 0, 0, 0, 0, -1, 0, 0, 0, 0};
  for (const double cutoff : {1e-5, 1.001e-5}) {
    flow_along_Y(3.0);
    wave.relative_velocity = 1;
    wave.cutoff_diameter = cutoff;
    EXPECT_NEAR(load_at(3, 1.0, velocity)[1], cutoff > 1e-5 ? 45.0 : 80.0, 1e-3) << cutoff;
  }
}

TEST(WaveLoads, OfALargeBeamTakeItsFrameAsItStands) {
  // The frame is turned by hand: x along Y, in the direction of the flow, so that only the frame's y and z bear drag.
  read_model(large_group().text(), foot, head);
  flow_along_Y(3.0);
  for_each_record({{2, 1}}, [&](const ElementType& type, const Word* record, int) {
    load_record(record);
    element.EDISP = element.EVEL = element.EACC = {};
    LargeBeam& beam = current_record<LargeBeam>();
    const double axes[9] = {0, 1, 0, 0, 0, 1, 1, 0, 0};
    std::copy_n(axes, 9, beam.TELEM);
    type.operations.sea(1.0, false);
  });
  for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(element.ERES[i], 0.0, 1e-9) << i;
}

TEST(WaveLoads, MoveWithTheDisplacedEndsWhereTheDeckSaysSo) {
  // Raised by 25, the member of 10 stands half out of the water.
  const Nodal up = {0, 0, 25, 0, 0, 0, 0, 0, 25, 0, 0, 0};
  for (const int type : {3, 7, 2}) {
    read_model(type == 2 ? large_group().text() : linear_group({}, type).text(), foot, head);
    flow_along_Y(3.0);
    EXPECT_NEAR(resultant(load_at(type, 1.0, {}, up), foot, head)[1], 90.0, 1e-3);
    wave.large_displacement = 1;
    wave.upper_force = 100.0;
    const double wet = resultant(load_at(type, 1.0, {}, up), foot, head)[1];
    EXPECT_NEAR(wet, 45.0, 90.0 / 128 + 1e-3);  // the surface cut is found within 1/128 of the chord
    EXPECT_LT(wet, 46.0);
  }
}

// The warning of vortex shedding goes by the levels of the current that divide the member, once for each member.
TEST(VortexSegments, AreToldOnceWhereCurrentLevelsDivideTheMember) {
  const std::string words =
      "     ** warning ** more than one segment but only the first segment is used for viv calculations.";
  read_model(large_group({}, 27).text(), foot, head);
  for (const bool divided : {false, true}) {
    Scratch scratch;
    flow_along_Y(3.0, divided ? std::vector<double>{0, 25, 1000} : std::vector<double>{0, 20, 30, 1000});
    for_each_record({{27, 1}}, [&](const ElementType& type, Word* record, int) {
      for (const double time : {1.0, 2.0}) {
        load_record(record);
        element.EDISP = element.EVEL = element.EACC = {};
        type.operations.sea(time, false);
        copy_sea_words(type, record, record_words());
      }
    });
    EXPECT_EQ(count_of(scratch.report(), words), divided ? 1 : 0);
  }
}

// Type 7 beside a member without water is the member with it.
TEST(WaveBeam, GivesTheLoadsOfTheLinearBeam) {
  const std::array<double, 6> offset = {1, -3, 1, -2, 0, 0};
  const std::array<double, 3> I = {0, 5, -31}, J = {3, 2, -20};
  read_model(linear_group(offset, 3).text(), I, J);
  flow_along_Y(3.0);
  const Nodal linear = load_at(3, 1.0);
  LinearBeamRecord of_linear;
  std::memcpy(&of_linear, record_words(), sizeof of_linear);
  read_model(linear_group(offset, 7).text(), I, J);
  flow_along_Y(3.0);
  EXPECT_EQ(load_at(7, 1.0), linear);
  WaveBeamRecord of_wave;
  std::memcpy(&of_wave, record_words(), sizeof of_wave);
  for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ(of_wave.FWAVE[i], of_linear.sea.FWAVE[i]);
}

TEST(WaveBeam, HasNoStiffnessNoResistanceAndNoDamping) {
  read_model(linear_group({}, 7).text(), foot, head);
  for_each_record({{7, 1}}, [&](const ElementType& type, const Word* record, int) {
    EXPECT_EQ(type.operations.stiffness, nullptr);
    EXPECT_EQ(type.operations.print, nullptr);
    EXPECT_EQ(record[1], 0);
    load_record(record);
    element.EDISP.fill(1.0);
    element.ERES.fill(99.0);
    element.EDAMP.fill(99.0);
    type.operations.state();
    type.operations.resist();
    for (std::size_t i = 0; i < 12; ++i) {
      EXPECT_EQ(element.ERES[i], 0.0);
      EXPECT_EQ(element.EDAMP[i], 0.0);
    }
    EXPECT_EQ(record_words()[1], 0);
  });
}

TEST(WaveBeam, KeepsTheExtremesOfItsWaveLoads) {
  read_model(linear_group({}, 7).text(), foot, head);
  for_each_record({{7, 1}}, [&](const ElementType& type, const Word* record, int) {
    load_record(record);
    element.EDISP = element.EVEL = element.EACC = {};
    WaveBeamRecord& beam = current_record<WaveBeamRecord>();
    for (const double speed : {3.0, -2.0}) {
      flow_along_Y(speed);
      type.operations.sea(1.0, false);
      sea_factors.wave = 0.5;
      element.TIME = speed;
      type.operations.state();
    }
    // Half of 45 along local z, then half of -20.
    EXPECT_NEAR(beam.loads.largest[2], 22.5, single * 10);
    EXPECT_EQ(beam.loads.largest_time[2], 3.0);
    EXPECT_NEAR(beam.loads.smallest[2], -10.0, single * 10);
    EXPECT_EQ(beam.loads.smallest_time[2], -2.0);
    element.TIME = 7.0;
    type.operations.restart_envelope();
    EXPECT_EQ(beam.loads.largest[2], beam.loads.smallest[2]);
    EXPECT_NEAR(beam.loads.largest[2], -10.0, single * 10);
    EXPECT_EQ(beam.loads.largest_time[2], 7.0);
  });
  sea_factors = {};
}

}  // namespace
}  // namespace tidearc::test
