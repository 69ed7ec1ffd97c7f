// Random matrices with a symmetric profile on which elimination without pivoting is stable, also where they are
// indefinite, and which can change from a given equation on as an assembly changes them.
#pragma once

#include <vector>

#include "matrix_job.h"
#include "profile_systems.h"

namespace tidearc::test {

/// What makes elimination without pivoting stable.
enum class Stable {
  dominant,  ///< the diagonal dominates rows and columns: stable for every set of prescribed equations
  factored,  ///< K = L D U of bounded triangles on the free equations: leading minors of these stay away from zero
};

class RandomMatrix {
 public:
  /// A profile of n columns from `lowest` to `tallest`. Pivots or diagonals are negative with the given probability.
  RandomMatrix(Random& random, int n, int tallest, bool symmetric, Stable stable, double negative, int lowest = 1);

  /// New values of all entries (i, j) with i and j not below `from`; at first of all.
  void change(Random& random, int from);
  /// Prescribed equations of a factored matrix, before its first values.
  void set_status(const std::vector<int>& status) { status_ = status; }
  const TestMatrix& matrix() const { return matrix_; }

 private:
  void change_dominant(Random& random, int from);
  void change_factored(Random& random, int from);
  /// Column c of these triangles times the pivots, zero at prescribed equations.
  std::vector<double> pivoted(const std::vector<double>& triangle, int c) const;

  TestMatrix matrix_;
  Stable stable_;
  double negative_;
  std::vector<int> status_;
  TestMatrix triangles_;  ///< factored: unit triangles U above, L below
  std::vector<double> D_;
};

}  // namespace tidearc::test
