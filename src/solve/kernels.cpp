// Which loops this machine can run.
#include "solve/kernels.h"

#include <initializer_list>

namespace tidearc {

namespace {

bool can_run(const Kernels* table) {
#if defined(__x86_64__)
  const bool avx2 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
  if (table == kernels_avx2()) return avx2;
  if (table == kernels_avx512()) {
    return avx2 && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq");
  }
#endif
  return table != nullptr;
}

}  // namespace

UsableKernels usable_kernels() {
#if defined(__x86_64__)
  __builtin_cpu_init();  // the program's own start calls this before the compiler's
#endif
  UsableKernels usable;
  for (const Kernels* table : {kernels_avx512(), kernels_avx2(), kernels_neon(), kernels_plain()}) {
    if (table != nullptr && can_run(table)) usable.table[usable.count++] = table;
  }
  return usable;
}

}  // namespace tidearc
