// The page of a regular wave on the report: its data before the solution, period, celerity and constant behind it.
#include "sea/wave_report.h"

#include "sea/sea_report.h"
#include "sea/wave_state.h"

namespace tidearc {

namespace {

void print_title() {
  if (has_stream_function()) {
    write_sea_title("S T R E A M   F U N C T I O N   W A V E   D A T A");
  } else if (wave.IWTY == wave_stokes) {
    write_sea_title("S T O K E S   5 T H   O R D E R   W A V E   D A T A");
  } else {
    write_sea_title("A I R Y   W A V E   D A T A");
  }
}

/// The limits are global elevations, whatever their labels say.
void print_dimensions(const SolutionControl& control) {
  write_sea_value("WAVE HEIGHT", wave.H);
  write_sea_value("WAVE PERIOD RELATED TO STRUCTURE", wave.T_structure);
  write_sea_direction(wave.direction);
  write_sea_value("DISTANCE BETWEEN WAVE CREST AND THE ORIGIN", wave.crest_distance);
  write_sea_code("GT.0 = CREST IS MOVING TOWARD ORIGIN");
  write_sea_code("LT.0 = CREST IS MOVING AWAY FROM ORIGIN");
  write_sea_value("MEAN WATER DEPTH", wave.d);
  write_sea_value("ACCELERATION OF GRAVITY", wave.g);
  write_sea_value("DISTANCE ABOVE MWL TO CALCULATE WAVE FORCE", wave.upper_force);
  write_sea_value("DISTANCE BELOW MWL TO CALCULATE WAVE FORCE", wave.lower_force);
  write_sea_value("LOWEST ELEVATION TO CALCULATE CURRENT FORCE", wave.lower_current);
  write_sea_tolerance("TOLERANCE FOR WAVE LENGTH COMPUTATION", control.tolerance);
  write_sea_tolerance("PEAK OCCURENCE TIME FOR EMBEDDED WAVE", wave.peak_time);
}

void print_codes(const SolutionControl& control) {
  write_sea_count("CURRENT STRETCHING CODE", wave.current_stretching);
  if (wave.IWTY == wave_airy) {
    write_sea_count("WAVE KINEMATICS STRETCHING CODE", wave.ISTRCH);
    write_sea_code("EQ.0 = NOT USED (EXP. EXTRAPOLATION)");
    write_sea_code("EQ.1 = WHEELER STRETCHING USED");
    return;
  }
  write_sea_count("MAX NO OF ITERATIONS FOR WAVE SOLUTION", control.iterations);
  if (!has_stream_function()) return;
  write_sea_count("ORDER OF STREAM FUNCTION WAVE THEORY", control.order);
  write_sea_count("NO. OF PTS. ALONG WAVE FOR ERROR EVALUATION", wave.NPTS);
  write_sea_count("MAX. NO. OF ITERATIONS FOR WAVE COEFF.", control.coefficient_iterations);
}

}  // namespace

void print_wave_data(const SolutionControl& control) {
  print_title();
  print_dimensions(control);
  print_codes(control);
}

void print_wave_solution() {
  write_sea_component("WAVE PERIOD RELATED TO WATER", wave.T_water);
  write_sea_component("WAVE CELERITY", wave.C);
  if (wave.IWTY != wave_airy) write_sea_component("BERNOULLI CONST. (REF. MOVING WITH CREST)", wave.Q);
}

}  // namespace tidearc
