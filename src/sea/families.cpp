// The table of wave types and what all of them share.
#include <array>
#include <cstddef>
#include <string>

#include "run/stops.h"
#include "sea/embedded.h"
#include "sea/field.h"
#include "sea/surface_cut.h"
#include "sea/water_frame.h"

namespace tidearc {

namespace {

constexpr WaveFamily no_family{};

/// By wave type; a type without a family has no field to ask.
constexpr std::array<WaveFamily, 9> families{{
    no_family,
    {AIRETA, AIRVEL, AIRPRS, AIRCUT},
    {STKETA, STKVEL, STKPRS, STKCUT},
    {still_surface, current_motion, still_pressure, still_cut},
    {IRRETA, IRRVEL, IRRPRS, IRRCUT},
    {SFNETA, SFNVEL, SFNPRS, SFNCUT},
    {GRDETA, GRDVEL, GRDPRS, GRDCUT},
    no_family,
    {embedded_surface, embedded_motion, embedded_pressure, embedded_cut},
}};

}  // namespace

const WaveFamily& wave_family(int IWTY) {
  const bool known = IWTY >= 0 && IWTY < static_cast<int>(families.size());
  const WaveFamily& family = families[known ? static_cast<std::size_t>(IWTY) : 0];
  if (family.surface != nullptr) return family;
  complain(not_on_deck, "wave type " + std::to_string(IWTY) + " has no water motion to give");
  CLOSUP();
}

double ramp_factor(double time) { return wave.ramp_time != 0.0 && wave.ramp_time > time ? time / wave.ramp_time : 1.0; }

double still_surface(double, const Point&) { return wave.MWL; }

void current_motion(const Point& at, double, double lower_current, MotionParts parts, WaterMotion& motion) {
  const double elevation = elevation_of(at);
  motion = {};
  add_current(depth_of(elevation), 0.0, elevation, lower_current, parts, motion.velocity);
}

WavePressure still_pressure(double surface, const Point& at, double) {
  if (is_above(at, surface)) return {};
  return {static_pressure(depth_of(elevation_of(at))), 0.0};
}

Point still_cut(const Point& A, const Point& B, double time) { return surface_cut(still_surface, A, B, time); }

}  // namespace tidearc
