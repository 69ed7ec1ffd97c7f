// A structure matrix without a structure: a profile, blocks of a chosen size, and element matrices that a test makes
// up.
#pragma once

#include <string>
#include <vector>

#include "support/scratch.h"

namespace tidearc::test {

/// What an element delivers.
struct MadeUpElement {
  std::vector<int> LM;
  bool packed = false;
  std::vector<double> EMAT;
};

/// A job of one storage scheme. `first_rows` is the smallest equation connected to each equation. Its files are kept in
/// memory, which is the same to all but the file layer.
class BlockProblem {
 public:
  BlockProblem(int KSTOR, const std::vector<int>& first_rows, int NWDBLK = 0);
  ~BlockProblem();
  bool refused() const { return refused_; }  ///< the matrix could not be cut into blocks

  /// One assembly: the elements in their order, from zero when `reset`. KFIRST and NADDED are those of the loop.
  void assemble(const std::vector<MadeUpElement>& elements, bool reset, bool stand_ins);
  /// Triangle 1 (upper) or 2 (lower) in profile order, from the pool or from the block records.
  std::vector<double> values(int triangle) const;
  /// The records of NT3 as words: block by block, with two triangles upper then lower.
  std::vector<std::vector<int>> records() const;
  std::string report() const { return scratch_.report(); }
  std::string errors() const { return scratch_.errors(); }

 private:
  Scratch scratch_;
  bool refused_ = false;
};

}  // namespace tidearc::test
