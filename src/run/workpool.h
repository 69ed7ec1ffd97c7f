// The work array: one allocation, every array an index into it.
// The pool is reserved, not touched: a small problem in the default pool of 1500 million words uses a few megabytes.
#pragma once

#include <cstdint>
#include <type_traits>

#include "run/views.h"
#include "run/words.h"

namespace tidearc {

/// Where the arrays of the problem stand. Indices are 1-based word indices into the pool.
/// NEXT is advanced by the carving procedures; the rest is set by DATAIN when the model has been read.
struct StorageBlock {
  int NEXT = 1;    ///< first free word                                              [-]
  int MSTOR = 0;   ///< words of the pool                                            [-]
  int KEDAT = 0;   ///< first word of element data                                   [-]
  int LAVSST = 0;  ///< words of one stiffness array                                 [-]
  int NEEDED = 0;  ///< words the problem needs with its element data in core        [-]
  int KSTART = 0;  ///< first word of the analysis vectors                           [-]
};
inline StorageBlock storage;
static_assert(std::is_trivially_copyable_v<StorageBlock>);

class WorkPool {
 public:
  WorkPool() = default;
  WorkPool(const WorkPool&) = delete;
  WorkPool& operator=(const WorkPool&) = delete;
  ~WorkPool();

  /// Reserves `count` words, all zero, without touching them; sets storage.MSTOR. Failure is told and closes down.
  void allocate(int count);
  void release();

  Vector<double> reals(int index, int n) { return {real(index, 2LL * n), n}; }
  Matrix<double> reals(int index, int rows, int columns) { return {real(index, 2LL * rows * columns), rows, columns}; }
  Vector<int> integers(int index, int n) { return {word(index, n), n}; }
  Matrix<int> integers(int index, int rows, int columns) {
    return {word(index, static_cast<long long>(rows) * columns), rows, columns};
  }
  /// `n` raw words from `index` on.
  Word* words(int index, long long n) { return word(index, n); }

  /// Sets every word from `index` to the end of the pool to zero; costs only what was handed out before.
  void clear_from(int index);

 private:
  Word* word(int index, long long n) {
    check_index(index, static_cast<long long>(size_) + 1);
    check_index(index + n, static_cast<long long>(size_) + 1);
    if (index - 1 + n > touched_) touched_ = index - 1 + n;
    return words_ + (index - 1);
  }
  double* real(int index, long long n) { return reinterpret_cast<double*>(word(index, n)); }

  Word* words_ = nullptr;
  int size_ = 0;
  long long touched_ = 0;  ///< words from the start that may differ from zero
};
inline WorkPool pool;

/// Lays down an array at NEXT and advances NEXT: n reals, or n integers and a pad word when n is odd. Returns its
/// index. The array must not be touched before check_storage. NEXT saturates where a 32-bit index ends.
int carve_reals(std::int64_t n);
int carve_integers(std::int64_t n);

/// One check per phase: calls STORCK when NEXT has passed MSTOR + 1.
void check_storage(int phase);

/// Storage check report and close-down. `phase` 1 to 11 names the input phase.
[[noreturn]] void STORCK(std::int64_t need, std::int64_t have, int phase);

}  // namespace tidearc
