// The solver of the EIGN macro: Sturm check, shift, reduction and cycles, on the blocks.
#include <string>
#include <string_view>
#include <utility>

#include "eigen/eigen.h"
#include "eigen/job.h"
#include "model/control.h"
#include "model/masses.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/vectors.h"
#include "run/workpool.h"
#include "solve/actcol.h"
#include "solve/arrays.h"
#include "solve/solve.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

ConstReals mass_by_equation() { return pool.reals(masses.AMASS, sizes.NEQ); }

/// An equation as the error stream names it.
std::string place_of(int equation) {
  const NodeDirection holder = holder_of(equation);
  return "equation " + std::to_string(equation) + ", node " + std::to_string(holder.node) + ", direction " +
         direction_name(holder.component);
}

/// A fresh copy of the assembled matrix less `shift` times the mass.
Profile<double> shifted_copy(double shift) {
  const Profile<double> K = eigen_factor();
  RCOPY(K.A.data(), assembled_stiffness().A.data(), triangle_length());
  if (shift != 0.0) subtract_mass(K, mass_by_equation(), shift);
  return K;
}

[[noreturn]] void terminate(std::string_view reason, std::string_view told) {
  put_text(units.NDOUT, "\n SOLUTION TERMINATED IN SUBSP*,\n     " + std::string(reason) + "\n");
  complain(not_on_deck, told);
  CLOSUP();
}

/// A pivot of zero elsewhere than at the end is not told apart by the solver; what it solves then is another structure.
void warn_of_zero_pivot(int equation) {
  warning_box(
      format("' PIVOT OF EQUATION',I7,' IS ZERO: THE FREQUENCIES BELOW ARE NOT THOSE OF THE STRUCTURE'", equation));
  complain(not_on_deck, "eigenvalue analysis: the pivot of " + place_of(equation) +
                            " is zero, part of the structure can move freely; give a shift");
}

void reduce(const Profile<double>& K, bool shifted) {
  const ActiveColumnResult found = active_column_solver(K.A, {}, K.IDIAG, sizes.NEQ, true, false);
  if (!shifted && !(found.last_pivot > 0.0)) {
    terminate("RIGID BODY MODE(S) FOUND.",
              "eigenvalue analysis: a rigid body mode shows at " + place_of(sizes.NEQ) + "; give a shift");
  }
  if (found.zero_pivot > 0) warn_of_zero_pivot(found.zero_pivot);
}

void solve_all(const Profile<double>& K, const EigenJob& job) {
  const RealTable X = eigen_vectors(eigen.SHAPES, job);
  const RealTable Y = eigen_vectors(eigen.LOADS, job);
  RCOPY(X.data(), Y.data(), sizes.NEQ * job.NSUB);
  ACTCOL(K.A, X, K.IDIAG, pool.reals(eigen.TOGETHER, sizes.NEQ * together(job.NSUB)), eigen_values(eigen.ENERGY, job));
}

void print_cycle(int cycle, const EigenJob& job) {
  write(units.NDOUT, "5X,'CURRENT EIGENVALUES, ITERATION',I4", cycle);
  write(units.NDOUT, "1(4E20.8)", eigen_values(eigen.VALUES, job).span());
  write(units.NDOUT, "5X,'CURRENT RESIDUALS,   ITERATION',I4", cycle);
  write(units.NDOUT, "1(4E20.8)", eigen_values(eigen.RESIDUALS, job).span());
}

/// Eigenvalues and vectors of the subspace of X and its loads Y; false when the masses on it are not positive. Only
/// vectors that have run into one are made orthonormal first.
bool solve_on_subspace(RealTable X, RealTable Y, RealTable Z, Reals values, const EigenJob& job) {
  const RealTable stiffness = small_matrix(eigen.STIFFNESS, job);
  const RealTable mass = small_matrix(eigen.MASS, job);
  project(X, Y, mass_by_equation(), stiffness, mass);
  if (solve_small_problem(stiffness, mass, Z, values)) return true;
  orthonormalise(X, Y, mass_by_equation(), pool.reals(arrays.WORK, sizes.NEQ));
  project(X, Y, mass_by_equation(), stiffness, mass);
  return solve_small_problem(stiffness, mass, Z, values);
}

/// One cycle; true when the wanted eigenvalues have settled.
bool run_cycle(const Profile<double>& K, int cycle, const EigenJob& job) {
  const RealTable X = eigen_vectors(eigen.SHAPES, job);
  const RealTable Y = eigen_vectors(eigen.LOADS, job);
  const RealTable Z = small_matrix(eigen.ROTATION, job);
  const Reals values = eigen_values(eigen.VALUES, job);
  const Reals last = eigen_values(eigen.LAST, job);
  const Reals residuals = eigen_values(eigen.RESIDUALS, job);
  solve_all(K, job);
  RCOPY(last.data(), values.data(), job.NSUB);
  if (!solve_on_subspace(X, Y, Z, values, job)) {
    terminate("PROJECTED MATRICES ARE NOT DEFINITE.",
              "eigenvalue analysis: the projected matrices of cycle " + std::to_string(cycle) +
                  " are not definite: masses below zero, or a matrix that cannot be reduced");
  }
  rotate(X, Z, Y);
  std::swap(eigen.SHAPES, eigen.LOADS);  // what was Y are the vectors now
  relative_changes(values, last, residuals);
  if (job.NPRINT == 1) print_cycle(cycle, job);
  if (all_within(residuals, job.NFREQ, eigen_tolerance)) return true;
  mass_weighted(Y, mass_by_equation(), X);
  return false;
}

void run_cycles(const Profile<double>& K, const EigenJob& job) {
  RZERO(eigen_values(eigen.VALUES, job).data(), job.NSUB);  // the first cycle has none to compare with
  for (int cycle = 1; cycle <= job.NITEM; ++cycle) {
    if (run_cycle(K, cycle, job)) return;
  }
  write(units.NDOUT, "/,' PRE-MATURE EXIT FROM *SUBSP*',/,5X,'NUMBER OF ITERATIONS PERFORMED      =',I4", job.NITEM);
  complain(not_on_deck, "eigenvalue analysis: " + std::to_string(job.NITEM) +
                            " cycles have passed without convergence, the last values are printed");
}

}  // namespace

Profile<double> assembled_stiffness() {
  return {pool.reals(solver.KASM, triangle_length()), pool.integers(solver.IDIAG, NEQ1()), sizes.NEQ};
}

Profile<double> eigen_factor() {
  return {{factor_values().data(), triangle_length()}, pool.integers(solver.IDIAG, NEQ1()), sizes.NEQ};
}

RealTable eigen_vectors(int index, const EigenJob& job) { return pool.reals(index, sizes.NEQ, job.NSUB); }
RealTable small_matrix(int index, const EigenJob& job) { return pool.reals(index, job.NSUB, job.NSUB); }
Reals eigen_values(int index, const EigenJob& job) { return pool.reals(index, job.NSUB); }

void stop_unless_positive(const Profile<double>& K) {
  const int equation = first_not_positive(K);
  if (equation == 0) return;
  write(units.NDOUT, "' NEG OR ZERO DIAGONAL ELEMENT A(',I4,') = ',E11.4,'BEFORE DECOMPOSITION '", equation,
        K.diagonal(equation));
  complain(not_on_deck, "eigenvalue analysis: the stiffness of " + place_of(equation) + " is not positive");
  CLOSUP();
}

void check_sturm_sequence(EigenJob& job) {
  const Profile<double> K = shifted_copy(job.squared_cut);
  const int count = ACTCOL(K.A, {}, K.IDIAG, sizes.NEQ, true, false);
  write(units.NDOUT, "'0 S T U R M  S E Q U E N C E  C H E C K'");
  write(units.NDOUT, "/,' CUT-OFF FREQUENCY                 =',E12.4", job.cut_off);
  write(units.NDOUT, "' NO. OF EIGENVALUE EXISTING        =',I5", count);
  write(units.NDOUT, "' NO. OF FREQUENCIES REQUIRED       =',I5", job.NFREQ);
  if (count >= job.NFREQ) return;
  job.NFREQ = count;
  job.NSUB = subspace_size(job.NFREQ, job.NMASS);
  write(units.NDOUT, "' NO. OF FREQUENCIES WILL BE SOLVED =',I5", job.NFREQ);
  write(units.NDOUT, "' NEW SIZE OF THE SUBSPACE          =',I5", job.NSUB);
}

void iterate_subspace(const EigenJob& job) {
  const Profile<double> K = shifted_copy(job.squared_shift);
  stop_unless_positive(K);  // a shift can have lowered a diagonal too far
  starting_loads(K, mass_by_equation(), eigen_vectors(eigen.LOADS, job),
                 {equation_vector(arrays.WORK).data(), sizes.NEQ});
  reduce(K, job.squared_shift != 0.0);
  run_cycles(K, job);
  for (double& value : eigen_values(eigen.VALUES, job)) value += job.squared_shift;
}

}  // namespace tidearc
