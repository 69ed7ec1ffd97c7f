// The wave section of the deck, card by card, and the solution of its wave.
#include "sea/wavein.h"

#include "model/card_errors.h"
#include "model/control.h"
#include "model/gravity.h"
#include "run/layout.h"
#include "run/units.h"
#include "sea/current_input.h"
#include "sea/regular_cards.h"
#include "sea/scale_input.h"
#include "sea/wave_constants.h"
#include "sea/wave_control.h"
#include "sea/wave_limits.h"
#include "sea/wave_report.h"
#include "sea/wave_state.h"

namespace tidearc {

namespace {

/// Component of the surface current along the wave, as the theories take it.
double current_along_wave() {
  double U = 0.0;
  for (std::size_t i = 0; i < 3; ++i) U += wave.surface_current[i] * wave.direction[i];
  return U;
}

void solve(const SolutionControl& control) {
  wave.T_water = wave.T_structure;
  wave.U = current_along_wave();
  if (has_stream_function()) {
    SFSOLVE(control.tolerance, control.iterations, control.coefficient_iterations, control.order, control.force_all);
    return;
  }
  WAVSOL(control.tolerance, control.iterations);
  solve_period_with_current(wave.U, control.tolerance, control.iterations);
}

void read_and_solve_regular_wave() {
  const SolutionControl control = read_regular_wave();
  print_wave_data(control);
  solve(control);
  print_wave_solution();
  check_wave_solution();
}

/// The one record of a solved wave for the post-processing, and the count of what a restart skips there: this record
/// and the line with the wave code.
void write_post_record() {
  write(UNIT_POST_TEXT, "4(G12.5,1X)", wave.T_water, wave.H, wave.direction[0], wave.direction[1]);
  output.NTAP25 += 2;
}

[[noreturn]] void stop_at_polynomials() {
  constexpr std::string_view words = "LEGENDRE POLYNOMIAL WAVE DATA INPUT IS NOT AVAILABLE IN THIS VERSION";
  fatal_box(" " + std::string(words));
  complain(whole_line, "wave type 7 (Legendre polynomials) is not available in this version");
  FATERR("LEGIN");
}

/// The cards of the wave type, and the solution of what can be solved before the analysis. False when the direction of
/// an irregular sea, which has been told, does not lie on the horizontal plane.
bool read_type_cards() {
  bool sea_on_plane = true;
  switch (static_cast<WaveType>(wave.IWTY)) {
    case wave_none:
      return true;
    case wave_current_only:
      set_current_limits();
      return true;
    case wave_grid:
      read_grid_wave();
      return true;
    case wave_legendre:
      stop_at_polynomials();
    case wave_airy:
    case wave_stokes:
    case wave_stream:
      read_and_solve_regular_wave();
      break;
    case wave_irregular:
      sea_on_plane = IRRSEA(wave.period_code, wave.period_tolerance);
      break;
    case wave_embedded:
      read_and_solve_regular_wave();
      sea_on_plane = IRRSEA(wave.period_code, wave.period_tolerance);
      break;
  }
  write_post_record();
  return sea_on_plane;
}

/// A wave that does not run on the water's plane ends the run when its section has been read.
void check_plane(bool sea_on_plane) {
  if (sea_on_plane && is_horizontal(wave.direction)) return;
  // The others have been told at their card.
  if (wave.IWTY == wave_grid) card_error("WAVE DIRECTION DOES NOT LIE ON THE HORIZONTAL PLANE", not_on_deck);
  CLOSUP();
}

}  // namespace

void WAVEIN() {
  take_gravity();
  read_wave_control();
  if (wave.IWTY == wave_none) return;
  check_gravity();
  if (wave.current_code == 1) read_current_section();
  const bool sea_on_plane = read_type_cards();
  prepare_wave_constants();
  read_force_scale(wave.NORAMP);
  check_plane(sea_on_plane);
}

}  // namespace tidearc
