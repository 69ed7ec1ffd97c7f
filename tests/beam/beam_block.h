// A member with offsets in the work block, as linear or large displacement beam, and its operations' results.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "elements/beam/local_axes.h"
#include "elements/beam/natural.h"
#include "elements/beam/offsets.h"
#include "elements/beam/operations.h"
#include "elements/beam/record.h"
#include "elements/contract/group.h"
#include "model/patterns.h"

namespace tidearc::test {

using Vector12 = std::array<double, 12>;
using Full = std::array<double, 144>;

/// A member along (1,2,2)/3 of length 3 with offsets, in the work block.
template <class Beam>
void place(Beam& beam) {
  const double ECC[6] = {0.1, -0.2, 0.3, 0.2, 0.0, 0.4};
  std::ranges::copy(ECC, beam.ECC);
  beam.KECC = 1;
  const LocalAxes local =
      local_axes(std::array<double, 3>{0, 0, 0}, std::array<double, 3>{1.3, 2.1, 1.6}, ECC, nullptr, axes_SACS, 0.2);
  beam.XL = local.length;
  std::ranges::copy(local.axes, beam.TELEM);
}

class Beams : public ::testing::Test {
 protected:
  void SetUp() override {
    group = {};
    element = {};
    patterns.have_temperatures = false;
  }
  LinearBeamRecord& linear() {
    group.ITYPE = 3;
    group.LFIX = 530;
    LinearBeamRecord& beam = current_record<LinearBeamRecord>();
    place(beam);
    beam.K = beam_stiffness(50, 7, {4, 2}, {9, 4.5}, beam.XL);
    beam.head.KSTIF = 1;
    return beam;
  }
  LargeBeam& large(int KSD = 2) {
    group.ITYPE = 2;
    group.LFIX = 668;
    LargeBeam& beam = current_record<LargeBeam>();
    place(beam);
    for (std::size_t i = 0; i < 3; ++i) beam.CHORD[i] = beam.XL * beam.TELEM[i];
    natural_transformation(beam.TELEM, beam.XL, beam.TGLOB);
    beam.EI2L = 1;
    beam.EI3L = 2.25;
    beam.GJL = 7;
    beam.EAL = 50;
    beam.KSD = KSD;
    return beam;
  }
  static Full unpacked() {
    Full K{};
    std::size_t at = 0;
    for (std::size_t i = 0; i < 12; ++i) {
      for (std::size_t j = i; j < 12; ++j) K[i + 12 * j] = K[j + 12 * i] = element.EMAT[at++];
    }
    return K;
  }
  static Vector12 times(const Full& K, const Vector12& v) {
    Vector12 f{};
    for (std::size_t j = 0; j < 12; ++j) {
      for (std::size_t i = 0; i < 12; ++i) f[i] += K[i + 12 * j] * v[j];
    }
    return f;
  }
  static Vector12 of(const std::array<double, most_freedoms>& values) {
    Vector12 v;
    std::copy_n(values.begin(), 12, v.begin());
    return v;
  }
  static void set(std::array<double, most_freedoms>& to, const Vector12& v) { std::ranges::copy(v, to.begin()); }
};

inline constexpr Vector12 some = {0.1, 0.2, -0.3, 0.4, 0.5, -0.6, 0.7, 1.0, 0.5, 0.1, 0.2, 0.3};
inline constexpr Vector12 other = {0.3, -0.1, 0.2, -0.2, 0.1, 0.4, 0.2, -0.3, 0.6, 0.5, -0.7, 0.1};

}  // namespace tidearc::test
