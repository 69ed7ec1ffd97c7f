// What the EIGN macro prints of its modes, and the inertia forces of a mode above an elevation.
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <numbers>

#include "eigen/eigen.h"
#include "eigen/job.h"
#include "model/control.h"
#include "model/gravity.h"
#include "model/masses.h"
#include "model/node_values.h"
#include "run/layout.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"

namespace tidearc {

namespace {

/// Circular frequency of an eigenvalue; that of an unstable structure, whose eigenvalue is negative, is told as the
/// negative root of the magnitude.
double circular_frequency(double eigenvalue) { return std::copysign(std::sqrt(std::abs(eigenvalue)), eigenvalue); }

void print_frequencies(ConstReals values, int NFREQ) {
  write(units.NDOUT, "'1',/,' STRUCTURE FREQUENCIES',/");
  write(units.NDOUT, "1X,'MODE',6X,'CIRCULAR',/,11X,'FREQUENCY',3X,'FREQUENCY',3X,'PERIOD'");
  write(units.NDOUT, "11X,'(RAD/SEC)',3X,'(CYCLES/SEC)',1X,'(SEC)'");
  for (int i = 1; i <= NFREQ; ++i) {
    const double omega = circular_frequency(values(i));
    const double frequency = omega / (2.0 * std::numbers::pi);
    write(units.NDOUT, "'0',I4,6X,3(E10.4,2X)", i, omega, frequency, 1.0 / frequency);
  }
}

void print_shapes(RealTable shapes, int NFREQ) {
  write(units.NDOUT, "'1',/,' STRUCTURE MODE SHAPES'");
  for (int i = 1; i <= NFREQ; ++i) {
    write(units.NDOUT, "/,' M O D E  S H A P E  -  N O .',I5,/", i);
    for (int node = 1; node <= sizes.NUMNP; ++node)
      write(units.NDOUT, "I10,6F12.6", node, values_at_node(node, shapes.column(i)));
  }
}

void print_cut_forces(RealTable shapes, ConstReals values, const EigenJob& job) {
  write(units.NDOUT, "'1',/,' MODAL CUT FORCES/MOMENTS',/,/,2X,'MODE',10X,'RX',13X,'RY',13X,'MX',13X,'MY'");
  for (int i = 1; i <= job.NFREQ; ++i) {
    const CutForces f = modal_cut_forces(shapes.column(i), values(i), job.ZCUT);
    write(units.NDOUT, "1X,I5,4E15.5", i, f.RX, f.RY, f.MX, f.MY);
  }
}

/// Inertia forces and moments of a node in global directions. An equation that several nodes share acts at the first of
/// them; `seen` has NEQ1 reals and starts at zero.
NodeValues inertia_forces(int node, ConstReals shape, double eigenvalue, Reals seen) {
  NodeValues force = not_yet_counted(node, values_at_node(node, pool.reals(masses.AMASS, NEQ1())), seen);
  const NodeValues motion = values_at_node(node, shape);
  for (std::size_t c = 0; c < 6; ++c) force[c] *= eigenvalue * motion[c];
  to_global(node, force.data());
  to_global(node, force.data() + 3);
  return force;
}

}  // namespace

CutForces modal_cut_forces(ConstReals shape, double eigenvalue, double elevation) {
  const int axis = gravity_axis();
  const auto z = static_cast<std::size_t>(axis == 0 ? 2 : std::abs(axis) - 1);
  const std::size_t x = (z + 1) % 3;
  const std::size_t y = (z + 2) % 3;
  const double up = axis > 0 ? -1.0 : 1.0;
  const Reals seen = equation_vector(arrays.WORK);
  clear_vector(arrays.WORK);
  CutForces sum;
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    const NodeValues force = inertia_forces(node, shape, eigenvalue, seen);
    const double height = coordinates(node)[z] - elevation;
    if (!(up * height > 0.0)) continue;
    sum.RX += force[x];
    sum.RY += force[y];
    sum.MX += force[x + 3] - height * force[y];
    sum.MY += force[y + 3] + height * force[x];
  }
  return sum;
}

void print_modes(const EigenJob& job) {
  const RealTable shapes = eigen_vectors(eigen.SHAPES, job);
  const ConstReals values = eigen_values(eigen.VALUES, job);
  for (int i = 1; i <= job.NFREQ; ++i) make_largest_positive(shapes.column(i));
  print_frequencies(values, job.NFREQ);
  print_shapes(shapes, job.NFREQ);
  print_cut_forces(shapes, values, job);
}

}  // namespace tidearc
