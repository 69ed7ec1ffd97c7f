// Stream function waves: attempts with falling damping, breaking, and the wave that is left in `wave`.
#include "sea/stream_solution.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <string_view>

#include "run/report_lines.h"
#include "run/stops.h"
#include "sea/airy.h"
#include "sea/wavein.h"

namespace tidearc {

namespace {

constexpr int stars = 105;

/// The damping falls by a tenth and decides.
StreamStatus after_divergence(int& damping_tenths) {
  --damping_tenths;
  if (damping_tenths <= 0) {
    write(units.NDOUT, "' *************** CONVERGENCE IMPOSSIBLE ******',/,' CHECK INPUT VARIABLES'");
    return StreamStatus::impossible;
  }
  write(units.NDOUT, "'   SOLUTION DIVERGING---PROGRAM IS RESTARTING WITH MORE DAMPING.'");
  return StreamStatus::restart;
}

/// In very deep water the equations of the last step may overflow although the wave it starts from meets the tolerance:
/// such a wave is no solution, and the next pass diverges.
bool has_finite_unknowns(const StreamWave& solved) {
  return std::ranges::all_of(solved.X, [](double x) { return std::isfinite(x); });
}

/// Stops the run for a height beyond breaking; warns of one within the accuracy of the limit.
void check_breaking(const Breaking& breaking) {
  // The message has a number that nobody has set yet at this point.
  constexpr double number_of_message = 0.0;
  if (breaking.beyond()) {
    write_framed(format("' WAVE HEIGHT EXCEEDS BREAKING WAVE HEIGHT OF APPROXIMATETELY',F8.2,' UNITS LENGTH.',"
                        "'CHECK INPUT PARAMETERS.'",
                        number_of_message),
                 '*', stars);
    complain(not_on_deck, format("'wave height',G13.5,' exceeds the breaking limit',G13.5", wave.H,
                                 breaking.limit * wave.g * wave.T_structure * wave.T_structure));
    CLOSUP();
  }
  if (breaking.within_accuracy()) {
    write_framed(
        " **** INPUT WAVE PARAMETERS ARE WITHIN THE ACCURACY OF THE BREAKING INDICATOR;  IF SOLUTION IS NOT SUCCESSFUL,"
        "CHECK INPUT PARAMETERS.  ****",
        '*', stars);
  }
}

/// The solved wave becomes that of the run.
void keep(const StreamWave& solved) {
  wave.NN = solved.NN;
  wave.NPTS = solved.NPTS;
  wave.X = solved.X;
  wave.theta = solved.theta;
  wave.eta = solved.eta;
  wave.Q = solved.Q;
  wave.k = 2.0 * std::numbers::pi / solved.X[0];
  wave.C = solved.X[0] / solved.T;
  wave.L = wave.C * wave.T_water;
}

}  // namespace

void SFLEN(double tolerance, int iterations, double T, double d, double g, double& length) {
  const LinearLength linear = linear_length(T, d, g, tolerance, iterations);
  write(units.NDOUT, "8X,'NO. OF ITER. PERFORMED FOR WAVE LENGTH      =',I5", linear.steps);
  length = linear.L;
}

StreamStatus SFITER(StreamWave& solved, int iterations, bool force_all, int& damping_tenths) {
  const double tolerance = solved.H / 10000.0;
  const double damping = damping_tenths / 10.0;
  double first_total = 0.0;
  for (int pass = 1; pass <= iterations + 1; ++pass) {
    const bool last = pass == iterations + 1;
    const SurfaceSolution surface = SFETA(solved);
    if (!surface.agreed) write(units.NDOUT, "'   20 ITERATIONS ON ETA FAILED TO CONVERGE'");
    const StreamStep step = SFCFF(solved, last ? 0.0 : damping);
    if (step.singular) write(units.NDOUT, "'   CFF MATRIX IS SINGLUAR'");
    const double total = std::abs(surface.height_error) + std::abs(step.mean_level_error) + solved.RMS;
    if (!force_all && total <= tolerance && has_finite_unknowns(solved)) break;
    if (pass == 1) first_total = total;
    if (!(total <= first_total)) return after_divergence(damping_tenths);  // also a total that is not a number
  }
  return StreamStatus::solved;
}

void SFSOLVE(double tolerance, int iterations, int coefficient_iterations, int order, int force_all) {
  wave.T_water = wave.T_structure;
  const double T = wave.T_water;
  const Breaking breaking = breaking_of(wave.H, T, wave.d, wave.g);
  check_breaking(breaking);
  StreamWave solved = stream_wave(wave.H, T, wave.d, wave.g, wave.U, order, wave.NPTS);
  int damping_tenths = first_damping(breaking, solved.NN);
  StreamStatus status = StreamStatus::restart;
  while (status == StreamStatus::restart) {
    double length = 0.0;
    SFLEN(tolerance, iterations, T, wave.d, wave.g, length);
    start_stream_wave(solved, length, breaking.ratio());
    status = SFITER(solved, coefficient_iterations, force_all == 1, damping_tenths);
  }
  if (status == StreamStatus::impossible) {
    complain(not_on_deck, "the stream function iteration cannot converge; a lower order may serve in very deep water");
    CLOSUP();
  }
  keep(solved);
  write(units.NDOUT, "8X,A44,D9.3", "RMS ERROR IN DFSBC", solved.RMS);
}

}  // namespace tidearc
