// Where a beam stands and what the model gets from it.
#include "elements/beam/placing.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <string>

#include "elements/beam/offsets.h"
#include "elements/contract/input.h"
#include "model/gravity.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "run/layout.h"
#include "run/units.h"
#include "run/vectors.h"

namespace tidearc {

namespace {

bool inside(int node) { return node >= 1 && node <= sizes.NUMNP; }

[[noreturn]] void stop_zero_length(const BeamPlace& place) {
  write(units.NDOUT, "/,' ERROR ELEMENT',I6,' HAS ZERO LENGTH',5X,'NODE-I',I6,5X,'NODE-J',I6", place.number,
        place.NODEI, place.NODEJ);
  complain(place.card, "element " + std::to_string(place.number) + " has zero length");
  CLOSUP();
}

/// Nodal forces of the weight: three forces and three moments at I, then at J, master axes.
std::array<double, 12> weight_forces(const BeamWeight& beam) {
  std::array<double, 12> f{};
  double half[3];  // force on one end
  for (std::size_t i = 0; i < 3; ++i) {
    half[i] = 0.5 * beam.weight * beam.length * gravity.direction[i];
    f[i] = half[i];
    f[i + 6] = half[i];
  }
  if (!beam.end_moments) return f;
  // Fixed-end moments w L^2/12 of the part of the weight that is normal to the member: x times the load.
  const double* x = beam.x;
  const double moment[3] = {x[1] * half[2] - x[2] * half[1], x[2] * half[0] - x[0] * half[2],
                            x[0] * half[1] - x[1] * half[0]};
  for (std::size_t i = 0; i < 3; ++i) {
    f[i + 3] = moment[i] * beam.length / 6.0;
    f[i + 9] = -f[i + 3];
  }
  move_to_nodes(beam.ECC, f);
  return f;
}

}  // namespace

double node_distance(int NODEI, int NODEJ) {
  if (!inside(NODEI) || !inside(NODEJ)) return 0.0;
  const std::array<double, 3> I = coordinates(NODEI);
  const std::array<double, 3> J = coordinates(NODEJ);
  const double d[3] = {J[0] - I[0], J[1] - I[1], J[2] - I[2]};
  return std::sqrt(DOT3(d, d));
}

bool beam_nodes_in_range(const BeamPlace& place, const DeckPlace& I, const DeckPlace& J, const DeckPlace& K) {
  const bool I_inside = node_in_range(place.NODEI, sizes.NUMNP, I);
  const bool J_inside = node_in_range(place.NODEJ, sizes.NUMNP, J);
  const bool K_inside = place.K <= 0 || node_in_range(place.K, sizes.NUMNP, K);
  return I_inside && J_inside && K_inside;
}

PlacedBeam place_beam(const BeamPlace& place) {
  const bool has_K = place.K > 0;
  const std::array<double, 3> xK = has_K ? coordinates(place.K) : std::array<double, 3>{};
  PlacedBeam placed{local_axes(coordinates(place.NODEI), coordinates(place.NODEJ), place.ECC,
                               has_K ? xK.data() : nullptr, place.convention, place.angle),
                    has_K ? place.K : static_cast<int>(place.convention)};
  if (placed.local.length == 0.0) stop_zero_length(place);
  if (placed.local.K_on_axis) {
    write(units.NDOUT, "5X,'ERROR.    K-NODE LIES ON BEAM X-AXIS'");
    write(units.NDOUT, "5X,'PROCEEDING WITH SACS ASSUMPTION FOR LOCAL AXES'");
    complain(place.card, "element " + std::to_string(place.number) +
                             ": its third node lies on the member's line, the SACS axes are taken");
    placed.KNODE = axes_SACS;
  }
  return placed;
}

void locate_beam(int NODEI, int NODEJ, int* LM) {
  const std::array<int, 2> ends = {NODEI, NODEJ};
  form_location_vector(ends, 6, LM);
}

void connect_beam(int NODEI, int NODEJ, int* LM) {
  locate_beam(NODEI, NODEJ, LM);
  lower_column_heights(LM, 12);
}

void add_mass_and_weight(const BeamWeight& beam) {
  std::array<double, 12> f = weight_forces(beam);
  add_element_mass(beam.NODEI, 0.5 * beam.length * beam.mass);
  add_element_mass(beam.NODEJ, 0.5 * beam.length * beam.mass);
  add_nodal_load(patterns.KSELFW, beam.NODEI, std::span<double>(f.data(), 6));
  add_nodal_load(patterns.KSELFW, beam.NODEJ, std::span<double>(f.data() + 6, 6));
}

}  // namespace tidearc
