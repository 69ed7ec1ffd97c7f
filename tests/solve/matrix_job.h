// A matrix in any of the four storage schemes, laid down as a job does, for tests of the solvers: values come from the
// test, no elements.
#pragma once

#include <vector>

#include "profile_systems.h"
#include "support/scratch.h"

namespace tidearc::test {

/// One problem at a time in a pool of its own. What stands in the buffers of a blocked job between two calls is made
/// unusable, and the scratch file of its assembly is written over, so that nothing can rely on them.
class MatrixJob {
 public:
  explicit MatrixJob(int pool_words = 1000000);
  ~MatrixJob();
  MatrixJob(const MatrixJob&) = delete;
  MatrixJob& operator=(const MatrixJob&) = delete;

  /// Lays down the matrix: in core when `counts`, the equations of each block, has one entry, else in blocks. All
  /// equations are free. The factor of a matrix in core may stand outside the pool.
  void lay_out(const TestMatrix& matrix, const std::vector<int>& counts, bool outside = false);
  /// New values of the same profile, as an assembly leaves them.
  void assemble(const TestMatrix& matrix);
  void set_status(const std::vector<int>& status);
  void reduce(int KFIRST, int KROW0);
  /// `given`: loads of free equations, displacements of prescribed ones.
  std::vector<double> solve(const std::vector<double>& given);
  /// All values of the factor, in profile order, upper triangle first.
  std::vector<double> factor() const;

  Scratch scratch;

 private:
  void assemble_blocks(const TestMatrix& matrix);
};

/// `blocks` counts that make up n, each 1 or more, at random.
std::vector<int> random_counts(Random& random, int n, int blocks);

}  // namespace tidearc::test
