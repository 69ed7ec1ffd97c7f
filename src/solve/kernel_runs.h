// Loops along one run of rows, compiled once for each kind of vector unit. To be included by solve/kernels_*.cpp alone,
// each with its own `fused(x, y, s)`: x * y + s rounded once.

double product_of(const double* a, const double* b, double s, int r1, int r2) {
  for (int i = r1; i <= r2; ++i) s = fused(a[i], b[i], s);
  return s;
}

double product_pivot_of(const double* a, const double* b, const double* c, double s, int r1, int r2) {
  for (int i = r1; i <= r2; ++i) s = fused(a[i] * c[i], b[i], s);
  return s;
}

double product_profile_pivot_of(const double* a, const double* b, const double* c, const int* IDIAG, double s, int r1,
                                int r2) {
  for (int i = r1; i <= r2; ++i) s = fused(a[i] * c[IDIAG[i]], b[i], s);
  return s;
}

void subtract_from(double* a, const double* b, double s, int r1, int r2) {
  for (int i = r1; i <= r2; ++i) a[i] = fused(-s, b[i], a[i]);
}

int divide_by(double* a, const double* b, double& s, int r1, int r2) {
  for (int i = r1; i <= r2; ++i) {
    if (b[i] == 0.0) return i;
    const double t = a[i] / b[i];
    s = fused(a[i], t, s);
    a[i] = t;
  }
  return 0;
}

int divide_by_profile(double* a, const double* b, const int* IDIAG, double& s, int r1, int r2) {
  for (int i = r1; i <= r2; ++i) {
    const double d = b[IDIAG[i]];
    if (d == 0.0) return i;
    const double t = a[i] / d;
    s = fused(a[i], t, s);
    a[i] = t;
  }
  return 0;
}

void panel_products_of(const double* const* a, const double* b, double* s, int r1, int r2) {
  const double *a0 = a[0], *a1 = a[1], *a2 = a[2], *a3 = a[3];
  double s0 = s[0], s1 = s[1], s2 = s[2], s3 = s[3];
  for (int i = r1; i <= r2; ++i) {
    const double x = b[i];
    s0 = fused(a0[i], x, s0);
    s1 = fused(a1[i], x, s1);
    s2 = fused(a2[i], x, s2);
    s3 = fused(a3[i], x, s3);
  }
  s[0] = s0;
  s[1] = s1;
  s[2] = s2;
  s[3] = s3;
}
