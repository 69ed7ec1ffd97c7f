// State, forces and matrix of the linear beam: the operations around the kernels.
#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "elements/beam/delivery.h"
#include "elements/beam/offsets.h"
#include "elements/beam/operations.h"
#include "elements/beam/record.h"
#include "elements/beam/sea.h"
#include "elements/contract/group.h"

namespace tidearc {

namespace {

using Vector12 = std::array<double, beam_freedoms>;

/// Local end displacements of nodal ones in master axes.
Vector12 local_displacements(const LinearBeamRecord& beam, const double* nodal) {
  Vector12 ends;
  std::copy_n(nodal, beam_freedoms, ends.begin());
  if (beam.KECC > 0) move_to_ends(beam.ECC, ends);
  Vector12 local;
  to_member_axes(beam.TELEM, ends, local);
  return local;
}

/// Nodal forces in master axes of local end forces.
void put_nodal_forces(const LinearBeamRecord& beam, std::span<const double, 12> local, double* nodal) {
  const std::span<double, beam_freedoms> f(nodal, beam_freedoms);
  to_master_axes(beam.TELEM, local, f);
  if (beam.KECC > 0) move_to_nodes(beam.ECC, f);
}

/// `factor` K v for nodal values v, onto nodal forces.
void put_stiffness_times(const LinearBeamRecord& beam, double factor, const double* v, double* nodal) {
  Vector12 f;
  local_forces(beam.K, local_displacements(beam, v), f);
  for (double& value : f) value *= factor;
  put_nodal_forces(beam, f, nodal);
}

}  // namespace

void SDET03() {
  LinearBeamRecord& beam = current_record<LinearBeamRecord>();
  const Vector12 change = local_displacements(beam, element.EDISP.data());
  for (std::size_t i = 0; i < beam_freedoms; ++i) beam.U[i] += change[i];
  local_forces(beam.K, beam.U, beam.F);
  for (std::size_t i = 0; i < beam_freedoms; ++i) beam.F[i] += beam.F0[i];
  update_extremes(reported_forces(beam.F, beam.sea), element.TIME, beam.envelope.forces);
  update_extremes(beam.U, element.TIME, beam.envelope.deformations);
}

void RENV03() {
  LinearBeamRecord& beam = current_record<LinearBeamRecord>();
  restart_extremes(reported_forces(beam.F, beam.sea), element.TIME, beam.envelope.forces);
  restart_extremes(beam.U, element.TIME, beam.envelope.deformations);
}

void RESP03() {
  const LinearBeamRecord& beam = current_record<LinearBeamRecord>();
  put_nodal_forces(beam, beam.F, element.ERES.data());
  if (group_damps()) {
    put_stiffness_times(beam, group.BETAO + group.BETAT, element.EVEL.data(), element.EDAMP.data());
  } else {
    element.EDAMP = {};
  }
}

void DYNF03(double c1, double c2) {
  const LinearBeamRecord& beam = current_record<LinearBeamRecord>();
  Vector12 rate;
  for (std::size_t i = 0; i < beam_freedoms; ++i) rate[i] = (1.0 + c1) * element.EVEL[i] + c2 * element.EACC[i];
  put_stiffness_times(beam, group.BETAO + group.BETAT, rate.data(), element.EDYNF.data());
}

MatrixForm STIF03(int KFORM, double c1, double c2, bool reset) {
  LinearBeamRecord& beam = current_record<LinearBeamRecord>();
  std::array<double, 144> matrix;
  global_matrix(beam.K, beam.TELEM, matrix);
  if (beam.KECC > 0) move_matrix_to_nodes(beam.ECC, matrix);
  if (KFORM >= 1) {
    for (double& value : matrix) value *= 1.0 + c1 + c2;
  }
  deliver_packed(matrix, reset, beam.delivered, element.EMAT.data());
  beam.head.KSTIF = 0;
  return MatrixForm::packed;
}

}  // namespace tidearc
