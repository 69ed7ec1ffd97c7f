// The choice of the innermost loops (solve/kernel_table.h), made when the program starts.
#pragma once

#include "solve/kernel_table.h"

namespace tidearc {

/// Tables that this machine can run, the fastest first; the last of them is "plain" and runs everywhere.
struct UsableKernels {
  const Kernels* table[4] = {};
  int count = 0;
};
UsableKernels usable_kernels();

/// The table in use: the fastest of this machine from the start of the program on. It changes no digit and is no part
/// of a run's state; tests exchange it.
inline const Kernels* kernels = usable_kernels().table[0];

}  // namespace tidearc
