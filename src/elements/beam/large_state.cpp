// State, forces and matrix of the large displacement beam: the operations around the kernels.
#include "elements/beam/large_state.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>

#include "elements/beam/delivery.h"
#include "elements/beam/moving_frame.h"
#include "elements/beam/natural.h"
#include "elements/beam/offsets.h"
#include "elements/beam/operations.h"
#include "elements/beam/sea.h"
#include "elements/contract/group.h"
#include "model/patterns.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {

namespace {

using Vector12 = std::array<double, beam_freedoms>;
using Matrix12 = std::array<double, 144>;

constexpr double fluid_factor = 1.0;  ///< share of the end pressures that counts  [-]

NaturalConstants constants(const LargeBeam& beam) { return {beam.EI2L, beam.EI3L, beam.GJL, beam.EAL, beam.XL}; }
NaturalConstants scaled(NaturalConstants k, double factor) {
  for (double* value : {&k.EI2L, &k.EI3L, &k.GJL, &k.EAL}) *value *= factor;
  return k;
}
bool with_axial_terms(const LargeBeam& beam) { return beam.KGE != 1; }

/// Motion of the member's ends of a motion of its nodes.
Vector12 end_motion(const LargeBeam& beam, std::span<const double, 12> nodal) {
  Vector12 ends;
  std::ranges::copy(nodal, ends.begin());
  if (beam.KECC > 0) move_to_ends(beam.ECC, ends);
  return ends;
}

/// From end I to end J where the nodal totals stand.
std::array<double, 3> displaced_chord(const LargeBeam& beam) {
  const Vector12 ends = end_motion(beam, beam.UTOT);
  std::array<double, 3> chord{};
  for (std::size_t i = 0; i < 3; ++i) chord[i] = beam.CHORD[i] + (ends[i + 6] - ends[i]);
  return chord;
}

BeamAxes axes_of(const double (&columns)[9]) {
  BeamAxes axes;
  std::ranges::copy(columns, axes.begin());
  return axes;
}

[[noreturn]] void stop_not_converging(const LargeBeam& beam) {
  write(units.NDOUT, "' UPDATE OF TRANFORMATION MATRIX DOES NOT CONVERGE',' ELEMENT =',I6,' S.D.CODE =',I3",
        beam.head.number, beam.KSD);
  complain(not_on_deck, "element " + std::to_string(beam.head.number) + ": its local axes do not converge");
  CLOSUP();
}

/// Adds the increment's natural deformations, measured in the frame that the S.D. code asks for.
void add_deformations(LargeBeam& beam, const BeamAxes& start, std::span<const double, 3> chord,
                      const Vector12& increment, const EndMotion& motion) {
  const HalfStep step = deformation_frame(beam.KSD, start, chord, motion);
  if (!step.converged) stop_not_converging(beam);
  Vector12 local;
  to_member_axes(step.axes, increment, local);
  double added[natural_count];
  natural_deformations(local, beam.XL, added);
  for (std::size_t i = 0; i < natural_count; ++i) beam.ENAT[i] += added[i];
}

NodeSurroundings surroundings(const LargeBeam& beam) {
  if (!patterns.have_temperatures) return {};
  return {node_temperature(beam.NODEI), node_temperature(beam.NODEJ), node_pressure(beam.NODEI),
          node_pressure(beam.NODEJ)};
}

/// As reports tell them.
Vector12 end_forces(const LargeBeam& beam) {
  Vector12 forces;
  natural_to_local(beam.QNAT, beam.XL, forces);
  return reported_forces(forces, beam.sea, beam.TELEM);
}

void update_envelope(LargeBeam& beam) {
  update_extremes(end_forces(beam), element.TIME, beam.envelope.forces);
  update_extremes(shown_deformations(beam.ENAT), element.TIME, beam.envelope.deformations);
}

/// a times the initial and b times the tangent matrix: natural stiffness in the current frame and the string matrix of
/// the axial force, the initial one without any term of that force.
void form_combination(const LargeBeam& beam, double a, double b, Matrix12& matrix) {
  const NaturalConstants k = scaled(constants(beam), a + b);
  global_matrix(natural_parts(k, b * beam.P, with_axial_terms(beam)), beam.TELEM, matrix);
  add_string_matrix(b * beam.P / beam.XL, beam.TELEM, matrix);
  if (beam.KECC > 0) move_matrix_to_nodes(beam.ECC, matrix);
}

/// f = that combination times the nodal rates v, without the matrix.
void put_combination_times(const LargeBeam& beam, double a, double b, std::span<const double, 12> v, double* nodal) {
  const std::span<double, beam_freedoms> f(nodal, beam_freedoms);
  const Vector12 ends = end_motion(beam, v);
  Vector12 local;
  to_member_axes(beam.TELEM, ends, local);
  double e[natural_count], q[natural_count];
  natural_deformations(local, beam.XL, e);
  natural_forces(scaled(constants(beam), a + b), b * beam.P, with_axial_terms(beam), e, q);
  natural_to_master(beam.TGLOB, q, f);
  add_string_forces(b * beam.P / beam.XL, beam.TELEM, ends, f);
  if (beam.KECC > 0) move_to_nodes(beam.ECC, f);
}

}  // namespace

void recover_forces(const NodeSurroundings& at, LargeBeam& beam) {
  beam.PEND[0] = (beam.material.pressure + at.pressure_I) * beam.section.area;
  beam.PEND[1] = (beam.material.pressure + at.pressure_J) * beam.section.area;
  double e[natural_count];
  std::ranges::copy(beam.ENAT, e);
  if (beam.ALPHA != 0.0) e[5] -= beam.XL * beam.ALPHA * 0.5 * (at.temperature_I + at.temperature_J);
  beam.P = e[5] * beam.EAL + (1.0 - 2.0 * beam.PNU) * (0.5 * fluid_factor) * (beam.PEND[0] + beam.PEND[1]);
  const double constant = beam.EAL == 0.0 ? beam.AXIAL : 0.0;  // what no extension can bear
  beam.P += constant;
  natural_forces(constants(beam), beam.P, with_axial_terms(beam), e, beam.QNAT);
  beam.QNAT[5] += constant;
  for (std::size_t i = 0; i < natural_count; ++i) beam.QNAT[i] += beam.Q0[i];
}

void SDET02() {
  LargeBeam& beam = current_record<LargeBeam>();
  const std::span<const double, 12> nodal(element.EDISP.data(), 12);
  const Vector12 increment = end_motion(beam, nodal);
  const EndMotion motion{
      std::span<const double, 3>(increment.data(), 3), std::span<const double, 3>(increment.data() + 3, 3),
      std::span<const double, 3>(increment.data() + 6, 3), std::span<const double, 3>(increment.data() + 9, 3)};
  const BeamAxes start = axes_of(beam.TELEM);
  const std::array<double, 3> chord = displaced_chord(beam);
  for (std::size_t i = 0; i < beam_freedoms; ++i) beam.UTOT[i] += nodal[i];
  beam.head.KSTIF = 1;
  add_deformations(beam, start, chord, increment, motion);
  recover_forces(surroundings(beam), beam);
  std::ranges::copy(end_frame(beam.KSD, start, displaced_chord(beam), motion), beam.TELEM);
  natural_transformation(beam.TELEM, beam.XL, beam.TGLOB);
  update_envelope(beam);
}

void RENV02() {
  LargeBeam& beam = current_record<LargeBeam>();
  restart_extremes(end_forces(beam), element.TIME, beam.envelope.forces);
  restart_extremes(shown_deformations(beam.ENAT), element.TIME, beam.envelope.deformations);
}

void RESP02() {
  const LargeBeam& beam = current_record<LargeBeam>();
  const std::span<double, 12> f(element.ERES.data(), 12);
  natural_to_master(beam.TGLOB, beam.QNAT, f);
  if (beam.KECC > 0) move_to_nodes(beam.ECC, f);
  if (group_damps()) {
    const std::span<const double, 12> v(element.EVEL.data(), 12);
    put_combination_times(beam, group.BETAO, group.BETAT, v, element.EDAMP.data());
  } else {
    element.EDAMP = {};
  }
}

void DYNF02(double c1, double c2) {
  Vector12 rate;
  for (std::size_t i = 0; i < beam_freedoms; ++i) rate[i] = (1.0 + c1) * element.EVEL[i] + c2 * element.EACC[i];
  put_combination_times(current_record<LargeBeam>(), group.BETAO, group.BETAT, rate, element.EDYNF.data());
}

MatrixForm STIF02(int KFORM, double c1, double c2, bool reset) {
  LargeBeam& beam = current_record<LargeBeam>();
  Matrix12 matrix;
  if (KFORM < 1) c1 = c2 = 0.0;
  form_combination(beam, c1, 1.0 + c2, matrix);
  deliver_packed(matrix, reset, delivered_matrix(group.LFIX), element.EMAT.data());
  beam.head.KSTIF = 0;
  return MatrixForm::packed;
}

}  // namespace tidearc
