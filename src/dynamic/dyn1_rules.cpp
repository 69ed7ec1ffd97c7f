// The decisions of an analysis with variable steps.
#include "dynamic/dyn1_rules.h"

#include <algorithm>
#include <cmath>

namespace tidearc {

namespace {

// The exponents differ in their last digits, and both are meant.
constexpr double reduction_exponent = 0.333333333;
constexpr double growth_exponent = 0.3333333;

/// Factor of a step whose error is to come to the middle of the tolerances: 0 with a lower one of 0. Where the
/// tolerances give none (a negative one), half.
double factor_by_error(double ERR, const StepRules& rules, double exponent) {
  const double factor = std::pow(std::sqrt(rules.ERRUP * rules.ERRLO) / ERR, exponent);
  return factor >= 0.0 ? factor : 0.5;
}

/// A reduction that does not reduce would take the step anew for ever.
double below_one(double factor) { return factor < 1.0 ? factor : 0.5; }

/// The step times a factor, but not below the smallest step. Without a smallest step a factor of 0 halves.
double shortened(double DT, double factor, const StepRules& rules) {
  const double step = std::max(rules.DTMINA(), DT * factor);
  return step > 0.0 ? step : 0.5 * DT;
}

/// Factor of a step that left too large an unbalance behind; it never makes the step longer.
double unbalance_factor(double ERR, const StepRules& rules) {
  if (rules.REDF != 0.0) return rules.REDF;
  if (ERR == 0.0) return 0.5;
  return std::min(1.0, factor_by_error(ERR, rules, reduction_exponent));
}

}  // namespace

double reduced_step(double DT, double ERR, const StepRules& rules) {
  if (rules.REDF != 0.0) return below_one(rules.REDF) * DT;
  if (!(DT > rules.DTMINA())) return 0.5 * DT;
  return shortened(DT, below_one(factor_by_error(ERR, rules, reduction_exponent)), rules);
}

double increased_step(double DT, double ERR, const StepRules& rules) {
  if (rules.INCF != 0.0) return rules.INCF * DT;
  if (!(ERR > 0.0) || DT == rules.DTMAX) return 2.0 * DT;
  return std::min(rules.DTMAX, DT * factor_by_error(ERR, rules, growth_exponent));
}

std::optional<double> grown_step(double DT, double ERR, const StepRules& rules) {
  const double step = increased_step(DT, ERR, rules);
  if (step > rules.DTMAX || step < DT) return std::nullopt;
  return step;
}

Judgement refuse_step(double DT, double ERR, const StepRules& rules) {
  const double smaller = reduced_step(DT, ERR, rules);
  // With a DTMIN of 0 the step may shrink until nothing is left of it.
  if (smaller > 0.0 && !(smaller < rules.DTMINA())) return {Verdict::repeat, smaller};
  return {rules.DTMIN > 0.0 ? Verdict::take : Verdict::stop, DT};
}

Judgement judge_error(double DT, double ERR, bool last_substep, const StepRules& rules, ErrorCounts& counts) {
  Judgement judgement{Verdict::take, DT};
  if (!(ERR < rules.ERRLO)) {
    counts.NLOW = 0;
    counts.KEEP = true;
    if (!(ERR < rules.ERRUP)) judgement = refuse_step(DT, ERR, rules);
  } else if (last_substep) {
    ++counts.NLOW;
    if (counts.NLOW < rules.NBELOW) counts.KEEP = true;
  }
  return judgement;
}

double step_after_unbalance(double DT, double UB, double upper, double lower, double ERR, bool KEEP,
                            const StepRules& rules) {
  if (UB > upper) return shortened(DT, unbalance_factor(ERR, rules), rules);
  if (UB < lower && !KEEP) return grown_step(DT, ERR, rules).value_or(DT);
  return DT;
}

std::optional<Dyn1End> exceeded_limit(double UB, double UBMAX, double displacement, double DISMAX) {
  if (!(UB < UBMAX)) return Dyn1End::unbalance;
  if (!(displacement < DISMAX)) return Dyn1End::displacement;
  return std::nullopt;
}

std::optional<Dyn1End> reached_end(int NS, double elapsed, double level, double velocity, const MacroLimits& limits) {
  if (NS >= limits.NSMAX) return Dyn1End::steps;
  if (elapsed >= limits.TMAX) return Dyn1End::time;
  if (level >= limits.PRECMX && velocity <= limits.cutoff) return Dyn1End::level;
  return std::nullopt;
}

bool output_due(const OutputInterval& interval, double TIME, OutputCount& count) {
  ++count.steps;
  const bool by_steps = interval.steps > 0 && count.steps == interval.steps;
  const bool by_time = TIME - count.time >= interval.time;
  if (!by_steps && !by_time) return false;
  count = {0, TIME};
  return true;
}

double local_error_scale(double BETA, double DT) { return std::abs(BETA - 1.0 / 6.0) * DT * DT; }

double local_error(double A0, double A1, double A3, double d, double v, double a, double scale) {
  if (scale == 0.0) return 0.0;
  return std::abs(A0 * d - A1 * v - (1.0 + A3) * a) * scale;
}

Midstep midstep_motion(double d, double v, double DT) {
  const double dv = 2.0 * (d / DT - v);
  return {(d + v * DT) / 4.0, v + dv / 2.0, dv / DT};
}

}  // namespace tidearc
