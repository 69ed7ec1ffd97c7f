// The local frame of a beam that follows large displacements. Pure formulas; axes column by column (local_axes.h).
//
// One increment goes from a start frame and a start chord to displaced ends. The deformations are measured in a frame
// of the increment: the start frame (code 1) or a frame half-way (codes 2 and 3), in which a rigid rotation gives no
// axial strain, since the chord half-way is normal to the change of the chord. Afterwards the end frame is set. Where
// both ends move alike the chord has not turned, and x stays as it is to the last digit: an increment of zero changes
// no frame.
//
// Sources: R. D. Wood and O. C. Zienkiewicz, Computers and Structures 7 (1977); T. J. R. Hughes and J. Winget, Int. J.
// Numer. Methods Eng. 15 (1980), for the half-way configuration.
#pragma once

#include <array>
#include <span>

namespace tidearc {

using BeamAxes = std::array<double, 9>;

/// A twist about x at most this large is not applied: of a half-step, and of the end frame of code 1  [rad].
inline constexpr double twist_limit = 1.0E-6;
/// Most half-steps of code 3.
inline constexpr int most_half_steps = 5;

/// What an increment does to the ends: translations and rotations in master components.
struct EndMotion {
  std::span<const double, 3> dI, rI, dJ, rJ;
};

/// The frame turned so that x lies along `chord`, by the least rotation; as it is when the chord has no length.
BeamAxes turn_to_chord(const BeamAxes& axes, std::span<const double, 3> chord);

struct HalfStep {
  BeamAxes axes;
  bool converged;  ///< false: code 3 found a twist above the limit after most_half_steps
};
/// The frame of an increment for S.D. code `code` (2: one half-step; 3: half-steps until the twist that is left is
/// within the limit; any other: the start frame). `chord` is that of the start.
///
/// A later half-step of code 3 looks at the twist of the increment in the last frame less what has been applied: a test
/// of the twist itself would find it again at each pass.
HalfStep deformation_frame(int code, const BeamAxes& start, std::span<const double, 3> chord, const EndMotion& motion);

/// The frame after the increment: x along the displaced chord, then turned about x by the mean rotation of the ends.
/// Codes 2 and 3 keep any twist, however small; the others leave one within the limit out.
BeamAxes end_frame(int code, const BeamAxes& start, std::span<const double, 3> displaced_chord,
                   const EndMotion& motion);

}  // namespace tidearc
