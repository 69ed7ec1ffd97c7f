// The wake of a cylinder that sheds vortices.
#include "sea/members/wake.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>

namespace tidearc {

namespace {

/// A branch of the Strouhal curve: St = start + slope/sqrt(Re) up to a Reynolds number.
struct StrouhalBranch {
  double up_to, start, slope;
};
// Laminar wake, and three branches of the turbulent one (Fey, König and Eckelmann). Between the first two, where the
// wake turns turbulent, their ends are joined by a straight line.
constexpr StrouhalBranch laminar{180.0, 0.2684, -1.0356};
constexpr double turbulent_from = 360.0;
constexpr std::array<StrouhalBranch, 3> turbulent{
    {{1300.0, 0.2257, -0.4402}, {5000.0, 0.2040, 0.3364}, {2.0e5, 0.1776, 2.2023}}};
constexpr double first_shedding = 47.0;
// Roshko: 0.27 above 3.5e6. Between, where shedding is irregular, a straight line over the logarithm.
constexpr double transcritical_from = 3.5e6;
constexpr double transcritical = 0.27;

constexpr double drag_of_amplitude = 2.1;  // Blevins: CD grows by this part of itself for each diameter of amplitude

double on(const StrouhalBranch& branch, double Re) { return branch.start + branch.slope / std::sqrt(Re); }

double between(double x, double x0, double y0, double x1, double y1) { return y0 + (y1 - y0) * (x - x0) / (x1 - x0); }

/// A column of the table, linear in its argument and held at its ends.
double table_value(const WakeLaw& law, int column, double argument) {
  const auto value = [&](std::size_t row) {
    return law.coefficient[row * static_cast<std::size_t>(law.columns) + static_cast<std::size_t>(column)];
  };
  const std::size_t rows = law.argument.size();
  std::size_t upper = 0;
  while (upper < rows && law.argument[upper] < argument) ++upper;
  if (upper == 0) return value(0);
  if (upper == rows) return value(rows - 1);
  return between(argument, law.argument[upper - 1], value(upper - 1), law.argument[upper], value(upper));
}

bool has_column(const WakeLaw& law, int column) { return !law.argument.empty() && law.columns > column; }

void drop_first_crossing(MotionTrack& track) {
  --track.crossings;
  for (int i = 0; i < track.crossings; ++i) {
    track.number[i] = track.number[i + 1];
    track.when[i] = track.when[i + 1];
  }
}

void add_crossing(double when, MotionTrack& track) {
  if (track.crossings == kept_crossings) drop_first_crossing(track);
  track.number[track.crossings] = track.values;
  track.when[track.crossings] = when;
  ++track.crossings;
  track.cycle = track.peak;
  track.peak = 0.0;
}

/// The part of -0.5 to 0.5 by which two phases differ.
double phase_gap(double from, double to) { return (to - from) - std::round(to - from); }

}  // namespace

double strouhal_number(double Re) {
  if (!(Re >= first_shedding)) return 0.0;
  if (Re <= laminar.up_to) return on(laminar, Re);
  if (Re < turbulent_from)
    return between(Re, laminar.up_to, on(laminar, laminar.up_to), turbulent_from, on(turbulent[0], turbulent_from));
  for (const StrouhalBranch& branch : turbulent) {
    if (Re <= branch.up_to) return on(branch, Re);
  }
  const StrouhalBranch& last = turbulent.back();
  if (Re >= transcritical_from) return transcritical;
  return between(std::log(Re), std::log(last.up_to), on(last, last.up_to), std::log(transcritical_from), transcritical);
}

double lift_ramp(const WakeLaw& law, double time) {
  if (time < law.timrwl || time < law.trampb) return 0.0;
  if (!(law.trampl > 0.0)) return 1.0;
  return std::min(1.0, (time - law.trampb) / law.trampl);
}

WakeCoefficients wake_coefficients(const WakeLaw& law, double amplitude) {
  WakeCoefficients c{law.cl0, law.cd0 * drag_of_amplitude * amplitude};
  if (has_column(law, 0)) c.lift = table_value(law, 0, amplitude);
  if (has_column(law, 1)) c.more_drag = table_value(law, 1, amplitude) - law.cd0;
  return c;
}

double random_part(int seed, int stream, int index) {
  // The output function of the SplitMix generator (Steele, Lea and Flood 2014) over the three numbers in turn.
  std::uint64_t z = 0;
  for (const int number : {seed, stream, index}) {
    z += static_cast<std::uint32_t>(number) + 0x9e3779b97f4a7c15u;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9u;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebu;
    z ^= z >> 31;
  }
  return static_cast<double>(z >> 11) * 0x1.0p-53;
}

void track_motion(double time, double velocity, int nbuf, MotionTrack& track) {
  if (track.values > 0 && time == track.time) return;
  while (track.crossings > 0 && track.when[track.crossings - 1] > time) --track.crossings;
  const bool later = track.values == 0 || time > track.time;
  if (later) ++track.values;
  if (later && track.values > 1 && track.velocity < 0.0 && velocity >= 0.0)
    add_crossing(between(0.0, track.velocity, track.time, velocity, time), track);
  track.time = time;
  track.velocity = velocity;
  track.peak = std::max(track.peak, std::abs(velocity));
  while (track.crossings > 0 && track.number[0] <= track.values - nbuf) drop_first_crossing(track);
}

Vibration vibration_of(const MotionTrack& track) {
  if (track.crossings < 2) return {};
  const double last = track.when[track.crossings - 1];
  const double span = last - track.when[0];
  if (!(span > 0.0)) return {};
  const double frequency = (track.crossings - 1) / span;
  return {frequency, track.cycle / (2.0 * std::numbers::pi * frequency), last};
}

void begin_wake_time(const WakeLaw& law, int stream, double time, WakeState& wake) {
  if (wake.started == 0) {
    wake.started = 1;
    wake.before = time;
    for (int g = 0; g < 4; ++g) wake.accepted[g].phase = random_part(law.iseed, stream, g);
  } else if (time > wake.time) {
    wake.before = wake.time;
    std::ranges::copy(wake.now, wake.accepted);
  }
  wake.time = time;
}

Shedding shedding_of(const WakeLaw& law, const WakeFlow& flow, const Vibration& motion) {
  const double Re = flow.speed * flow.D / flow.viscosity;
  const double St = law.strouhal != 0.0 ? law.strouhal : strouhal_number(Re);
  const double frequency = std::max(0.0, St * flow.speed / flow.D * (1.0 + law.alpha * flow.spread));
  if (!(frequency > 0.0)) return {};
  const bool locked =
      law.cutoff > 0.0 && motion.frequency > 0.0 && std::abs(frequency / motion.frequency - 1.0) <= law.cutoff;
  return {locked ? motion.frequency : frequency, locked};
}

WakePhase advance_wake(const WakeLaw& law, const WakePhase& accepted, double before, double time,
                       const Shedding& shedding, const Vibration& motion) {
  if (time == before && accepted.frequency > 0.0) return accepted;
  WakePhase wake = accepted;
  wake.frequency = shedding.frequency;
  const double step = std::max(time, law.timrwl) - std::max(before, law.timrwl);
  wake.phase += 0.5 * (accepted.frequency + shedding.frequency) * step;
  if (shedding.locked && step > 0.0) {
    const double target = motion.frequency * (time - motion.crossing);
    wake.phase += phase_gap(wake.phase, target) * std::min(1.0, motion.frequency * step);
  }
  wake.phase -= std::floor(wake.phase);
  return wake;
}

}  // namespace tidearc
