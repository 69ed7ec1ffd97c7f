// The innermost loops of the profile solver, once for each kind of vector unit: one table of procedures per kind,
// chosen when the program starts.
//
// One step is the fused multiply-add s = x * y + s, rounded once (std::fma). Every sum begins at +0.0, is kept in one
// accumulator and runs from low row to high, so that all tables give the same digits and a machine without the
// instruction gives them too. Vector lanes hold different sums, never parts of one.
//
// Pointers to columns and vectors are counted so that p[i] is row i.
#pragma once

#include <cstdint>

namespace tidearc {

/// Columns whose sums run side by side in panel_products (solve/runs.h).
inline constexpr int panel_width = 4;

inline constexpr int group_lanes = 8;  ///< columns of a lane group
inline constexpr int strip_rows = 6;   ///< most rows of a strip: the equations of a frame's node
inline constexpr int tile_size = strip_rows * group_lanes;

inline constexpr int most_loads = 32;  ///< right-hand sides that are solved for together

/// A quotient may be formed from a reciprocal when dividend and divisor have these sizes: no step of it then leaves the
/// range of normal numbers.
inline constexpr double smallest_dividend = 0x1p-450;
inline constexpr double largest_dividend = 0x1p450;
inline constexpr double smallest_divisor = 0x1p-500;
inline constexpr double largest_divisor = 0x1p500;

/// Adjacent free equations first..first + count - 1 whose columns are final, or about to be: as rows they are reduced
/// together in every column of a panel.
struct Strip {
  int first;
  int count;
  int common;                            ///< lowest row that all of their columns reach, at most first
  bool ragged;                           ///< a column reaches above `common`
  bool quick;                            ///< all pivots may be divided by through their reciprocals
  int top[strip_rows];                   ///< lowest row of each column
  const double* column[strip_rows];      ///< column[r][k] is L(k, first + r)
  double inner[strip_rows][strip_rows];  ///< inner[q][r] is L(first + q, first + r), q < r; zero above a column
  double pivot[strip_rows];
  double reciprocal[strip_rows];  ///< 1 / pivot, when `quick`
};

/// Eight columns of a panel, packed row by row: entry (k, lane) is values[8 * (k - first_row) + lane]. It holds values
/// that are not divided by pivots; rows above a column's start, and prescribed rows, are zero and add nothing to a sum.
/// What stands at and below a column's own equation is of no meaning.
struct LaneGroup {
  double* values = nullptr;
  int first_row = 0;                  ///< first packed row, strip_rows - 1 above `join`
  int join = 0;                       ///< lowest row that one of the columns reaches
  int all = 0;                        ///< lowest row that all of the columns reach
  int end = 0;                        ///< first equation of the columns
  int last = 0;                       ///< last equation of the columns
  int top[group_lanes] = {};          ///< lowest row of each column
  int equation[group_lanes] = {};     ///< equation of each column, 0 for a lane without one
  double* column[group_lanes] = {};   ///< column[lane][k] is entry (k, equation) of the profile
  double diagonal[group_lanes] = {};  ///< sum that the diagonal of each column is reduced by
};

/// A column of a panel that is also a row of the strip at work: its lane, and the sums of its group.
struct OwnLane {
  LaneGroup* group = nullptr;
  const double* sums = nullptr;
  int lane = 0;
};

/// Columns of a reduced profile as bare arrays, all counted from 1.
struct ProfileColumns {
  const double* values;  ///< entry (k, c) at values[IDIAG[c] + k - c]
  const int* IDIAG;      ///< diagonal addresses by equation
  const int* MSTAT;      ///< run links (solve/runs.h) by equation
  int first;             ///< column at which addresses begin
};

/// The loops of one kind of vector unit.
struct Kernels {
  const char* name;  ///< "AVX-512", "AVX2", "NEON", "plain"

  /// s + the sum of a(i) * b(i).
  double (*product)(const double* a, const double* b, double s, int r1, int r2);
  /// s + the sum of (a(i) * c(i)) * b(i), the bracket rounded.
  double (*product_pivot)(const double* a, const double* b, const double* c, double s, int r1, int r2);
  /// The same with c(IDIAG(i)).
  double (*product_profile_pivot)(const double* a, const double* b, const double* c, const int* IDIAG, double s, int r1,
                                  int r2);
  /// a(i) -= s * b(i).
  void (*subtract)(double* a, const double* b, double s, int r1, int r2);
  /// t = a(i) / b(i), s += a(i) * t, a(i) = t. Returns the row whose pivot is exactly 0, before which it stops, or 0.
  int (*divide)(double* a, const double* b, double& s, int r1, int r2);
  /// The same with the pivot b(IDIAG(i)).
  int (*divide_profile)(double* a, const double* b, const int* IDIAG, double& s, int r1, int r2);
  /// s[k] += the sum of a[k](i) * b(i) for panel_width columns.
  void (*panel_products)(const double* const* a, const double* b, double* s, int r1, int r2);

  // --- panels (solve/packed.h) ---

  /// Brings the rows above the diagonal of each column of a group from the profile to `values`.
  void (*pack)(LaneGroup& group);
  /// Rows r1..r2 of the group hold L: they are multiplied by the pivots D(r) and counted in the diagonal sums.
  void (*scale)(LaneGroup& group, const double* D, int r1, int r2);
  /// sums[8 * r + lane] of each group: the sum over the rows above the strip that both columns reach.
  void (*sum_strip)(const Strip& strip, const LaneGroup* const* groups, int count, double* sums);
  /// Reduces and divides the rows of the strip in its own columns, and their diagonals, in the profile and in the
  /// strip.
  void (*factor_strip)(Strip& strip, const OwnLane* own);
  /// Reduces the rows of the strip in a group by their sums; when told, divides them by the pivots and counts them in
  /// the diagonal sums. Stores them in the profile, the undivided ones in `values`.
  void (*finish_strip)(const Strip& strip, LaneGroup* const* groups, int count, const double* sums, bool divide);

  // --- solutions (solve/substitution.cpp) ---

  /// Forward substitution with the free columns r1..r2, which have no prescribed one between them, over rows from f on.
  void (*forward)(const ProfileColumns& K, int r1, int r2, int f, double* x);
  /// x(i) /= diagonal of column i.
  void (*divide_by_diagonal)(const ProfileColumns& K, int r1, int r2, double* x);
  /// Back-substitution with such columns, from the last to the first. Rows f..r2 are divided by their diagonals before
  /// anything is subtracted from them; none with f behind r2.
  void (*backward)(const ProfileColumns& K, int r1, int r2, int f, double* r);
  /// Many loads: load j of row i at x[loads * i + j], sums and factors of column n at most_loads * n + j.
  /// s[n] += the sum of column n over rows r1..r2, for `count` columns.
  void (*column_sums_many)(const double* const* a, int count, const double* x, int loads, int r1, int r2, double* s);
  /// The rows of a strip behind these sums.
  void (*forward_triangle_many)(const Strip& strip, double* x, int loads, double* s);
  /// A row of loads divided by its pivot.
  void (*divide_many)(double* x, int loads, double pivot);
  /// x[n] = r of the strip's column n once the columns behind it in the strip are subtracted from it.
  void (*back_triangle_many)(const Strip& strip, double* r, int loads, double* x);
  /// r(i) -= x[n] * column n from the last to the first, over rows r1..r2.
  void (*subtract_columns_many)(double* r, const double* const* a, int count, const double* x, int loads, int r1,
                                int r2);
};

/// The tables themselves; nullptr where the program was built for another kind of machine.
const Kernels* kernels_avx512();
const Kernels* kernels_avx2();
const Kernels* kernels_neon();
const Kernels* kernels_plain();

}  // namespace tidearc
