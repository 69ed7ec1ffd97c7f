// The irregular sea (types 4 and 8): its cards in their order, its components solved, and what of the wave in force it
// leaves or gives back.
#include "sea/irrsea.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "run/layout.h"
#include "run/units.h"
#include "sea/components.h"
#include "sea/wave_state.h"
#include "sea/wavein.h"

namespace tidearc {
namespace {

constexpr double two_pi = 2.0 * std::numbers::pi;
constexpr double full_circle = 360.0;

double direction_on(const std::array<double, 3>& direction, std::size_t horizontal) {
  return direction[static_cast<std::size_t>(wave.horizontal[horizontal] - 1)];
}

/// Angle of a direction against the first horizontal axis as the table prints it, in degrees. The circle's number is
/// the short one on purpose: it reaches nothing but this print.
double printed_angle(double cosine, double sine) {
  constexpr auto printed_pi = static_cast<double>(3.14F);
  const double angle = std::acos(std::clamp(cosine, -1.0, 1.0)) * 180.0 / printed_pi;
  return sine < 0.0 ? full_circle - angle : angle;
}

void print_component(int number, const ComponentData& data, const SeaComponent& component) {
  write(units.NDOUT, "/,6X,I10,10X,8(3X,G10.4)", number, data.f, data.T, data.height, data.phase, 1.0 / wave.T_water,
        wave.T_water, wave.L, printed_angle(component.cosine, component.sine));
}

double current_along(const std::array<double, 3>& direction) {
  double U = 0.0;
  for (std::size_t i = 0; i < 3; ++i) U += wave.surface_current[i] * direction[i];
  return U;
}

/// The surface stands above mean water level by the sum of all amplitudes at most.
void set_limits(const SeaCard& card, const SeaSum& sum) {
  wave.mudline = wave.MWL + wave.sg * wave.d;
  wave.lower_force = wave.MWL + wave.sg * card.limit;
  wave.upper_force = wave.MWL - wave.sg * sum.amplitude;
  if (wave.current_code != 1) wave.lower_current = wave.lower_force;
}

void solve_apparent_wave(double period, const ComponentCard& card) {
  wave.T_structure = period;
  wave.T_water = period;
  WAVSOL(card.tolerance, card.iterations);
  wave.L = wave.C * wave.T_water;
  check_wave_solution();
}

/// The regular wave comes back into force; what the sea keeps stands beside it.
void restore_regular_wave(const WaveState& regular) {
  const WaveState sea = wave;
  wave = regular;
  wave.g = sea.g;
  wave.ISTRCH = sea.ISTRCH;
  wave.current_stretching = sea.current_stretching;
  wave.NCOMP = sea.NCOMP;
  wave.time_block = sea.time_block;
  wave.d_irregular = sea.d_irregular;
}

}  // namespace

void print_component_heading() {
  write(units.NDOUT, "/,/,32X,'RELATED TO STRUCTURE',32X,'RELATED TO WATER'");
  write(units.NDOUT,
        "10X,'NUMBER',13X,'FREQUENCY',7X,'PERIOD',7X,'HEIGHT',8X,'PHASE',4X,'FREQUENCY',7X,'PERIOD',7X,'LENGTH',4X,"
        "'DIRECTION'");
}

void add_component(const ComponentData& data, const ComponentCard& card) {
  wave.H = data.height;
  wave.T_structure = data.T;
  wave.T_water = data.T;
  WAVSOL(card.tolerance, card.iterations);
  solve_period_with_current(current_along(data.direction), card.tolerance, card.iterations);
  check_wave_solution();

  SeaComponent& component = components.of[static_cast<std::size_t>(wave.NCOMP)];
  component.omega = two_pi * data.f;
  component.amplitude = 0.5 * data.height;
  component.phase = data.phase * two_pi / full_circle;
  component.k = wave.k;
  component.omega_water = two_pi / wave.T_water;
  component.cosine = direction_on(data.direction, 0);
  component.sine = direction_on(data.direction, 1);
  set_profile(component, wave.d);
  ++wave.NCOMP;
  print_component(wave.NCOMP, data, component);
}

bool IRRSEA(int period_code, double period_tolerance, double start_time) {
  const WaveState regular = wave;
  wave.period_code = period_code;
  wave.period_tolerance = period_tolerance;
  const SeaCard card = read_sea_card();
  wave.d_irregular = wave.d;
  if (wave.current_code == 1 && period_code > 0) tell_current_below_bed();
  const ComponentCard component_card = read_component_card();
  const SeaSum sum = read_components(component_card, card.shift_phases ? start_time : 0.0);
  const double significant_height = std::sqrt(sum.square);
  write(units.NDOUT, "/,8X,'SIGNIFICANT WAVE HEIGHT  =  ',F12.5,/", significant_height);
  set_limits(card, sum);
  if (card.apparent_period > 0.0) solve_apparent_wave(card.apparent_period, component_card);
  wave.H = significant_height;
  if (wave.IWTY == wave_embedded) restore_regular_wave(regular);
  return sum.on_plane;
}

}  // namespace tidearc
