// Vortex-induced vibration of type 27: the cards of a group.
#include "elements/beam/vortex.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

#include "elements/contract/input.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {

namespace {

void check_algorithm(int KVIV) {
  if (KVIV == vortex_algorithm) return;
  write(units.NDOUT, "/,5X,'** ERROR **','  Only Rev 2 algorithm available at this time.'");
  complain({26, 30}, "vortex algorithm " + std::to_string(KVIV) + " asked for, there is only 2");
  CLOSUP();
}

void echo_real(const char* label, double value) { write(units.NDOUT, "5X,A50,E12.4", label_column(label), value); }

void read_control(VortexControl& v) {
  read(units.NDIN, "2I5,8F10.0,I10,F10.0,I5", v.KMOTN, v.nnc, v.strouhal, v.cl0, v.cd0, v.trampb, v.trampl, v.timrwl,
       v.alpha, v.cutoff, v.iseed, v.blokfac, v.nbuf);
  if (v.blokfac == 0.0) v.blokfac = 1.0;
  write(units.NDOUT, "/");
  echo_count("INPLANE MOTION 0=STEADY 1=OSCILLATORY", v.KMOTN);
  echo_count("NUMBER OF CORRELATED GAUSS POINTS (nnc)", v.nnc);
  echo_real("STROUHAL NUMBER (DEFAULT= Re Dependent)", v.strouhal);
  echo_real("BASE LIFT COEFFICIENT (cl0)", v.cl0);
  echo_real("BASE DRAG COEFFICIENT (cd0)", v.cd0);
  echo_real("BEGIN RAMP TIME (trampb)", v.trampb);
  echo_real("LIFT RAMP TIME (trampl)", v.trampl);
  echo_real("START TIME FOR VIV TRACKING (timrwl)", v.timrwl);
  echo_real("SHEDDING FREQUENCY DISTRIBUTION (alpha)", v.alpha);
  echo_real("LOCK-IN CUTOFF (cutoff)", v.cutoff);
  echo_count("RANDOM NUMBER SEED (iseed)", v.iseed);
  echo_real("BLOCK FACTOR (blokfac) (default=1.0)", v.blokfac);
  echo_count("BUFFER SIZE (nbuf)", v.nbuf);
}

[[noreturn]] void stop_table_too_large(const VortexControl& v) {
  write(units.NDOUT, "/,5X,'** ERROR **','  COEFFICIENT TABLE OF',I6,' BY',I6,' VALUES IS TOO LARGE.'", v.arguments,
        v.columns);
  complain({1, 10}, "at most " + std::to_string(most_vortex_arguments) + " arguments and " +
                        std::to_string(most_vortex_coefficients) + " coefficients");
  CLOSUP();
}

void read_table(VortexControl& v) {
  read(units.NDIN, "2I5,A60", v.arguments, v.columns, std::span<char>(v.name[0]));
  read(units.NDIN, "A60", std::span<char>(v.name[1]));
  v.arguments = std::max(v.arguments, 0);
  v.columns = std::max(v.columns, 0);
  write(units.NDOUT, "/,5X,'COEFFICIENT TABLE',2I6,2X,A60,/,36X,A60", v.arguments, v.columns,
        std::string_view(v.name[0], 60), std::string_view(v.name[1], 60));
  const bool fits = v.arguments <= most_vortex_arguments && v.columns <= most_vortex_coefficients &&
                    v.arguments * v.columns <= most_vortex_coefficients;
  if (!fits) stop_table_too_large(v);
  if (v.arguments == 0) return;
  const auto n = static_cast<std::size_t>(v.arguments);
  const std::span<double> arguments(v.argument, n);
  read(units.NDIN, "10F5.2", arguments);
  write(units.NDOUT, "5X,'ARGUMENTS',/,1(5X,10F12.4)", std::span<const double>(arguments));
  if (v.columns == 0) return;
  write(units.NDOUT, "5X,'COEFFICIENTS'");
  for (std::size_t k = 0; k < n; ++k) {
    const auto columns = static_cast<std::size_t>(v.columns);
    const std::span<double> row(v.coefficient + k * columns, columns);
    read(units.NDIN, "10F10.0", row);
    write(units.NDOUT, "5X,1P,10E12.4", std::span<const double>(row));
  }
}

}  // namespace

void read_vortex_cards(int KVIV) {
  check_algorithm(KVIV);
  VortexControl& v = vortex_control();
  read_control(v);
  read_table(v);
}

WakeLaw wake_law(const VortexControl& v) {
  WakeLaw law;
  law.KMOTN = v.KMOTN;
  law.nnc = v.nnc;
  law.iseed = v.iseed;
  law.nbuf = v.nbuf;
  law.strouhal = v.strouhal;
  law.cl0 = v.cl0;
  law.cd0 = v.cd0;
  law.trampb = v.trampb;
  law.trampl = v.trampl;
  law.timrwl = v.timrwl;
  law.alpha = v.alpha;
  law.cutoff = v.cutoff;
  law.blokfac = v.blokfac;
  law.columns = v.columns;
  const auto rows = static_cast<std::size_t>(v.arguments);
  law.argument = {v.argument, rows};
  law.coefficient = {v.coefficient, rows * static_cast<std::size_t>(v.columns)};
  return law;
}

}  // namespace tidearc
