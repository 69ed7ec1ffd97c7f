// Lift of a member that sheds vortices.
#include "sea/members/lift.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "sea/members/segment_force.h"

namespace tidearc {

namespace {

constexpr int spread_index = 4;  // random numbers 0..3 are start phases, 4..7 spreads

double dot(const Point& a, const Point& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Point cross(const Point& a, const Point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
Point plus(const Point& a, double factor, const Point& b) {
  return {a[0] + factor * b[0], a[1] + factor * b[1], a[2] + factor * b[2]};
}
double size_of(const Point& v) { return std::sqrt(dot(v, v)); }

/// Flow that sheds and motion of the body at the points of integration.
struct PointFlow {
  Point normal{};  ///< velocity of the water normal to the member
  Point body{};    ///< velocity of the member
};
using PointFlows = std::array<PointFlow, most_gauss_points>;

Point flow_at(const WakeLaw& law, const WaveMember& member, double fraction, double time) {
  const Point at = place_on(member, fraction);
  const auto v = static_cast<std::size_t>(wave.vertical) - 1;
  const bool steady = law.KMOTN == 0;
  MotionParts parts;
  parts.current_only = steady || (at[v] - wave.lower_force) * wave.sg > 0.0;
  WaterMotion water;
  wave_family(wave.IWTY).kinematics(at, time, wave.lower_current, parts, water);
  Point V = water.velocity;
  if (member.relative && !steady) V = plus(V, -1.0, along(member.velocity, member.velocity_gain, fraction));
  return plus(V, -dot(V, member.chord), member.chord);
}

/// Flows of the first segment; without one the member stands in no flow.
PointFlows flows_of(const WakeLaw& law, const WaveMember& member, double time) {
  PointFlows flows{};
  const Stretch s = member.first;
  const bool wet = s.to > s.from;
  for (std::size_t p = 0; p < static_cast<std::size_t>(member.rule.count); ++p) {
    const double fraction = s.from + 0.5 * (s.to - s.from) * (member.rule.point[p] + 1.0);
    flows[p].body = along(member.velocity, member.velocity_gain, fraction);
    if (wet) flows[p].normal = flow_at(law, member, fraction, time);
  }
  return flows;
}

/// The points from, .., to - 1 that share a wake.
struct Correlated {
  std::size_t from, to;
  double count() const { return static_cast<double>(to - from); }
};

/// Direction across the flow in which the lift counts: the last one's side, so that a flow that turns round does not
/// turn the lift over. A wake without a flow keeps its direction.
Point lift_axis(const Point& chord, const Point& mean_flow, const double (&last)[3]) {
  const Point kept = {last[0], last[1], last[2]};
  const Point across = cross(chord, mean_flow);
  const double size = size_of(across);
  if (!(size > 0.0)) return kept;
  return plus({}, (dot(across, kept) < 0.0 ? -1.0 : 1.0) / size, across);
}

/// What a wake does to a member now.
struct WakeForce {
  double lift = 0.0;  ///< lift coefficient times the sine of the phase
  double drag = 0.0;  ///< drag coefficient beyond that at rest
  Point axis{};
};

WakeForce follow_wake(const WakeLaw& law, const WaveMember& member, const PointFlows& flows, Correlated points,
                      double D, double spread, std::size_t g, WakeState& wake) {
  Point mean{}, body{};
  double speed = 0.0;
  for (std::size_t p = points.from; p < points.to; ++p) {
    mean = plus(mean, 1.0 / points.count(), flows[p].normal);
    body = plus(body, 1.0 / points.count(), flows[p].body);
    speed += size_of(flows[p].normal) / points.count();
  }
  const WakePhase& accepted = wake.accepted[g];
  const Point axis = lift_axis(member.chord, mean, accepted.axis);
  // The motion at hand is that of the accepted state.
  track_motion(std::min(wake.before, wake.time), dot(body, axis), law.nbuf, wake.track[g]);
  const Vibration motion = vibration_of(wake.track[g]);
  const Shedding shedding = shedding_of(law, {speed, D, water_viscosity(wave.g), spread}, motion);
  wake.now[g] = advance_wake(law, accepted, wake.before, wake.time, shedding, motion);
  std::ranges::copy(axis, wake.now[g].axis);
  const WakeCoefficients c = wake_coefficients(law, shedding.locked ? motion.amplitude / D : 0.0);
  return {c.lift * std::sin(2.0 * std::numbers::pi * wake.now[g].phase), c.more_drag, axis};
}

/// Forces per length, global, at the points of a wake.
void put_forces(const WakeForce& wake, const Point& chord, Correlated points, double half_rho_D,
                const PointFlows& flows, std::array<Point, most_gauss_points>& forces) {
  for (std::size_t p = points.from; p < points.to; ++p) {
    const Point& V = flows[p].normal;
    const double speed = size_of(V);
    Point across = cross(chord, V);
    if (dot(across, wake.axis) < 0.0) across = plus({}, -1.0, across);
    forces[p] = plus(plus({}, half_rho_D * wake.lift * speed, across), half_rho_D * wake.drag * speed, V);
  }
}

}  // namespace

double water_viscosity(double g) {
  constexpr double of_sea_water = 1.19e-6;  // at 15 degrees Celsius [m2/s]
  constexpr double standard_gravity = 9.80665;
  const double unit_of_length = g / standard_gravity;  // units of length in a metre
  return of_sea_water * unit_of_length * unit_of_length;
}

void add_vortex_load(const WakeLaw& law, double D, int stream, double time, WakeState& wake, MemberLoad& lift,
                     MemberLoad& load) {
  const WaveMember& member = wave_member;
  lift.fill(0.0);
  begin_wake_time(law, stream, time, wake);
  if (!(D > 0.0)) return;
  const PointFlows flows = flows_of(law, member, time);
  std::array<Point, most_gauss_points> forces{};
  const auto count = static_cast<std::size_t>(member.rule.count);
  const auto step = static_cast<std::size_t>(std::clamp(law.nnc, 1, most_gauss_points));
  for (std::size_t g = 0; g * step < count; ++g) {
    const Correlated points{g * step, std::min(count, (g + 1) * step)};
    const double spread = 2.0 * random_part(law.iseed, stream, spread_index + static_cast<int>(g)) - 1.0;
    const WakeForce force = follow_wake(law, member, flows, points, D, spread, g, wake);
    put_forces(force, member.chord, points, 0.5 * wave.rho * D, flows, forces);
  }
  const double factor = lift_ramp(law, time) * law.blokfac * member.ramp * member.magnification;
  if (!(member.first.to > member.first.from) || factor == 0.0) return;
  std::size_t next = 0;
  integrate(member, member.first, lift,
            [&](double) { return to_local(member.axes, plus({}, factor, forces[next++])); });
  for (std::size_t i = 0; i < load.size(); ++i) load[i] += lift[i];
}

}  // namespace tidearc
