// Small vector routines.
#pragma once

namespace tidearc {

void RZERO(double* array, int n);                     ///< n reals to zero; none for n below 1
void ICOPY(int* to, const int* from, int n);          ///< regions may overlap
void RCOPY(double* to, const double* from, int n);    ///< regions may overlap
double DOT(const double* a, const double* b, int n);  ///< 0.0 for n below 1; summed from low index to high
double DOT3(const double* a, const double* b);

}  // namespace tidearc
