// A sparse Cholesky factorisation of the same matrix, for comparison: CHOLMOD, where it is installed.
#pragma once

#ifdef TIDEARC_CHOLMOD
#include <cholmod.h>
#include <dlfcn.h>

#include <cstdlib>
#endif
#include <algorithm>
#include <string>
#include <vector>

#include "frames.h"
#include "machine.h"

namespace tidearc::bench {

struct SparseResult {
  double seconds = 0.0;  ///< best numeric factorisation, 0 when there is none
  double entries = 0.0;  ///< of its factor
  std::string what;      ///< ordering and kind of the best
};

#ifdef TIDEARC_CHOLMOD

/// The linear algebra library behind it, on which its time depends.
inline std::string blas_library() {
  Dl_info info{};
  void* const symbol = dlsym(RTLD_DEFAULT, "dgemm_");
  if (symbol == nullptr || dladdr(symbol, &info) == 0) return "unknown";
  char* const path = realpath(info.dli_fname, nullptr);
  const std::string name = path != nullptr ? path : info.dli_fname;
  std::free(path);
  return name;
}

inline cholmod_sparse* sparse_of(FrameMatrix& matrix, cholmod_common& common) {
  std::vector<int> row, start{0};
  std::vector<double> value;
  for (int c = 1; c <= matrix.n; ++c) {  // upper triangle by columns; zeros of the profile are left out
    for (int r = matrix.top(c); r <= c; ++r) {
      if (matrix.entry(r, c) == 0.0) continue;
      row.push_back(r - 1);
      value.push_back(matrix.entry(r, c));
    }
    start.push_back(static_cast<int>(row.size()));
  }
  const std::size_t n = at(matrix.n);
  cholmod_sparse* A = cholmod_allocate_sparse(n, n, row.size(), 1, 1, 1, CHOLMOD_REAL, &common);
  std::copy(start.begin(), start.end(), static_cast<int*>(A->p));
  std::copy(row.begin(), row.end(), static_cast<int*>(A->i));
  std::copy(value.begin(), value.end(), static_cast<double*>(A->x));
  return A;
}

/// Best numeric factorisation over its orderings and its two kinds of factor; the orderings themselves are not timed.
inline SparseResult sparse_factorisation(FrameMatrix& matrix, int times) {
  cholmod_common common;
  cholmod_start(&common);
  cholmod_sparse* A = sparse_of(matrix, common);
  SparseResult best;
  struct Ordering {
    int code;
    const char* name;
  };
  for (const Ordering& ordering :
       {Ordering{CHOLMOD_AMD, "AMD"}, {CHOLMOD_METIS, "METIS"}, {CHOLMOD_NESDIS, "NESDIS"}}) {
    for (const int kind : {CHOLMOD_SUPERNODAL, CHOLMOD_SIMPLICIAL}) {
      common.nmethods = 1;
      common.method[0].ordering = ordering.code;
      common.supernodal = kind;
      common.final_ll = kind == CHOLMOD_SUPERNODAL;
      cholmod_factor* L = cholmod_analyze(A, &common);
      if (L == nullptr || common.status != CHOLMOD_OK) continue;
      double seconds = timed([&] { cholmod_factorize(A, L, &common); });
      if (best.seconds == 0.0 || seconds < 2.0 * best.seconds) {
        seconds = best_of(times, nothing, [&] { cholmod_factorize(A, L, &common); });
      }
      if (common.status == CHOLMOD_OK && (best.seconds == 0.0 || seconds < best.seconds)) {
        best = {seconds, common.lnz,
                std::string(ordering.name) + (kind == CHOLMOD_SUPERNODAL ? " supernodal" : " simplicial")};
      }
      cholmod_free_factor(&L, &common);
    }
  }
  cholmod_free_sparse(&A, &common);
  cholmod_finish(&common);
  return best;
}

#else

inline std::string blas_library() { return "none"; }
inline SparseResult sparse_factorisation(FrameMatrix&, int) { return {}; }

#endif

}  // namespace tidearc::bench
