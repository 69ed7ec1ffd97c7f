// The truss in water.
#include "elements/truss/sea.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>

#include "elements/contract/input.h"
#include "elements/contract/water_input.h"
#include "elements/truss/geometry.h"
#include "elements/truss/operations.h"
#include "model/gravity.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "sea/sea_factors.h"

namespace tidearc {

namespace {

WaterSection water_section(const TrussRecord& truss) {
  const TrussSection& s = truss.section;
  return {s.water_diameter,
          s.CD,
          s.longitudinal_CD,
          s.CM,
          s.CKM,
          s.ICA,
          s.JCA,
          has_general_table(s.ICA) ? &truss.general : nullptr};
}

/// Undeformed ends, and the local axes as they stand.
MemberPlace member_place(const TrussRecord& truss) {
  MemberPlace place{truss.NODEI, truss.NODEJ, coordinates(truss.NODEI), coordinates(truss.NODEJ)};
  std::ranges::copy(truss.ROT, place.axes.begin());
  place.mode = LoadMode::global;
  place.NGAUSS = gauss_count(truss.KWAVE, truss.NGAUSS);
  return place;
}

/// Three translations of either end.
std::array<Point, 2> both_ends(const std::array<double, most_freedoms>& of) {
  return {Point{of[0], of[1], of[2]}, Point{of[3], of[4], of[5]}};
}

/// The forces of both ends.
void take_forces(const MemberLoad& load, double (&forces)[truss_freedoms]) {
  std::copy_n(load.begin(), 3, forces);
  std::copy_n(load.begin() + 6, 3, forces + 3);
}

void add_to_pattern(int pattern, const TrussRecord& truss, const double (&forces)[truss_freedoms]) {
  double f[truss_freedoms];
  std::ranges::copy(forces, f);
  add_nodal_load(pattern, truss.NODEI, std::span<double>(f, 3));
  add_nodal_load(pattern, truss.NODEJ, std::span<double>(f + 3, 3));
}

double buoyancy_diameter(const TrussSection& s) {
  return s.buoyant_diameter == 0.0 ? s.water_diameter : s.buoyant_diameter;
}

}  // namespace

void take_still_water(TrussRecord& truss) {
  const WaterSection section = water_section(truss);
  const MemberPlace place = member_place(truss);
  const StillWaterLoads loads = still_water_loads(section, truss.section.buoyant_diameter, truss.KBUOY, place);
  take_forces(loads.buoyancy, truss.FBUOY);
  take_forces(loads.current, truss.FCURR);
  add_to_pattern(patterns.KBUOYV, truss, truss.FBUOY);
  add_to_pattern(patterns.KCURRV, truss, truss.FCURR);
  add_added_mass(section, place);
}

double axial_part_of_sea(const TrussRecord& truss) {
  return 0.5 * extension(truss.DIR, acting_loads(truss.FWAVE, truss.FBUOY, truss.FCURR).data());
}

WaterPlane water_plane(const TrussRecord& truss) {
  const int signed_axis = gravity_axis();
  if (gravity.KBUOY < 1 || truss.KBUOY == 0 || signed_axis == 0) return {};
  const auto axis = static_cast<std::size_t>(std::abs(signed_axis) - 1);
  const auto wet = [&](double level) { return (level - gravity.water_level) * gravity.direction[axis] >= 0.0; };
  const double I = truss.XI[axis];
  const double J = truss.XJ[axis];
  if (wet(I) == wet(J)) return {};
  const double D = buoyancy_diameter(truss.section);
  const double plane = std::numbers::pi / 4.0 * D * D * gravity.water_weight;
  return {I < J ? axis + 3 : axis, plane / std::abs(truss.DIR[axis])};
}

void SEAL01(double time, bool lines) {
  TrussRecord& truss = current_record<TrussRecord>();
  const MemberMotion motion{both_ends(element.EDISP), both_ends(element.EVEL), both_ends(element.EACC)};
  MemberLoad load{};
  WAVLD(water_section(truss), member_place(truss), motion, time, lines, load);
  take_forces(load, truss.FWAVE);
  std::ranges::copy(truss.FWAVE, element.ERES.begin());
}

}  // namespace tidearc
