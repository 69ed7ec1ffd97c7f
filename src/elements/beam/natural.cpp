// Natural deformations and forces of a beam.
#include "elements/beam/natural.h"

#include <cstddef>

namespace tidearc {

namespace {

EndBending bending(double EI_L, const NaturalConstants& k, double P, bool with_P) {
  const EndBending plain{4.0 * EI_L, 2.0 * EI_L};
  return with_P ? plain + end_bending_of_force(P, k.XL) : plain;
}

}  // namespace

void natural_deformations(std::span<const double, 12> local, double L, std::span<double, 6> e) {
  const double w = (local[8] - local[2]) / L;
  const double v = (local[7] - local[1]) / L;
  e[0] = local[4] + w;
  e[1] = local[10] + w;
  e[2] = local[5] - v;
  e[3] = local[11] - v;
  e[4] = local[9] - local[3];
  e[5] = local[6] - local[0];
}

void natural_to_local(std::span<const double, 6> q, double L, std::span<double, 12> f) {
  const double w = (q[0] + q[1]) / L;
  const double v = (q[2] + q[3]) / L;
  f[0] = -q[5];
  f[1] = v;
  f[2] = -w;
  f[3] = -q[4];
  f[4] = q[0];
  f[5] = q[2];
  f[6] = q[5];
  f[7] = -v;
  f[8] = w;
  f[9] = q[4];
  f[10] = q[1];
  f[11] = q[3];
}

void natural_transformation(std::span<const double, 9> axes, double L, std::span<double, 72> TGLOB) {
  for (std::size_t i = 0; i < 3; ++i) {
    const double x = axes[i];
    const double y = axes[i + 3];
    const double z = axes[i + 6];
    const double to_I[6] = {-z / L, -z / L, y / L, y / L, 0.0, -x};
    for (std::size_t row = 0; row < natural_count; ++row) {
      TGLOB[row + 6 * i] = to_I[row];
      TGLOB[row + 6 * (i + 6)] = -to_I[row];
    }
    const double rotation_I[6] = {y, 0.0, z, 0.0, -x, 0.0};
    const double rotation_J[6] = {0.0, y, 0.0, z, x, 0.0};
    for (std::size_t row = 0; row < natural_count; ++row) {
      TGLOB[row + 6 * (i + 3)] = rotation_I[row];
      TGLOB[row + 6 * (i + 9)] = rotation_J[row];
    }
  }
}

void natural_to_master(std::span<const double, 72> TGLOB, std::span<const double, 6> q, std::span<double, 12> f) {
  for (std::size_t j = 0; j < 12; ++j) {
    double sum = 0.0;
    for (std::size_t row = 0; row < natural_count; ++row) sum += TGLOB[row + 6 * j] * q[row];
    f[j] = sum;
  }
}

void natural_forces(const NaturalConstants& k, double P, bool with_P, std::span<const double, 6> e,
                    std::span<double, 6> q) {
  const EndBending about2 = bending(k.EI2L, k, P, with_P);
  const EndBending about3 = bending(k.EI3L, k, P, with_P);
  q[0] = about2.own * e[0] + about2.other * e[1];
  q[1] = about2.other * e[0] + about2.own * e[1];
  q[2] = about3.own * e[2] + about3.other * e[3];
  q[3] = about3.other * e[2] + about3.own * e[3];
  q[4] = k.GJL * e[4];
  q[5] = k.EAL * e[5];
}

BeamStiffness natural_parts(const NaturalConstants& k, double P, bool with_P) {
  return beam_stiffness(k.EAL, k.GJL, bending(k.EI2L, k, P, with_P), bending(k.EI3L, k, P, with_P), k.XL);
}

}  // namespace tidearc
