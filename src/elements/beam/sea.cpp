// The beams in water.
#include "elements/beam/sea.h"

#include <algorithm>

#include "elements/beam/offsets.h"
#include "elements/beam/operations.h"
#include "elements/beam/stiffness_parts.h"
#include "elements/beam/vortex.h"
#include "elements/contract/input.h"
#include "elements/contract/water_input.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "sea/members/lift.h"
#include "sea/sea_factors.h"

namespace tidearc {

namespace {

using Vector12 = std::array<double, 12>;

constexpr int wake_streams = 4096;       ///< between the random numbers of one group and the next              [-]
constexpr double least_cutoff = 1.0E-5;  ///< cutoff diameters up to it select nothing  [length]

WaterSection water_section(const BeamInSea& beam) {
  const BeamWater& w = beam.water;
  return {w.wave_diameter,
          w.CD,
          w.longitudinal_CD,
          w.CM,
          w.CKM,
          w.ICA,
          w.JCA,
          has_general_table(w.ICA) ? &beam.general : nullptr};
}

/// Undeformed ends, offsets included, and the local axes as they stand.
MemberPlace member_place(const BeamInSea& beam) {
  MemberPlace place{beam.NODEI, beam.NODEJ, coordinates(beam.NODEI), coordinates(beam.NODEJ)};
  for (std::size_t i = 0; i < 3; ++i) {
    place.I[i] += beam.ECC[2 * i];
    place.J[i] += beam.ECC[2 * i + 1];
  }
  std::ranges::copy(beam.axes, place.axes.begin());
  place.mode = LoadMode::local;
  place.end_moments = beam.end_moments;
  place.NGAUSS = gauss_count(beam.KWAVE, beam.NGAUSS);
  return place;
}

Vector12 in_master_axes(const BeamInSea& beam, const MemberLoad& local) {
  Vector12 f;
  to_master_axes(beam.axes, local, f);
  return f;
}

/// Loads of the nodes in master axes of loads of the ends in local ones.
Vector12 nodal_loads(const BeamInSea& beam, const MemberLoad& local) {
  Vector12 f = in_master_axes(beam, local);
  move_to_nodes(beam.ECC, f);
  return f;
}

/// Loads of the ends into the record, in the axes in which it keeps them.
void keep(const BeamInSea& beam, const MemberLoad& local, double (&kept)[12]) {
  std::ranges::copy(beam.frame_turns ? in_master_axes(beam, local) : local, kept);
}

void add_to_pattern(int pattern, const BeamInSea& beam, const MemberLoad& local) {
  Vector12 f = nodal_loads(beam, local);
  add_nodal_load(pattern, beam.NODEI, std::span<double>(f.data(), 6));
  add_nodal_load(pattern, beam.NODEJ, std::span<double>(f.data() + 6, 6));
}

/// Translations of both ends of a motion of the nodes.
std::array<Point, 2> end_translations(const BeamInSea& beam, const std::array<double, most_freedoms>& nodal) {
  Vector12 u;
  std::copy_n(nodal.begin(), 12, u.begin());
  move_to_ends(beam.ECC, u);
  return {Point{u[0], u[1], u[2]}, Point{u[6], u[7], u[8]}};
}

/// Motion of the member's ends, of that of its nodes in the work block.
MemberMotion motion_of_ends(const BeamInSea& beam) {
  return {end_translations(beam, element.EDISP), end_translations(beam, element.EVEL),
          end_translations(beam, element.EACC)};
}

/// Of members as wide as the cutoff diameter the water alone moves.
void select_relative_velocity(const BeamInSea& beam, MemberMotion& motion) {
  if (!(wave.cutoff_diameter > least_cutoff) || beam.water.wave_diameter < wave.cutoff_diameter) return;
  motion.velocity = {};
  motion.acceleration = {};
}

/// Wave loads: FWAVE of the record, and ERES of the work block on the nodes in master axes.
void put_wave_loads(const BeamInSea& beam, const MemberLoad& load, double (&FWAVE)[12]) {
  keep(beam, load, FWAVE);
  std::ranges::copy(nodal_loads(beam, load), element.ERES.begin());
}

/// Wave loads with selective relative velocity.
void load_linear_beam(const BeamInSea& beam, double time, bool lines, double (&FWAVE)[12]) {
  MemberMotion motion = motion_of_ends(beam);
  select_relative_velocity(beam, motion);
  MemberLoad load{};
  WAVLD(water_section(beam), member_place(beam), motion, time, lines, load);
  put_wave_loads(beam, load, FWAVE);
}

/// Where nothing acts the internal forces keep every bit.
bool sea_acts() { return sea_factors.wave != 0.0 || sea_factors.buoyancy != 0.0 || sea_factors.current != 0.0; }

Vector12 less(std::span<const double, 12> internal, const Vector12& loads) {
  Vector12 left;
  for (std::size_t i = 0; i < left.size(); ++i) left[i] = internal[i] - loads[i];
  return left;
}

}  // namespace

std::array<double, 12> reported_forces(std::span<const double, 12> internal, const BeamSea& sea) {
  return less(internal, sea_acts() ? acting_loads(sea.FWAVE, sea.FBUOY, sea.FCURR) : Vector12{});
}

std::array<double, 12> reported_forces(std::span<const double, 12> internal, const BeamSea& sea,
                                       std::span<const double, 9> axes) {
  Vector12 local{};
  if (sea_acts()) to_member_axes(axes, acting_loads(sea.FWAVE, sea.FBUOY, sea.FCURR), local);
  return less(internal, local);
}

void take_still_water(const BeamInSea& beam, BeamSea* kept) {
  const WaterSection section = water_section(beam);
  const MemberPlace place = member_place(beam);
  const StillWaterLoads loads = still_water_loads(section, beam.water.buoyant_diameter, beam.KBUOY, place);
  add_to_pattern(patterns.KBUOYV, beam, loads.buoyancy);
  add_to_pattern(patterns.KCURRV, beam, loads.current);
  add_added_mass(section, place);
  if (kept == nullptr) return;
  keep(beam, loads.buoyancy, kept->FBUOY);
  keep(beam, loads.current, kept->FCURR);
}

void SEAL03(double time, bool lines) {
  LinearBeamRecord& beam = current_record<LinearBeamRecord>();
  load_linear_beam(in_sea(beam), time, lines, beam.sea.FWAVE);
}

void SEAL07(double time, bool lines) {
  WaveBeamRecord& beam = current_record<WaveBeamRecord>();
  load_linear_beam(in_sea(beam), time, lines, beam.FWAVE);
}

void SEAL02(double time, bool lines) {
  LargeBeam& record = current_record<LargeBeam>();
  const BeamInSea beam = in_sea(record);
  MemberLoad load{};
  WAVLD(water_section(beam), member_place(beam), motion_of_ends(beam), time, lines, load);
  put_wave_loads(beam, load, record.sea.FWAVE);
}

void SEAL27(double time, bool lines) {
  VortexBeamRecord& record = current_record<VortexBeamRecord>();
  const BeamInSea beam = in_sea(record.beam);
  MemberLoad load{}, lift{};
  WAVLDV(water_section(beam), member_place(beam), motion_of_ends(beam), time, lines, load, record.beam.KTOLD);
  const int stream = wake_streams * element.IGRP + record.beam.head.number;
  add_vortex_load(wake_law(vortex_control()), beam.water.wave_diameter, stream, time, record.wake, lift, load);
  keep(beam, lift, record.FLIFT);
  put_wave_loads(beam, load, record.beam.sea.FWAVE);
}

}  // namespace tidearc
