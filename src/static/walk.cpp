// One load segment: its start, its walk through the load steps, its end.
#include <array>
#include <span>

#include "elements/contract/pass.h"
#include "model/patterns.h"
#include "results/reports.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/solve.h"
#include "static/segment.h"
#include "static/stepping.h"

namespace tidearc {

namespace {

constexpr int print_at_segment_end = 1;

/// Increment vector, prescribed equations, unbalance of the state at hand at level 0, legend.
void start_segment() {
  response.LEVEL = ZERO;
  step.LEVEL0 = ZERO;
  step.DLACC = ZERO;
  step.NATTS = 0;
  step.end = EndCode::none;
  step.since_save = 0;
  step.LMAX = ZERO;
  step.saved_level = ZERO;
  step.last_level = ZERO;
  step.last_change = ZERO;
  step.TOL = segment.TOLU;
  LODSEG();
  LODLVL(ZERO);
  if (!step.forces_known) {
    determine_states();  // zero increment: U equals U0
    step.taken_over = false;
    step.forces_known = true;
    if (response.NLSTEP == 0) response.NLSTEP = 1;
  }
  PRESTAT(prescribed_participation());
  form_unbalance();  // by the status of this segment: held equations have no unbalance, freed ones have theirs
  write_progress_legend();
}

/// What was applied moves into the accumulated factors; the level begins anew. Returns the level reached.
double close_level() {
  const double reached = response.LEVEL;
  const int n = static_loads.NMADE;
  for (int p = 0; p < n; ++p) {
    const std::size_t i = static_cast<std::size_t>(p);
    statics.accumulated[i] += reached * segment.factor[i];
  }
  response.LEVEL = ZERO;
  write(units.NDOUT, "/,' STATIC FORCE PATTERN ACCUMULATED  FACTORS',/");
  print_factor_rows(std::span<const double>(statics.accumulated).first(static_cast<std::size_t>(n)));
  return reached;
}

/// Sum over force patterns of accumulated factor times resultant.
void write_accumulated_totals() {
  if (static_loads.NFPAT > MAXPAT) return;
  std::array<double, NDF> total{};
  for (int p = 0; p < static_loads.NMADE; ++p) {
    const std::size_t i = static_cast<std::size_t>(p);
    for (std::size_t c = 0; c < NDF; ++c) total[c] += statics.accumulated[i] * patterns.resultant[i][c];
  }
  write(units.NDOUT, "/,5X,'TOTAL ACCUMULATED STATIC NODAL FORCES AND MOMENTS:',/");
  write(units.NDOUT, "8X,6(6X,A2,5X)", "FX", "FY", "FZ", "MX", "MY", "MZ");
  write(units.NDOUT, "8X,6G13.5", total);
}

void end_segment() {
  if (segment.KPRINT == print_at_segment_end) print_results();
  if (segment.end_report) NODENV();
  const double reached = close_level();
  write_accumulated_totals();
  if (segment.KPOST != 0 && step.since_save > 0) save_step_results(reached);
  write_segment_end(step.end);
}

}  // namespace

void walk_segment() {
  start_segment();
  bool goes_on = true;
  for (step.NS = 1; goes_on; ++step.NS) goes_on = finish_step(take_step());
  end_segment();
}

}  // namespace tidearc
