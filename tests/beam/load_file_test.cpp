// The result pass of print code -1: end forces of the beams onto the load file, nothing on the report.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

#include "beam_block.h"
#include "elements/beam/sea.h"
#include "run/units.h"
#include "sea/members/member.h"
#include "sea/sea_factors.h"
#include "solve/arrays.h"
#include "support/scratch.h"

namespace tidearc::test {
namespace {

class MemberLoads : public Beams {
 protected:
  void SetUp() override {
    Beams::SetUp();
    load_files = {};
    sea_factors = {};
    response = {};
    group.NFIRST = 1;
    open_load_files(10, 0.5);
    element.KPRINT = -1;
    response.TIME = 2.5;
  }
  void TearDown() override {
    element.KPRINT = 1;
    sea_factors = {};
    load_files = {};
    response = {};
  }
  /// Integers and reals of the second record of the file.
  std::vector<float> forces_of_file(std::array<int, 3>& numbers) {
    close_formatted(UNIT_LOADS_TEXT);
    flush_all_units();
    const std::string bytes = scratch_.contents("TAModel.rlo");
    std::vector<float> forces(6);
    if (bytes.size() < 64) return {};
    std::memcpy(numbers.data(), bytes.data() + 24, 12);
    std::memcpy(forces.data(), bytes.data() + 36, 24);
    return forces;
  }
  Scratch scratch_;
};

TEST_F(MemberLoads, OfALinearBeamAreItsReportedEndForces) {
  LinearBeamRecord& beam = linear();
  beam.head.number = 7;
  beam.NODEI = 12;
  beam.NODEJ = 34;
  for (std::size_t i = 0; i < 12; ++i) {
    beam.F[i] = static_cast<double>(i + 1);
    beam.sea.FWAVE[i] = 100.0 * static_cast<double>(i);
  }
  sea_factors.wave = 0.5;
  PRNT03();
  EXPECT_EQ(load_files.records, 2);
  EXPECT_EQ(scratch_.report(), "");
  std::array<int, 3> numbers{};
  // F - 50 i: axial, shear 2, shear 3 of I, then of J.
  EXPECT_EQ(forces_of_file(numbers), (std::vector<float>{1, -48, -97, -293, -342, -391}));
  EXPECT_EQ(numbers, (std::array<int, 3>{7, 12, 34}));
}

TEST_F(MemberLoads, OfALargeBeamFollowFromItsNaturalForces) {
  LargeBeam& beam = large();
  beam.head.number = 3;
  beam.NODEI = 1;
  beam.NODEJ = 2;
  beam.QNAT[5] = 4.0;                 // tension
  beam.QNAT[2] = beam.QNAT[3] = 6.0;  // moments about 3: shear 12/L along 2
  PRNT02();
  std::array<int, 3> numbers{};
  const auto shear = static_cast<float>(12.0 / beam.XL);
  const std::vector<float> found = forces_of_file(numbers);
  ASSERT_EQ(found.size(), 6u);
  EXPECT_EQ(found[0], -4.0F);
  EXPECT_NEAR(found[1], shear, 1e-6F);
  EXPECT_EQ(found[2], 0.0F);
  EXPECT_EQ(found[3], 4.0F);
  EXPECT_NEAR(found[4], -shear, 1e-6F);
  EXPECT_EQ(numbers, (std::array<int, 3>{3, 1, 2}));
}

TEST_F(MemberLoads, NeedAPositiveTime) {
  linear();
  for (const double time : {0.0, -1.0}) {
    response.TIME = time;
    PRNT03();
    EXPECT_EQ(load_files.records, 1) << time;
    EXPECT_EQ(scratch_.report(), "");
  }
}

TEST_F(MemberLoads, AreNotWrittenByAPrintOnTheReport) {
  element.KPRINT = 1;
  linear().head.number = 1;
  PRNT03();
  EXPECT_EQ(load_files.records, 1);
  EXPECT_NE(scratch_.report().find("RESULTS FOR GROUP"), std::string::npos);
}

}  // namespace
}  // namespace tidearc::test
