// The four cards of an analysis with variable steps, their defaults, and the values that no analysis can run with.
#include <algorithm>
#include <array>
#include <cstddef>

#include "dynamic/cards.h"
#include "dynamic/dyn1.h"
#include "model/control.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/units.h"
#include "solve/integration.h"
#include "solve/norm.h"

namespace tidearc {

namespace {

constexpr int most_top_unbalances = 20;
constexpr double no_limit = 1.0E15;
constexpr double no_unbalance_limit = 1.0E10;
constexpr double least_unbalance_limit =
    0.001F;  // in single precision, and meant so: 0.001 on the card is not above it
constexpr double usual_cutoff_velocity = 1.0E-4;
constexpr int usual_substeps = 10;

void check_control_card(const Dyn1Cards& c) {
  const int type = static_cast<int>(c.KSOL);
  if (type < 1 || type > 4) dynamic_card_error({1, 5}, "THE SOLUTION TYPE IS NOT 1 TO 4");
  if (!(integration.DT > 0.0)) dynamic_card_error({11, 20}, "THE STEP SIZE DELTA-T IS NOT POSITIVE");
  if (integration.BETA < 0.0) dynamic_card_error({31, 40}, "THE INTEGRATION PARAMETER BETA IS NEGATIVE");
}

void read_control_card(Dyn1Cards& c) {
  int type = 0;
  double ALPHA = 0.0;
  read(units.NDIN, "2I5,4F10.0,6I5", type, c.KACC, integration.DT, ALPHA, integration.BETA, integration.DMASS, c.NINIT,
       c.KGROUND, c.NFORCE, c.NIMPOSED, c.KENVELOPE, c.KDUMP);
  c.KSOL = static_cast<SolutionType>(type);
  take_alpha(ALPHA);
  echo_dyn1_control();
  check_control_card(c);
}

void check_step_card(const StepRules& r) {
  if (r.DTMINA() > integration.DT) dynamic_card_error({1, 10}, "THE SMALLEST STEP IS ABOVE THE STEP SIZE");
  if (r.REDF != 0.0 && !(r.REDF > 0.0 && r.REDF <= 1.0))
    dynamic_card_error({21, 30}, "THE REDUCTION FACTOR IS NEITHER 0 NOR BETWEEN 0 AND 1");
  if (r.INCF != 0.0 && !(r.INCF >= 1.0))
    dynamic_card_error({31, 40}, "THE INCREASE FACTOR IS NEITHER 0 NOR AT LEAST 1");
  if (!(r.ERRUP > 0.0)) dynamic_card_error({41, 50}, "THE UPPER ERROR TOLERANCE IS NOT POSITIVE");
  if (r.ERRLO > r.ERRUP) dynamic_card_error({51, 60}, "THE LOWER ERROR TOLERANCE IS ABOVE THE UPPER ONE");
}

/// Without a capacity search the level stands at 1.0 and is never reached.
void set_level_rules(Dyn1Cards& c) {
  c.continues = c.PRECF < 0.0;
  if (c.continues) c.PRECF = -c.PRECF;
  if (c.PRECF == 0.0) c.limits.PRECMX = 2.0;
}

void read_step_card(Dyn1Cards& c) {
  StepRules& r = c.rules;
  read(units.NDIN, "6F10.0,I2,I3,F10.0,F5.0", r.DTMIN, r.DTMAX, r.REDF, r.INCF, r.ERRUP, r.ERRLO, r.NBELOW, c.KMOMENT,
       c.PRECF, c.limits.PRECMX);
  if (c.KSOL != SolutionType::local_error) {
    if (!(r.REDF > 0.0) || r.REDF > 1.0) r.REDF = 0.5;
    if (!(r.INCF > 0.0) || r.INCF < 1.0) r.INCF = 2.0;
  }
  if (r.NBELOW < 1) r.NBELOW = 2;
  set_level_rules(c);
  echo_dyn1_steps();
  check_step_card(r);
}

void default_when_not_positive(double& value, double usual) {
  if (!(value > 0.0)) value = usual;
}

void read_limit_card(Dyn1Cards& c) {
  read(units.NDIN, "I5,4F10.0,I5,F10.0,I5,2F10.0", c.limits.NSMAX, c.limits.TMAX, c.UBMAX, c.DISMAX, c.EVMAX, c.NSUBMX,
       c.limits.cutoff, c.NTOP, c.UBUP, c.UBLO);
  default_when_not_positive(c.DISMAX, no_limit);
  default_when_not_positive(c.EVMAX, no_limit);
  default_when_not_positive(c.limits.cutoff, usual_cutoff_velocity);
  if (c.NSUBMX < 1) c.NSUBMX = usual_substeps;
  if (!(c.UBUP > least_unbalance_limit)) c.UBUP = no_unbalance_limit;
  c.NTOP = std::clamp(c.NTOP, 0, std::min(sizes.NEQ, most_top_unbalances));
  echo_dyn1_limits();
  if (c.NTOP < 1 || !executing()) return;
  open_unbalance_list();
  write(UNIT_TOP, "' *****  TOP OUT-OF-BALANCE FORCES IN DYN1 ANALYSIS *****'");
}

void read_output_card(Dyn1Cards& c) {
  const std::array<OutputInterval*, 5> all{&c.nodal, &c.elements, &c.envelopes, &c.restart, &c.post};
  std::array<int, 5> steps{};
  std::array<double, 5> time{};
  read(units.NDIN, "5(I5,F10.0)", steps[0], time[0], steps[1], time[1], steps[2], time[2], steps[3], time[3], steps[4],
       time[4]);
  for (std::size_t i = 0; i < all.size(); ++i) {
    default_when_not_positive(time[i], no_limit);
    *all[i] = {std::max(steps[i], 0), time[i]};
  }
  echo_dyn1_outputs();
}

}  // namespace

void read_dyn1_cards() {
  Dyn1Cards& c = dyn1.cards;
  c = {};
  read_control_card(c);
  if (c.KSOL != SolutionType::events_constant) {
    read_step_card(c);
  } else {
    set_level_rules(c);
  }
  read_limit_card(c);
  read_output_card(c);
}

}  // namespace tidearc
