// STEPVEC: what a displacement step, or an iteration at a constant scalar displacement, is to reach.
#include <algorithm>
#include <cmath>
#include <cstddef>

#include "run/vectors.h"
#include "solve/arrays.h"
#include "static/constraint.h"
#include "static/scale.h"
#include "static/stepping.h"

namespace tidearc {

namespace {

double length_of(ConstReals x) { return std::sqrt(DOT(x.data(), x.data(), x.size())); }

double largest_entry(ConstReals x) {
  double largest = 0.0;
  for (int e = 1; e <= x.size(); ++e) largest = std::max(largest, std::abs(x(e)));
  return largest;
}

double work_of(ConstReals x) { return DOT(equation_vector(arrays.RINC).data(), x.data(), x.size()); }

std::size_t stepping_vectors() { return static_cast<std::size_t>(std::min(segment.NSVEC, most_stepping_vectors)); }

void set_step_targets() {
  ScaleBlock& t = scaling;
  const double step_factor = statics.STEPF;
  if (step.NS == 1) t.SB = statics.ARC != ZERO ? statics.ARC : segment.STEP0;
  t.AARC = ZERO;
  t.AMAX = ZERO;
  if (step_measure() == StepMeasure::vectors) {
    t.SARC = t.SB;
    t.sign = ONE;
    for (std::size_t k = 0; k < stepping_vectors(); ++k) {
      t.SVEC[k] = segment.stepping[k].scale * step_factor;
      t.SACC[k] = ZERO;
      t.SREM[k] = t.SVEC[k];
    }
    return;
  }
  t.SARC = relative_step(step_factor * t.SB, segment.STEP0);
  t.SMAX = segment.SEGVAL * step_factor;
}

void take_from_step(ConstReals x) {
  ScaleBlock& t = scaling;
  switch (step_measure()) {
    case StepMeasure::norm:
      t.AARC += length_of(x);
      break;
    case StepMeasure::maximum:
      t.AMAX += largest_entry(x);
      break;
    case StepMeasure::vectors:
      // A step against the vectors uses its targets up like one along them: what remains has no sign of its own.
      for (std::size_t k = 0; k < stepping_vectors(); ++k) {
        t.SACC[k] += t.sign * product(segment.stepping[k], x);
        t.SREM[k] = t.SVEC[k] - t.SACC[k];
      }
      break;
  }
}

/// An iteration does no work and moves no vector, whatever the step has done: those targets are 0. Only the arc is that
/// of the step's increment x.
void set_iteration_targets(ConstReals x) {
  ScaleBlock& t = scaling;
  switch (iteration_measure()) {
    case IterationMeasure::work:
      t.WTGT = t.WACC = t.WREM = ZERO;
      break;
    case IterationMeasure::arc_length:
      t.SARC = length_of(x);
      t.AARC = ZERO;
      break;
    case IterationMeasure::critical_vector:
      t.SVEC = t.SACC = t.SREM = {};
      break;
    case IterationMeasure::iteration_vector:
      t.ITGT = t.IACC = t.IREM = ZERO;
      break;
  }
}

void take_from_iteration(ConstReals x) {
  ScaleBlock& t = scaling;
  switch (iteration_measure()) {
    case IterationMeasure::work:
      t.WACC += work_of(x);
      t.WREM = t.WTGT - t.WACC;
      break;
    case IterationMeasure::arc_length:
      t.AARC += length_of(x);
      break;
    case IterationMeasure::critical_vector:
      for (std::size_t k = 0; k < stepping_vectors(); ++k) {
        t.SACC[k] += product(segment.stepping[k], x);
        t.SREM[k] = t.SVEC[k] - t.SACC[k];
      }
      break;
    case IterationMeasure::iteration_vector:
      t.IACC += product(segment.iteration, x);
      t.IREM = t.ITGT - t.IACC;
      break;
  }
}

}  // namespace

void STEPVEC(int NI, ConstReals x, TargetMode mode) {
  if (!finds_load(NI)) return;
  const bool set = mode == TargetMode::set;
  if (NI == 1) {
    if (set) {
      set_step_targets();
    } else {
      take_from_step(x);
    }
    return;
  }
  if (set) {
    set_iteration_targets(x);
  } else {
    take_from_iteration(x);
  }
}

}  // namespace tidearc
