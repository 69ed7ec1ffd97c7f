// The local frame of a beam that follows large displacements.
#include "elements/beam/moving_frame.h"

#include <cmath>
#include <cstddef>

#include "elements/beam/local_axes.h"
#include "run/vectors.h"

namespace tidearc {

namespace {

constexpr int code_half_step = 2;
constexpr int code_repeated = 3;
/// Square of the sum of two unit vectors below which they count as opposite.
constexpr double opposite = 1.0E-20;

bool takes_half_steps(int code) { return code == code_half_step || code == code_repeated; }

/// Whether the ends move apart in any way, so that the chord may turn.
bool chord_changes(const EndMotion& motion) {
  return motion.dI[0] != motion.dJ[0] || motion.dI[1] != motion.dJ[1] || motion.dI[2] != motion.dJ[2];
}

/// Sum of both end rotations about x.
double rotation_about_x(const BeamAxes& axes, const EndMotion& motion) {
  return DOT3(axes.data(), motion.rI.data()) + DOT3(axes.data(), motion.rJ.data());
}

/// Chord half-way: that of the start and half of what the ends add.
std::array<double, 3> half_way(std::span<const double, 3> chord, const EndMotion& motion) {
  std::array<double, 3> c{};
  for (std::size_t i = 0; i < 3; ++i) c[i] = chord[i] + 0.5 * (motion.dJ[i] - motion.dI[i]);
  return c;
}

}  // namespace

BeamAxes turn_to_chord(const BeamAxes& axes, std::span<const double, 3> chord) {
  const double length = std::sqrt(DOT3(chord.data(), chord.data()));
  if (!(length > 0.0)) return axes;
  BeamAxes turned = axes;
  double middle[3];  // between the old and the new direction
  for (std::size_t i = 0; i < 3; ++i) {
    turned[i] = chord[i] / length;
    middle[i] = axes[i] + turned[i];
  }
  const double size = DOT3(middle, middle);
  if (size < opposite) {  // every half turn is the least: take that about y
    for (std::size_t i = 6; i < 9; ++i) turned[i] = -axes[i];
    return turned;
  }
  // A half turn about the old direction and one about the middle make the least rotation.
  for (std::size_t column = 3; column < 9; column += 3) {
    const double* u = axes.data() + column;
    const double along = 2.0 * DOT3(axes.data(), u);
    double half[3];
    for (std::size_t i = 0; i < 3; ++i) half[i] = along * axes[i] - u[i];
    const double share = 2.0 * DOT3(middle, half) / size;
    for (std::size_t i = 0; i < 3; ++i) turned[column + i] = share * middle[i] - half[i];
  }
  return turned;
}

HalfStep deformation_frame(int code, const BeamAxes& start, std::span<const double, 3> chord, const EndMotion& motion) {
  if (!takes_half_steps(code)) return {start, true};
  const bool turning = chord_changes(motion);
  const std::array<double, 3> middle = half_way(chord, motion);
  BeamAxes axes = start;
  double applied = 0.0;
  for (int pass = 1; pass <= most_half_steps; ++pass) {
    if (turning) axes = turn_to_chord(axes, middle);
    const double twist = 0.25 * rotation_about_x(axes, motion) - applied;
    // A twist that is no number ends the passes too: whoever tests the displacements tells where it comes from.
    if (!(std::abs(twist) > twist_limit)) return {axes, true};
    twist_axes(axes, twist);
    if (code == code_half_step) return {axes, true};
    applied += twist;
  }
  return {axes, false};
}

BeamAxes end_frame(int code, const BeamAxes& start, std::span<const double, 3> displaced_chord,
                   const EndMotion& motion) {
  BeamAxes axes = chord_changes(motion) ? turn_to_chord(start, displaced_chord) : start;
  const double twist = 0.5 * rotation_about_x(axes, motion);
  const double limit = takes_half_steps(code) ? 0.0 : twist_limit;
  if (std::abs(twist) > limit) twist_axes(axes, twist);
  return axes;
}

}  // namespace tidearc
