// Tables that own their numbers, and the chain of springs, for the tests of the subspace iteration.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "profile_systems.h"
#include "solve/eigen.h"

namespace tidearc::test {

inline std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// A table that owns its numbers.
struct Table {
  Table(int rows, int columns) : r(rows), c(columns), values(at(rows * columns)) {}
  Table(int rows, int columns, std::vector<double> numbers) : r(rows), c(columns), values(std::move(numbers)) {}
  operator RealTable() { return {values.data(), r, c}; }
  operator ConstRealTable() const { return {values.data(), r, c}; }
  double operator()(int i, int j) const { return values[at((i - 1) + (j - 1) * r)]; }
  double& operator()(int i, int j) { return values[at((i - 1) + (j - 1) * r)]; }
  int r, c;
  std::vector<double> values;
};
inline Reals view(std::vector<double>& v) { return {v.data(), static_cast<int>(v.size())}; }
inline ConstReals view(const std::vector<double>& v) { return {v.data(), static_cast<int>(v.size())}; }

/// Entries without a pattern.
inline Table some_table(int rows, int columns, unsigned seed) {
  Random random(seed);
  Table table(rows, columns);
  for (double& value : table.values) value = random_real(random, -1.0, 1.0);
  return table;
}

/// Springs of stiffness 1 between n points and both walls: K = tridiag(-1, 2, -1).
inline ProfileSystem chain(int n) {
  ProfileSystem system;
  system.n = n;
  for (int e = 1; e <= n; ++e) {
    if (e > 1) system.A.push_back(-1.0);
    system.A.push_back(2.0);
    system.IDIAG.push_back(static_cast<int>(system.A.size()));
  }
  return system;
}

}  // namespace tidearc::test
