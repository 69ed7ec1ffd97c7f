// The unbalance norm, the norm of the applied load, and the largest unbalances of a step.
#include "solve/norm.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "model/nodes.h"
#include "run/layout.h"
#include "run/units.h"
#include "run/vectors.h"
#include "solve/arrays.h"
#include "solve/solve.h"

namespace tidearc {

namespace {

constexpr int norm_maximum = 0;
constexpr int norm_euclidean = 1;
constexpr double least_weight_base = 0.001;  ///< floor of a diagonal in a weight, and of the weighted reference

/// Marks in WORK the equations that the norm looks at: free ones, and without moments only those that a translation of
/// some node reaches.
Reals mark_entries(int KUMOM) {
  Reals mark = equation_vector(arrays.WORK);
  RZERO(mark.data(), mark.size());
  const IntegerTable ID = node_ID();
  const int last_component = KUMOM == 1 ? 6 : 3;
  for (int c = 1; c <= last_component; ++c)
    for (int n = 1; n <= sizes.NUMNP; ++n) mark(ID(n, c)) = ONE;
  for (int e = 1; e <= sizes.NEQ; ++e)
    if (prescribed(e)) mark(e) = ZERO;
  return mark;
}

double largest(Reals x, Reals mark) {
  double norm = ZERO;
  for (int e = 1; e <= sizes.NEQ; ++e) {
    if (mark(e) == ZERO) continue;
    if (std::isnan(x(e))) return x(e);
    norm = std::max(norm, std::abs(x(e)));
  }
  return norm;
}

double euclidean(Reals x, Reals mark) {
  double sum = ZERO;
  for (int e = 1; e <= sizes.NEQ; ++e)
    if (mark(e) != ZERO) sum += x(e) * x(e);
  return std::sqrt(sum);
}

/// Sum of w x^2 with w = 1 / max(|K(e,e)|, 0.001).
double weighted_sum(Reals x, Reals mark) {
  double sum = ZERO;
  for (int e = 1; e <= sizes.NEQ; ++e)
    if (mark(e) != ZERO) sum += x(e) * x(e) / std::max(std::abs(assembled_diagonal(e)), least_weight_base);
  return sum;
}

}  // namespace

UnbalanceNorm unbalance_norm(const NormKind& kind) {
  const Reals RU = equation_vector(arrays.RU);
  const Reals P = equation_vector(arrays.P);
  const Reals mark = mark_entries(kind.KUMOM);
  if (kind.KUTYPE == norm_maximum) return {largest(RU, mark), largest(P, mark)};
  if (kind.KUTYPE == norm_euclidean) return {euclidean(RU, mark), euclidean(P, mark)};
  const Reals R = equation_vector(arrays.R);
  const double reference = std::max({least_weight_base, weighted_sum(P, mark), weighted_sum(R, mark)});
  return {std::sqrt(weighted_sum(RU, mark) / reference), ZERO};
}

void open_unbalance_list() {
  if (!is_open_formatted(UNIT_TOP)) open_formatted(UNIT_TOP, "TAP32", OpenMode::position);
}

void write_largest_unbalances(int NTOP) {
  const Reals RU = equation_vector(arrays.RU);
  Reals left = equation_vector(arrays.WORK);  // magnitudes not yet written; negative when done
  for (int e = 1; e <= sizes.NEQ; ++e)
    left(e) = std::isnan(RU(e)) ? std::numeric_limits<double>::infinity() : std::abs(RU(e));
  for (int row = 1; row <= NTOP; ++row) {
    int top = 1;
    for (int e = 2; e <= sizes.NEQ; ++e)
      if (left(e) > left(top)) top = e;
    const NodeDirection place = holder_of(top);
    write(UNIT_TOP, "2I5,1P,E15.5", place.node, place.component, RU(top));
    left(top) = -ONE;
  }
}

int first_bad_equation(std::initializer_list<int> vectors) {
  for (const int vector : vectors) {
    const Reals x = equation_vector(vector);
    for (int e = 1; e <= sizes.NEQ; ++e)
      if (!std::isfinite(x(e))) return e;
  }
  return 0;
}

}  // namespace tidearc
