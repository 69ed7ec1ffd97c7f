// The two cards that open an irregular sea: reading, defaults, checks, echo.
#include <algorithm>

#include "run/layout.h"
#include "run/units.h"
#include "sea/irrsea.h"
#include "sea/sea_report.h"
#include "sea/wave_state.h"

namespace tidearc {
namespace {

void check_gravity_of_sea() {
  if (wave.g > 0.0) return;
  sea_error(" ACCELERATION OF GRAVITY IS NOT POSITIVE, IT WILL BE SET TO 32.2", not_on_deck);
  wave.g = 32.2;
}

void check_depth() {
  if (wave.d > 0.0) return;
  sea_error("WATER DEPTH IS NOT POSITIVE", {1, 10});
  wave.d = 1.0;
}

void check_stretching() {
  if (wave.ISTRCH <= 1) return;
  sea_error("STRETCH CODE MUST BE EITHER 0 OR 1", {31, 35});
  wave.ISTRCH = 0;
}

void echo(const SeaCard& card) {
  write_sea_title("I R R E G U L A R   S E A   D A T A");
  write_sea_value("MEAN WATER DEPTH", wave.d);
  write_sea_value("ACCELERATION OF GRAVITY", wave.g);
  write_sea_value("DISTANCE BELOW MWL TO CALCULATE WAVE FORCE", card.limit);
  write_sea_count("WAVE KINEMATICS STRETCHING CODE", wave.ISTRCH);
  write_sea_code("EQ. 0 UNSTRETCHED (EXP. EXTRAPOLATION)");
  write_sea_code("EQ. 1 WHEELER STRETCHING USED");
  write_sea_count("CURRENT STRETCHING CODE", wave.current_stretching);
  write_sea_count("TIME BLOCK CODE", wave.time_block);
  write_sea_code("EQ. 0 SINGLE TIME BLOCK");
  write_sea_code("EQ. 1 REDEFINE IRREG IN NEXT DYN2 MACRO");
  write_sea_value("PEAK WAVE PERIOD fixed observer", card.peak_period);
  write_sea_value("APPARENT PEAK WAVE PERIOD moving observer", card.apparent_period);
}

void echo(const ComponentCard& card) {
  write_sea_count("WAVE COMPONENT GENERATION CODE", card.generation);
  write_sea_code("EQ. 0 GENERATED");
  write_sea_code("EQ. 1 USER DEFINED, ONE DIRECTION");
  write_sea_code("EQ. 2 USER DEFINED, MULTI-DIRECTION");
  write_sea_count("WAVE HEIGHT SPECTRUM DEFINITION CODE", card.spectrum);
  write_sea_code("EQ. 0 PIERSON-MOSKOWITZ");
  write_sea_code("EQ. 1 USER DEFINED");
  write_sea_count("MAX NO OF ITERATIONS FOR WAVE SOLUTION", card.iterations);
  write_sea_tolerance("TOLERANCE FOR WAVE FREQUENCY COMPUTATION", card.tolerance);
}

}  // namespace

SeaCard read_sea_card() {
  SeaCard card;
  read(units.NDIN, "F10.0,10X,F10.0,3I5,2F10.0", wave.d, card.limit, wave.ISTRCH, wave.time_block,
       wave.current_stretching, card.peak_period, card.apparent_period);
  if (wave.current_stretching == 0) wave.current_stretching = 1;
  card.shift_phases = wave.time_block != -1;
  if (wave.time_block == -1) wave.time_block = 1;
  check_stretching();
  check_depth();
  check_gravity_of_sea();
  card.limit = card.limit == 0.0 ? wave.d : std::min(wave.d, card.limit);
  echo(card);
  return card;
}

ComponentCard read_component_card() {
  constexpr int usual_iterations = 20;
  constexpr double usual_tolerance = 1e-6;
  ComponentCard card;
  read(units.NDIN, "3I5,F10.0", card.generation, card.spectrum, card.iterations, card.tolerance);
  if (card.iterations == 0) card.iterations = usual_iterations;
  if (card.tolerance == 0.0) card.tolerance = usual_tolerance;
  if (card.iterations < 1) sea_error("TOTAL NUMBER OF ITERATION MUST BE POSITIVE", {11, 15});
  echo(card);
  return card;
}

}  // namespace tidearc
