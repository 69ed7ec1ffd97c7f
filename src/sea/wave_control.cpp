// The wave control card: reading, echo, checks; and the directions that the gravity card gives the sea.
#include "sea/wave_control.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "model/card_errors.h"
#include "model/control.h"
#include "model/gravity.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/run_block.h"
#include "sea/sea_report.h"
#include "sea/wave_state.h"

namespace tidearc {

namespace {

/// The codes of the card as they stand there.
struct ControlCodes {
  int current = 0;
  int large_displacement = 0;
  int relative_velocity = 0;
  int added_mass = 0;
};

void echo_wave_type() {
  write_count("WAVE TYPE", wave.IWTY);
  write_sea_code("EQ.0 = THERE IS NO WAVE EFFECT");
  write_sea_code("EQ.1 = AIRY WAVE");
  write_sea_code("EQ.2 = STOKES 5TH ORDER WAVE");
  write_sea_code("EQ.3 = CURRENT EFFECT ONLY");
  write_sea_code("EQ.4 = IRREGULAR SEA");
  write_sea_code("EQ.5 = STREAM FUNCTION WAVE");
  write_sea_code("EQ.6 = 2D GRID WAVE LOADER");
  write_sea_code("EQ.7 = LEGENDRE POLYNOMIAL APPROXIMATIONS");
  write_sea_code("EQ.8 = IRREGULAR SEA EMBEDDED WITH SF WAVE");
}

void echo(const ControlCodes& code) {
  put_text(units.NDOUT, "\n");
  write_framed(" WAVE CONTROL DATA", '*', 18);
  put_text(units.NDOUT, "\n");
  echo_wave_type();
  write_count("CURRENT CODE", code.current);
  write_count("LARGE DISPLACEMENT CODE", code.large_displacement);
  write_count("RELATIVE VELOCITY CODE", code.relative_velocity);
  write_real("RAMP TIME", wave.ramp_time);
  write_count("VARIABLE ADDED MASS CODE", code.added_mass);
  write_real("WAVE KINEMATIC FACTOR", wave.kinematic_factor);
  write_real("CUTOFF DIAMETER", wave.cutoff_diameter);
  write_count("NO. OF WAVE FORCE SCALE POINTS", wave.NORAMP);
  write_count("SPECIAL DEBUG CODE", wave.debug_code);
}

void check_wave_type() {
  if (wave.IWTY >= wave_none && wave.IWTY <= wave_embedded) return;
  card_error("WAVE TYPE MUST BE BETWEEN 0 AND 7", {1, 5});  // 8 passes all the same
  CLOSUP();
}

/// 1 for a code of exactly 1, else 0.
int checked(int code, Columns where, std::string_view words) {
  if (code > 1) card_error(words, where);
  return code == 1 ? 1 : 0;
}

}  // namespace

void take_gravity() {
  wave.gravity = gravity.direction;
  wave.vertical = 3;
  for (int axis = 1; axis <= 3; ++axis)
    if (gravity.direction[static_cast<std::size_t>(axis - 1)] != 0.0) wave.vertical = axis;
  wave.horizontal = {wave.vertical % 3 + 1, (wave.vertical + 1) % 3 + 1};
  wave.sg = gravity.direction[static_cast<std::size_t>(wave.vertical - 1)];
  wave.MWL = gravity.water_level;
  wave.rho = gravity.water_mass;
  wave.weight = gravity.water_weight;
  wave.g = gravity.GRAV;
}

void read_wave_control() {
  ControlCodes code;
  read(units.NDIN, "4I5,F10.0,I5,2F10.0,2I5", wave.IWTY, code.current, code.large_displacement, code.relative_velocity,
       wave.ramp_time, code.added_mass, wave.kinematic_factor, wave.cutoff_diameter, wave.NORAMP, wave.debug_code);
  if (!(wave.kinematic_factor > 0.0)) wave.kinematic_factor = 1.0;
  echo(code);
  wave.NORAMP = std::max(wave.NORAMP, 0);
  check_wave_type();
  if (wave.IWTY == wave_none) return;
  wave.current_code = checked(code.current, {6, 10}, "CURRENT CODE MUST BE EITHER 0 OR 1");
  wave.large_displacement = checked(code.large_displacement, {11, 15}, "KINEMATICS CODE MUST BE EITHER 0 OR 1");
  wave.relative_velocity = checked(code.relative_velocity, {16, 20}, "RELATIVE VELOCITY CODE MUST BE EITHER 0 OR 1");
  wave.added_mass_code = checked(code.added_mass, {31, 35}, "VARIABLE ADDED MASS CODE MUST BE EITHER 0 OR 1");
  if (wave.IWTY == wave_current_only && wave.current_code != 1)
    card_error("FOR IWTY = 5 or 8,  CURRENT CODE SHOULD BE EQUAL TO 1", {6, 10});  // the types named are not meant
}

void check_gravity() {
  if (sizes.IGRAV != 1)
    card_warning("NO GRAVITY AND WATER CARD: WATER HAS NO DENSITY, ACCELERATION OF GRAVITY IS 32.2", not_on_deck);
  if (wave.sg != 0.0) return;
  complain(not_on_deck, "no loads of the sea without a direction of gravity: the problem is only checked");
  set_fatal_flag();
  if (run.check_run) run.had_data_error = true;  // a data check has no analysis whose end would tell
}

}  // namespace tidearc
