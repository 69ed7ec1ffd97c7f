// Random profile systems for the tests of the solver, and plain dense arithmetic to judge its answers by.
#pragma once

#include <random>
#include <vector>

#include "solve/profile.h"

namespace tidearc::test {

/// A symmetric matrix in profile form that owns its arrays.
struct ProfileSystem {
  int n = 0;
  std::vector<int> IDIAG;
  std::vector<double> A;

  /// Entry of the full matrix, zero outside the profile.
  double operator()(int i, int j) const;
  double& entry(int i, int j);  ///< stored entry, i not above j
  int top(int c) const;
  ConstIntegers diagonals() const { return {IDIAG.data(), n}; }
  Profile<double> view(std::vector<double>& values) const {
    return {{values.data(), static_cast<int>(values.size())}, diagonals(), n};
  }
  Profile<const double> view() const { return {{A.data(), static_cast<int>(A.size())}, diagonals(), n}; }
};

/// A matrix with a symmetric profile. `lower` is empty when it is symmetric.
struct TestMatrix {
  ProfileSystem upper;        ///< entry (r, c), r not above c
  std::vector<double> lower;  ///< entry (c, r) at the address of (r, c)

  int n() const { return upper.n; }
  bool symmetric() const { return lower.empty(); }
  double operator()(int i, int j) const;
};

using Random = std::mt19937_64;
inline int random_int(Random& random, int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(random); }
inline double random_real(Random& random, double lo, double hi) {
  return lo + (hi - lo) * 0x1p-53 * static_cast<double>(random() >> 11);
}

/// A profile of n columns whose heights lie between `lowest` and `tallest` (cut at the column's number), all zero.
ProfileSystem random_profile(Random& random, int n, int tallest, int lowest = 1);
/// Fills it as L D L^T of a random unit triangle and random positive pivots: positive definite.
void fill_definite(ProfileSystem& system, Random& random);
/// Fills it with rows that their diagonal dominates; each diagonal is negative with the given probability. By
/// Gershgorin's circles the negative eigenvalues are as many as the negative diagonals, of every principal part too.
void fill_dominant(ProfileSystem& system, Random& random, double negative);

/// Status words with prescribed runs: at the start, at the end, inside, or none (pattern 0..7 as three bits).
std::vector<int> random_status(Random& random, int n, int pattern);
/// Run links of status words, from the definition: the end of each equation's own run, sought equation by equation.
std::vector<int> links_by_definition(const std::vector<int>& status);

/// The residual as LAPACK's own tests of solvers scale it (dpot02, dget02), over the free equations f, p the
/// prescribed: norm1(b - K_fp x_p - K_ff x_f) / (eps (norm1(K_ff) norm1(x_f) + norm1(|K_fp| |x_p|))), eps = 2^-53. The
/// last term is the size of the right-hand side that prescribed equations make; without them the scale is LAPACK's as
/// it stands. `given`: loads of free equations. Infinite when a component of x is not finite.
double scaled_residual(const TestMatrix& matrix, const std::vector<int>& status, const std::vector<double>& given,
                       const std::vector<double>& x);
inline double scaled_residual(const ProfileSystem& symmetric, const std::vector<int>& status,
                              const std::vector<double>& given, const std::vector<double>& x) {
  return scaled_residual(TestMatrix{symmetric, {}}, status, given, x);
}
/// The threshold of LAPACK's own tests for that residual.
constexpr double residual_limit = 30.0;
/// Displacements of the free equations by Gauss elimination with pivoting on the dense matrix of the free equations,
/// the prescribed ones taken to the right-hand side, in extended precision.
std::vector<double> dense_solution(const ProfileSystem& system, const std::vector<int>& status,
                                   const std::vector<double>& given);

}  // namespace tidearc::test
