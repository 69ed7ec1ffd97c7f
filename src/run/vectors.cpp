// Small vector routines.
#include "run/vectors.h"

#include <cstring>

namespace tidearc {

void RZERO(double* array, int n) {
  for (int i = 0; i < n; ++i) array[i] = 0.0;
}

void ICOPY(int* to, const int* from, int n) {
  if (n > 0) std::memmove(to, from, static_cast<std::size_t>(n) * sizeof(int));
}

void RCOPY(double* to, const double* from, int n) {
  if (n > 0) std::memmove(to, from, static_cast<std::size_t>(n) * sizeof(double));
}

double DOT(const double* a, const double* b, int n) {
  double sum = 0.0;
  for (int i = 0; i < n; ++i) sum += a[i] * b[i];
  return sum;
}

double DOT3(const double* a, const double* b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

}  // namespace tidearc
