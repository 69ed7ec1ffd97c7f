// The two cards of a regular wave: reading, defaults, checks and what they correct, limits of forces.
#include "sea/regular_cards.h"

#include <string>

#include "model/card_errors.h"
#include "model/gravity.h"
#include "run/layout.h"
#include "run/units.h"
#include "sea/sea_report.h"
#include "sea/wave_limits.h"
#include "sea/wave_state.h"

namespace tidearc {

namespace {

constexpr int usual_iterations = 20;
constexpr int usual_order = 9;
constexpr int usual_coefficient_iterations = 15;
constexpr int fewest_points = 3;  // Simpson's rule over the half wave
constexpr int most_order = static_cast<int>(most_wave_order);
constexpr int most_points = static_cast<int>(most_wave_points);

/// Places of the first card, which is not the one read last when its values are checked.
struct FirstCard {
  std::int64_t line;
  DeckPlace at(int first, int last) const { return {line, {first, last}}; }
};

FirstCard read_first_card() {
  double ignored_gravity = 0.0;  // the gravity and water card has the say
  read(units.NDIN, "9F10.0", wave.H, wave.T_structure, wave.direction, wave.crest_distance, wave.d, ignored_gravity,
       wave.peak_time);
  return {deck_line()};
}

SolutionControl read_second_card() {
  SolutionControl control;
  read(units.NDIN, "3F10.0,7I5", wave.upper_force, wave.lower_force, control.tolerance, control.iterations, wave.ISTRCH,
       control.order, wave.NPTS, control.force_all, control.coefficient_iterations, wave.current_stretching);
  return control;
}

void put_defaults(SolutionControl& control) {
  constexpr double usual_tolerance = 1e-6;
  if (control.tolerance == 0.0) control.tolerance = usual_tolerance;
  if (control.iterations == 0) control.iterations = usual_iterations;
  if (control.order <= 0) control.order = usual_order;
  if (wave.NPTS < fewest_points) wave.NPTS = most_points;
  if (control.coefficient_iterations <= 0) control.coefficient_iterations = usual_coefficient_iterations;
  if (wave.current_stretching == 0) wave.current_stretching = 1;
}

[[noreturn]] void stop_at(std::string_view words, const DeckPlace& where) {
  fatal_box("     ERROR-----  " + std::string(words));
  complain(where, words);
  CLOSUP();
}

void check_height_and_period(const FirstCard& card) {
  if (!(wave.H > 0.0)) stop_at("WAVE HEIGHT IS NOT POSITIVE.", card.at(1, 10));
  if (!(wave.T_structure > 0.0)) stop_at("WAVE PERIOD IS NOT POSITIVE.", card.at(11, 20));
}

void check_second_card(SolutionControl& control) {
  if (wave.IWTY == wave_airy && wave.ISTRCH > 1) {
    card_error("STRETCH CODE MUST BE EITHER 0 OR 1", {36, 40});
    wave.ISTRCH = 0;
  }
  if (control.iterations < 1) card_error("TOTAL NUMBER OF ITERATION MUST BE POSITIVE", {31, 35});
  if (control.order > most_order) {
    card_warning(format("'ORDER OF WAVE THEORY SET TO ',I5", most_order), {41, 45});
    control.order = most_order;
  }
  if (wave.NPTS > most_points) {
    card_warning(format("'NO. OF POINTS ACROSS WAVE FOR ERROR EVALUATION SET TO ',I5", most_points), {46, 50});
    wave.NPTS = most_points;
  }
}

void check_depth(const FirstCard& card) {
  if (!(wave.d > 0.0)) {
    card_error("WATER DEPTH IS NOT POSITIVE", card.at(61, 70));
    wave.d = 1.0;
  }
  if (has_stream_function() && !(wave.d > 0.5 * wave.H)) {
    card_error("UNREALISTIC WAVE DEFINED, CHECK WAVE HEIGHT", card.at(1, 10));
    wave.H = 2.0 * wave.d - 0.1;
  }
  if (!(wave.g > 0.0)) {
    card_error("ACCELERATION OF GRAVITY IS NOT POSITIVE", not_on_deck);
    wave.g = 0.1;
  }
}

/// A direction of zero stays zero: there are then no horizontal forces of the wave.
void check_direction(const FirstCard& card) {
  make_unit(wave.direction, card.at(21, 50));
  if (!is_horizontal(wave.direction))
    card_error("WAVE DIRECTION DOES NOT LIE ON THE HORIZONTAL PLANE", card.at(21, 50));
}

}  // namespace

SolutionControl read_regular_wave() {
  const FirstCard card = read_first_card();
  SolutionControl control = read_second_card();
  put_defaults(control);
  check_height_and_period(card);
  check_second_card(control);
  check_depth(card);
  check_direction(card);
  set_regular_limits();
  return control;
}

}  // namespace tidearc
