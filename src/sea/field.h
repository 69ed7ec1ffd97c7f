// What the load routines ask of the sea: surface, velocity and acceleration, pressure, surface cut; and the current.
//
// One family of operations per wave type. All read `wave` and the tables beside it and change nothing.
#pragma once

#include <array>
#include <span>
#include <type_traits>

#include "model/gravity.h"
#include "sea/wave_state.h"

namespace tidearc {

using Point = std::array<double, 3>;  ///< global coordinates or components

struct WaterMotion {
  Point velocity{};      ///< [length/s]
  Point acceleration{};  ///< [length/s2]
};

/// Which part of the motion is wanted.
struct MotionParts {
  bool wave_only = false;     ///< leaves the current out
  bool current_only = false;  ///< leaves the wave out
};

struct WavePressure {
  double total = 0.0;    ///< static plus dynamic                                               [force/area]
  double dynamic = 0.0;  ///< dynamic alone                                                     [force/area]
};

/// The operations of a wave type. Surface: global elevation over a point. Kinematics: writes velocity and acceleration
/// of the wave, then adds the current to the velocity where the point is not below `lower_current`. Pressure: zero for
/// a point above the given surface elevation. Cut: the point on the chord from A to B where the surface cuts it, on A's
/// side, within 1/128 of the chord.
struct WaveFamily {
  double (*surface)(double time, const Point& at);
  void (*kinematics)(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion);
  WavePressure (*pressure)(double surface, const Point& at, double time);
  Point (*cut)(const Point& A, const Point& B, double time);
};

/// The family of a wave type (1 to 6; 8 by the weight of the time; 7 is not there yet and ends in the close-down).
const WaveFamily& wave_family(int IWTY);

// The named operations.
double AIRETA(double time, const Point& at);
double STKETA(double time, const Point& at);
double SFNETA(double time, const Point& at);
double IRRETA(double time, const Point& at);
double GRDETA(double time, const Point& at);
void AIRVEL(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion);
void STKVEL(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion);
void SFNVEL(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion);
void IRRVEL(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion);
void GRDVEL(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion);
WavePressure AIRPRS(double surface, const Point& at, double time);
WavePressure STKPRS(double surface, const Point& at, double time);
WavePressure SFNPRS(double surface, const Point& at, double time);
WavePressure IRRPRS(double surface, const Point& at, double time);
WavePressure GRDPRS(double surface, const Point& at, double time);
Point AIRCUT(const Point& A, const Point& B, double time);
Point STKCUT(const Point& A, const Point& B, double time);
Point SFNCUT(const Point& A, const Point& B, double time);
Point IRRCUT(const Point& A, const Point& B, double time);
Point GRDCUT(const Point& A, const Point& B, double time);

/// Weight of the stream function wave in an embedded sea: 1 within half a period of the peak time, 0 from three
/// quarters on.
double embedded_weight(double time);

/// Loads grow linearly over the ramp time: t / ramp time, 1 behind it or without one.
double ramp_factor(double time);

// Current.

inline constexpr int most_now_levels = 1000;  ///< levels of a current table                                [-]

/// The current table at the present time.
struct CurrentNow {
  double time = -1.0;  ///< of the present values; negative: none yet                                  [s]
  int NLEVEL = 0;
  std::array<double, most_now_levels> level{};       ///< depths under MWL                        [length]
  std::array<double, 3 * most_now_levels> vector{};  ///< velocities, three per level           [length/s]
};
inline CurrentNow current_now;
static_assert(std::is_trivially_copyable_v<CurrentNow>);

/// Interpolates the current table of `wave` to `time` into current_now: before the first time the first slice, past the
/// last the last. No effect without a current.
void CURNOW(double time);

/// Adds the current at a depth to a velocity; there is no clamp at the ends of the table.
void CURADD(double level, Point& velocity);
/// The same for any profile: `levels` ascending depths, `vectors` three components per level.
void CURADD(std::span<const double> levels, std::span<const double> vectors, double level, Point& velocity);

/// What every family adds behind its wave part: the current at the stretched level of depth h, eta the family's local
/// elevation (upward).
void add_current(double h, double eta, double elevation, double lower_current, MotionParts parts, Point& velocity);

}  // namespace tidearc
