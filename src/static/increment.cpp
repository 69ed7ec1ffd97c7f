// One pass of an iteration up to its increment: decisions, load, updates, solution, load increment.
#include <algorithm>

#include "assembly/assembly.h"
#include "elements/contract/pass.h"
#include "run/layout.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/bfgs.h"
#include "solve/solve.h"
#include "solve/solver.h"
#include "static/scale.h"
#include "static/segment.h"
#include "static/step_parts.h"

namespace tidearc {

namespace {

constexpr std::array<char, 3> yes{'Y', 'E', 'S'};
constexpr std::array<char, 3> no{'N', 'O', ' '};

Reals equations(int vector) { return pool.reals(vector, sizes.NEQ); }

UpdateRules update_rules() { return {segment.KISTF, segment.KSSTF, segment.KISTA, segment.KBFGS}; }

/// The increment of level that is left to take, and its imposed displacements, on the unbalance.
void add_step_load() {
  step.DL = std::min(ONE - response.LEVEL, step.STEPT);
  const Reals RU = equation_vector(arrays.RU);
  const Reals RINC = equation_vector(arrays.RINC);
  const Reals XP = equation_vector(arrays.XP);
  for (int e = 1; e <= sizes.NEQ; ++e) RU(e) = prescribed(e) ? step.DL * XP(e) : RU(e) + step.DL * RINC(e);
  write(units.NDOUT, "5X,'STEP LOAD FORMED'");
}

/// The increment vector as the reference load, with the imposed displacements of a unit of level.
void form_reference_load() {
  const Reals RA = equation_vector(arrays.RA);
  const Reals RINC = equation_vector(arrays.RINC);
  const Reals XP = equation_vector(arrays.XP);
  for (int e = 1; e <= sizes.NEQ; ++e) RA(e) = prescribed(e) ? XP(e) : RINC(e);
  write(units.NDOUT, "5X,'ARBITRARY LOAD FORMED'");
}

/// The load of this pass: a step's own at NI 1; a reference load where the load increment is to be found; else none.
void STPLOD() {
  step.DL = ZERO;
  if (finds_load(step.NI)) {
    if (step.NI > 1 && statics.moving_loads) LODSEG();
    form_reference_load();
  } else if (step.NI == 1) {
    add_step_load();
  }
}

void update_state_when_due() {
  const bool due = step.KSTA == 1 || segment.KISTA == 1;
  step.STACOD = due ? yes : no;
  if (!due) return;
  update_state();
  write(units.NDOUT, "5X,'STATE UPDATED'");
}

void update_stiffness_when_due() {
  const bool due = step.KSTF == 1;
  step.STFCOD = due ? yes : no;
  if (!due) return;
  STIFUP();
  step.formed = true;
}

void print_vectors(int first, int second) {
  if (segment.MACPR != 1) return;
  write(units.NDOUT, "1X,' *NS,NI,RU,RA= ',2I3,6D13.5,/,1(22X,6D13.5)", step.NS, step.NI, equations(first),
        equations(second));
}

void print_increments() {
  if (segment.MACPR != 1) return;
  write(units.NDOUT, "1X,' *NS,NI,RINC,DDIS= ',2I3,6D13.5,1(26X,6D13.5)", step.NS, step.NI, equations(arrays.RINC),
        equations(arrays.DDIS));
}

/// Drops the unbalance of free equations when the segment asks for it in the first iteration.
void drop_first_unbalance() {
  if (step.NI != 1 || segment.IROB != 1) return;
  const Reals RU = equation_vector(arrays.RU);
  for (int e = 1; e <= sizes.NEQ; ++e)
    if (!prescribed(e)) RU(e) = ZERO;
}

/// Stores the pair of the last accepted iteration. True when there are pairs to apply.
bool update_vectors_are_due() {
  if (step.KSTF != -1) return false;
  if (bfgs.pending) store_pair(equations(arrays.BFGS1), equations(arrays.BFGS2));
  bfgs.pending = false;
  if (bfgs.NBFGS == 0) return false;
  write(units.NDOUT, "5X,'BFGS STIFFNESS MODIFICATION'");
  return true;
}

void solve_for(int vector, bool with_pairs, UpdateSlot slot) {
  if (with_pairs) update_before_solve(equations(vector), slot);
  SOLVE(vector);
  if (with_pairs) update_after_solve(equations(vector), slot);
}

/// du for the unbalance at hand, in the vector BFGS2 (the unbalance itself stays), and da in RA.
void solve_increments() {
  const bool with_pairs = update_vectors_are_due();
  copy_vector(arrays.BFGS2, arrays.RU);
  solve_for(arrays.BFGS2, with_pairs, UpdateSlot::unbalance);
  if (finds_load(step.NI)) solve_for(arrays.RA, with_pairs, UpdateSlot::reference);
}

}  // namespace

void decide_updates() {
  step.KSTF = stiffness_decision(step.NI, solver.KFORM, false, update_rules(), step.counters);
  step.KSTA = state_decision(step.NI, false, step.KSTA, update_rules(), step.counters);
  // A solve with a new set of prescribed equations and an old factor would be wrong, and so would one with the factor
  // of another macro, which the rules would keep when the first step had no iteration to form one in.
  if (solver.KSTCHG != 0 || !step.formed) step.KSTF = 1;
  if (step.KSTF == 1) forget_pairs();
}

void decide_updates_at_event() {
  stiffness_decision(step.NI, solver.KFORM, true, update_rules(), step.counters);
  state_decision(step.NI, true, step.KSTA, update_rules(), step.counters);
  step.KSTF = 1;
  step.KSTA = 1;
  forget_pairs();
}

bool form_increment() {
  STPLOD();
  update_state_when_due();
  update_stiffness_when_due();
  print_vectors(arrays.RU, arrays.RA);
  drop_first_unbalance();
  solve_increments();
  print_vectors(arrays.BFGS2, arrays.RA);
  print_increments();
  const bool found = SCALE0(equations(arrays.RA), equations(arrays.BFGS2), step.NI);
  step.DLACC += step.DL;
  return found;
}

}  // namespace tidearc
