// SCALE0: the load increment of a displacement step or of an iteration at a constant scalar displacement.
#include "static/scale.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <string>

#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/vectors.h"
#include "solve/arrays.h"
#include "solve/solver.h"
#include "static/constraint.h"
#include "static/stepping.h"

namespace tidearc {

namespace {

ConstReals equations(int vector) { return pool.reals(vector, sizes.NEQ); }

std::span<const TermVector> stepping_vectors() {
  const int count = std::min(segment.NSVEC, most_stepping_vectors);
  return std::span<const TermVector>(segment.stepping).first(static_cast<std::size_t>(count));
}

const TermVector& critical() { return segment.stepping[static_cast<std::size_t>(scaling.KCRIT - 1)]; }

/// What the trials of a first iteration share.
struct StepTrial {
  double target = 0.0;    ///< of the measure, without the sign of the trial
  ArcEquation arc;        ///< KNMS 1
  double radical = 0.0;   ///< square root of its discriminant
  CriticalVector vector;  ///< KNMS 3
};

/// The first step of a macro that has no arc length yet takes its part of the first tangent displacement.
void measure_first_arc(double A) {
  if (statics.ARC != ZERO || A == ZERO || !std::isfinite(A)) return;
  scaling.SARC = std::sqrt(A) * scaling.SARC;
  statics.ARC = scaling.SARC;
  scaling.SB = scaling.SARC;
}

/// Where the unbalance alone leads farther than the arc, du is shortened until it touches.
void touch_arc(StepTrial& trial, Reals du) {
  const ArcEquation& q = trial.arc;
  write(units.NDOUT, "5X,'**SCALE0** NEG. NS,RAD,A,B,C,DS= ',I5,5D14.5", step.NS, q.discriminant(), q.A, q.B, q.C,
        trial.target);
  const double f = shortening(q, trial.target);
  for (int e = 1; e <= du.size(); ++e) du(e) *= f;
  trial.arc.B *= f;
  trial.radical = ZERO;
}

[[noreturn]] void stop_without_motion() {
  write(units.NDOUT, "5X,'ERRORS! CHECK THE STEPPING VECTOR.',/,' NO DISPLACEMENT IS FOUND IN THE VECTOR'");
  complain(not_on_deck, format("'the load of segment',I5,' moves no stepping vector'", segment.ISEG));
  CLOSUP();
}

StepTrial prepare_step(ConstReals da, Reals du) {
  StepTrial trial;
  switch (step_measure()) {
    case StepMeasure::norm:
      measure_first_arc(DOT(da.data(), da.data(), da.size()));
      trial.target = scaling.SARC - scaling.AARC;
      trial.arc = arc_equation(da, du, trial.target);
      if (trial.arc.discriminant() < ZERO) {
        touch_arc(trial, du);
      } else {
        trial.radical = std::sqrt(trial.arc.discriminant());
      }
      break;
    case StepMeasure::maximum:
      trial.target = scaling.SMAX - scaling.AMAX;
      break;
    case StepMeasure::vectors:
      trial.vector = critical_vector(stepping_vectors(), da, du);
      if (trial.vector.number == 0) stop_without_motion();
      scaling.KCRIT = trial.vector.number;
      trial.target = scaling.SREM[static_cast<std::size_t>(scaling.KCRIT - 1)];
      break;
  }
  return trial;
}

/// The load increment of the trial with sign t; none when the reference load moves nothing.
std::optional<double> trial_load(const StepTrial& trial, ConstReals da, ConstReals du, double t) {
  switch (step_measure()) {
    case StepMeasure::norm:
      if (trial.arc.A == ZERO) return std::nullopt;
      return (t * trial.radical - trial.arc.B) / (2.0 * trial.arc.A);
    case StepMeasure::maximum:
      return factor_to_maximum(da, du, t * trial.target);
    case StepMeasure::vectors:
      break;
  }
  return (t * trial.target - trial.vector.q) / trial.vector.p;
}

/// The direction by the current stiffness parameter: the first step of a segment loads, later ones unload as long as
/// the stiffness has negative pivots. Sets CSP.
bool accept_by_stiffness(ConstReals da, double DL, double t) {
  const double parameter = stiffness_parameter(equations(arrays.RINC), da);
  if (step.NS == 1) {
    if (DL < ZERO) return false;
    scaling.CSP0 = parameter;
    scaling.CSP = ONE;
    return true;
  }
  scaling.CSP = relative_parameter(parameter, scaling.CSP0);
  return t < ZERO || solver.NNEG < 1;
}

bool accept_direction(ConstReals da, ConstReals du, double DL, double t) {
  const auto moves_back = [&](const TermVector& g) { return product(g, du) + DL * product(g, da) < ZERO; };
  switch (step_direction()) {
    case StepDirection::load:
      return !(DL < ZERO);
    case StepDirection::critical_vector:
      return !moves_back(critical());
    case StepDirection::direction_vector:
      return !moves_back(segment.direction);
    case StepDirection::stiffness:
      break;
  }
  return accept_by_stiffness(da, DL, t);
}

/// Both signs led the wrong way: the two solutions are shown, equation by equation.
void print_failed_step(const StepTrial& trial, ConstReals da, ConstReals du) {
  constexpr int to_a_line = 5;
  constexpr double reserved = 0.0;
  write(units.NDOUT, "' UNBALANCE TOO LARGE TO ACCOMODATE SPECIFIED STEP SIZE'");
  write(units.NDOUT, "6E11.3", trial.target, trial.arc.A, trial.arc.B, trial.arc.C, reserved, reserved);
  std::string line;
  for (int e = 1; e <= da.size(); ++e) {
    line += format("I4,2E11.3", e, da(e), du(e));
    if (e % to_a_line != 0 && e != da.size()) continue;
    put_text(units.NDOUT, line + '\n');
    line.clear();
  }
  write(UNIT_PROGRESS, "' UNBALANCE TOO LARGE TO ACCOMODATE SPECIFIED STEP SIZE'");
}

bool find_step_load(ConstReals da, Reals du) {
  const StepTrial trial = prepare_step(da, du);
  for (const double t : {ONE, -ONE}) {
    const std::optional<double> DL = trial_load(trial, da, du, t);
    if (!DL || !accept_direction(da, du, *DL, t)) continue;
    if (step_measure() == StepMeasure::vectors && segment.NSVEC > 1)
      write(units.NDOUT, "5X,'CRITICAL VECTOR =',I5", scaling.KCRIT);
    scaling.sign = t;
    step.DL = std::min(*DL, ONE - response.LEVEL);
    return true;
  }
  print_failed_step(trial, da, du);
  return false;
}

/// Constant arc length: the increment so far and du, with as much of da as keeps the length.
bool find_load_on_arc(ConstReals da, ConstReals du) {
  const ConstReals increment = equations(arrays.DSTEP);
  const Reals w = pool.reals(arrays.WORK, sizes.NEQ);
  for (int e = 1; e <= w.size(); ++e) w(e) = increment(e) + du(e);
  const ArcEquation q = arc_equation(da, w, scaling.SARC);
  step.DL = ZERO;
  if (q.A == ZERO) return true;
  if (q.discriminant() < ZERO) {
    write(units.NDOUT, "5X,'**SCALE0** NEG.RADICAL NSTEP,NIT,A,B,C= ',2I5,3D15.5", step.NS, step.NI, q.A, q.B, q.C);
    return false;
  }
  const ArcRoots roots = arc_roots(q, da, w, increment);
  if (roots.choice == RootChoice::no_length) {
    const double square = DOT(increment.data(), increment.data(), increment.size());
    write(units.NDOUT, "5X,'**SCALE0** DIVIDE BY 0, NSTEP,NIT,R1,R2,','DPROD,DDALFA1,DDALFA2= ',2I5,5D15.5", step.NS,
          step.NI, roots.r1, roots.r2, square, roots.length1, roots.length2);
    return false;
  }
  if (roots.choice == RootChoice::backward) {
    write(units.NDOUT, "5X,'**SCALE0** NEGATIVE THETAS, NSTEP,NIT,','THETA1,THETA2,DDALFA1,DDALFA2= ',2I5,4D15.5",
          step.NS, step.NI, roots.cosine1, roots.cosine2, roots.length1, roots.length2);
    return false;
  }
  step.DL = roots.root();
  return true;
}

double load_of_vector(const TermVector& g, double remaining, ConstReals da, ConstReals du) {
  return factor_of(remaining - product(g, du), product(g, da));
}

bool find_iteration_load(ConstReals da, ConstReals du) {
  const ConstReals RINC = equations(arrays.RINC);
  switch (iteration_measure()) {
    case IterationMeasure::work:
      step.DL =
          factor_of(scaling.WREM - DOT(RINC.data(), du.data(), du.size()), DOT(RINC.data(), da.data(), da.size()));
      return true;
    case IterationMeasure::arc_length:
      return find_load_on_arc(da, du);
    case IterationMeasure::critical_vector:
      step.DL = load_of_vector(critical(), scaling.SREM[static_cast<std::size_t>(scaling.KCRIT - 1)], da, du);
      return true;
    case IterationMeasure::iteration_vector:
      step.DL = load_of_vector(segment.iteration, scaling.IREM, da, du);
      return true;
  }
  return true;
}

}  // namespace

StepMeasure step_measure() {
  if (segment.KNMS == 3) return StepMeasure::vectors;
  return segment.KNMS == 2 ? StepMeasure::maximum : StepMeasure::norm;
}

IterationMeasure iteration_measure() {
  switch (segment.KIPAR) {
    case 2:
      return IterationMeasure::arc_length;
    case 3:
      return segment.NSVEC > 0 ? IterationMeasure::critical_vector : IterationMeasure::work;
    case 4:
      return IterationMeasure::iteration_vector;
    default:
      return IterationMeasure::work;
  }
}

StepDirection step_direction() {
  switch (segment.KDIR) {
    case 2:
      return StepDirection::critical_vector;
    case 3:
      return StepDirection::direction_vector;
    case 4:
    case 5:
      return StepDirection::stiffness;
    default:
      return StepDirection::load;
  }
}

bool finds_load(int NI) { return NI == 1 ? segment.KSTEP == 2 : segment.KITER == 2; }

bool SCALE0(ConstReals da, Reals du, int NI) {
  if (!finds_load(NI)) return true;
  const bool found = NI == 1 ? find_step_load(da, du) : find_iteration_load(da, du);
  if (!found) {
    step.DL = ZERO;
    return false;
  }
  for (int e = 1; e <= du.size(); ++e) du(e) += step.DL * da(e);
  return true;
}

}  // namespace tidearc
