// The Airy or Stokes wave of the wave section, and its period in the water when there is a current.
#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <string_view>

#include "model/card_errors.h"
#include "run/report_lines.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "sea/airy.h"
#include "sea/current_input.h"
#include "sea/stokes.h"
#include "sea/wave_state.h"
#include "sea/wavein.h"

namespace tidearc {

namespace {

/// An error box on the report and on the progress file, and a line on the error stream.
void tell_failure(const std::string& words) {
  card_error(words, not_on_deck);
  const std::string row = row_of('F', 130) + '\n';
  put_text(UNIT_PROGRESS, row + "     ERROR -----" + words + '\n' + row);
}

void solve_linear(double tolerance, int iterations, bool& converged) {
  const AiryWave solved = solve_airy(wave.T_water, wave.d, wave.g, tolerance, iterations);
  wave.k = solved.k;
  wave.C = solved.C;
  wave.L = solved.L;
  converged = solved.converged;
}

void solve_fifth_order(double tolerance, int iterations, bool& converged) {
  const StokesWave solved = solve_stokes(wave.H, wave.T_water, wave.d, wave.g, tolerance, iterations);
  if (solved.form == StokesForm::deep) write(units.NDOUT, "8X,'WAVE SOLUTION BASED ON DEEP WATER STOKES V'");
  if (solved.depth_ratio > largest_depth_ratio) tell_failure("WAVE SOLUTION FAILED D/LRATIO TOO LARGE");
  wave.k = solved.k;
  wave.C = solved.C;
  wave.L = solved.L;
  wave.F = solved.F;
  wave.G = solved.G;
  wave.Q = solved.Q;
  converged = solved.converged;
}

}  // namespace

void WAVSOL(double tolerance, int iterations) {
  bool converged = false;
  if (wave.IWTY == wave_stokes) {
    solve_fifth_order(tolerance, iterations, converged);
  } else {
    solve_linear(tolerance, iterations, converged);
  }
  if (converged) return;
  tell_failure(
      format("'WAVE SOLUTION FAILED AFTER ',I5,' ITERATIONS WITH TOLERANCE OF ',G15.5", iterations, tolerance));
}

void tell_current_below_bed() {
  if (!(deepest_current_level() > wave.d)) return;
  card_warning("CURRENT WAS DEFINED BELOW THE MUD LINE", not_on_deck);
}

void check_wave_solution() {
  const std::array values{wave.k, wave.C, wave.L};
  if (std::ranges::all_of(values, [](double value) { return value > 0.0 && std::isfinite(value); })) return;
  if (std::ranges::all_of(values, [](double value) { return std::isfinite(value); })) {
    card_warning("THE LENGTH OF THE WAVE IS NOT POSITIVE: IT IS OUT OF THE RANGE OF ITS THEORY", not_on_deck);
    return;
  }
  card_error("THE WAVE HAS NO FINITE LENGTH: NO LOADS OF THE SEA CAN BE FORMED", not_on_deck);
  set_fatal_flag();
  if (run.check_run) run.had_data_error = true;  // a data check has no analysis whose end would tell
}

void solve_period_with_current(double U, double tolerance, int iterations) {
  const int rounds = wave.period_code;
  if (wave.current_code != 1 || rounds < 1) return;
  if (!has_components()) tell_current_below_bed();
  for (int round = 0; round < rounds; ++round) {
    const double T = std::abs((U / wave.C + 1.0) * wave.T_structure);
    const double change = std::abs(T - wave.T_water) / wave.T_structure;
    wave.T_water = T;
    wave.L = wave.C * T;
    if (wave.period_tolerance >= change) return;
    WAVSOL(tolerance, iterations);
  }
  card_warning(
      format("'WAVE PERIOD COMPUTATION WITH CURRENT EFFECT DOES NOT CONVERGE AFTER ',I5,' ITERATIONS    '", rounds),
      not_on_deck);
}

}  // namespace tidearc
