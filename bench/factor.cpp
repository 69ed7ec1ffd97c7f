// Factorisation and solution of space-frame profiles beside a plain reference loop.
//
// The matrix is that of a lattice of nx by ny by nz nodes with six equations each, numbered plane by plane, every node
// joined to its neighbours: columns reach one plane of nodes back. Both sides reduce the same values in turn; the
// counter `ratio` is reference time over ours, `MMAC/s` are our multiply-adds.
#include "solve/factor.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <vector>

namespace tidearc {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

struct Frame {
  int n = 0;
  std::vector<int> IDIAG, MSTAT;
  std::vector<double> K, loads;

  Frame(int nx, int ny, int nz) : n(6 * nx * ny * nz), MSTAT(at(n), -n), loads(at(n)) {
    int address = 0;
    for (int e = 1; e <= n; ++e) {
      const int node = (e - 1) / 6;
      int lowest = node;
      if (node % nx > 0) lowest = node - 1;
      if (node % (nx * ny) >= nx) lowest = node - nx;
      if (node >= nx * ny) lowest = node - nx * ny;
      address += e - 6 * lowest;
      IDIAG.push_back(address);
    }
    fill();
  }

  // Entries of -1 to 0 beside a dominant diagonal; a fixed sequence, so that every run does the same work.
  void fill() {
    K.resize(at(IDIAG.back()));
    unsigned seed = 12345;
    const auto next = [&seed] { return (seed = seed * 1664525u + 1013904223u) / 4294967296.0; };
    for (double& value : K) value = -next();
    for (int e = 1; e <= n; ++e) {
      K[at(IDIAG[at(e - 1)] - 1)] = 4000.0;
      loads[at(e - 1)] = next();
    }
  }

  Profile<double> view(std::vector<double>& values) const {
    return {{values.data(), static_cast<int>(values.size())}, {IDIAG.data(), n}, n};
  }

  double multiply_adds() const {
    double count = 0.0;
    for (int c = 2; c <= n; ++c) {
      const double h = IDIAG[at(c - 1)] - IDIAG[at(c - 2)];
      count += 0.5 * h * h;
    }
    return count;
  }
};

// The textbook loops, one column and one sum after the other, on bare arrays.
void reference_factor(int n, const int* IDIAG, double* A) {
  for (int c = 1; c < n; ++c) {
    double* column = A + IDIAG[c] - 1 - c;
    const int top = c - (IDIAG[c] - IDIAG[c - 1]) + 1;
    for (int r = top + 1; r < c; ++r) {
      const double* row = A + IDIAG[r] - 1 - r;
      const int row_top = r - (IDIAG[r] - IDIAG[r - 1]) + 1;
      double s = 0.0;
      for (int i = std::max(top, row_top); i < r; ++i) s += column[i] * row[i];
      column[r] -= s;
    }
    double s = 0.0;
    for (int i = top; i < c; ++i) {
      const double t = column[i] / A[IDIAG[i] - 1];
      s += column[i] * t;
      column[i] = t;
    }
    column[c] -= s;
  }
}

void reference_solve(int n, const int* IDIAG, const double* A, double* R) {
  for (int c = 1; c < n; ++c) {
    const double* column = A + IDIAG[c] - 1 - c;
    double s = 0.0;
    for (int i = c - (IDIAG[c] - IDIAG[c - 1]) + 1; i < c; ++i) s += column[i] * R[i];
    R[c] -= s;
  }
  for (int i = 0; i < n; ++i) R[i] /= A[IDIAG[i] - 1];
  for (int c = n - 1; c > 0; --c) {
    const double* column = A + IDIAG[c] - 1 - c;
    const double x = R[c];
    for (int i = c - (IDIAG[c] - IDIAG[c - 1]) + 1; i < c; ++i) R[i] -= x * column[i];
  }
}

// Processor time, so that a busy machine does not spoil the ratio.
template <class Act>
double timed(Act&& act) {
  const std::clock_t start = std::clock();
  act();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

Frame frame_of(const benchmark::State& state) {
  return {static_cast<int>(state.range(0)), static_cast<int>(state.range(1)), static_cast<int>(state.range(2))};
}

void report(benchmark::State& state, const Frame& frame, double reference, double ours, double work) {
  state.counters["equations"] = frame.n;
  state.counters["ratio"] = reference / ours;
  state.counters["MMAC/s"] = 1.0E-6 * work * static_cast<double>(state.iterations()) / ours;
}

void factorisation(benchmark::State& state) {
  const Frame frame = frame_of(state);
  double reference = 0.0, ours = 0.0;
  std::vector<double> plain, factor;
  for (auto _ : state) {
    plain = frame.K;
    reference += timed([&] { reference_factor(frame.n, frame.IDIAG.data(), plain.data()); });
    factor = frame.K;
    const double time = timed([&] { reduce_symmetric(frame.view(factor), {frame.MSTAT.data(), frame.n}, 1, 1); });
    ours += time;
    state.SetIterationTime(time);
  }
  if (plain != factor) state.SkipWithError("the two factors differ");
  report(state, frame, reference, ours, frame.multiply_adds());
}

void solution(benchmark::State& state) {
  const Frame frame = frame_of(state);
  std::vector<double> factor = frame.K;
  reduce_symmetric(frame.view(factor), {frame.MSTAT.data(), frame.n}, 1, 1);
  double reference = 0.0, ours = 0.0;
  std::vector<double> plain, x;
  for (auto _ : state) {
    plain = frame.loads;
    reference += timed([&] { reference_solve(frame.n, frame.IDIAG.data(), factor.data(), plain.data()); });
    x = frame.loads;
    const double time = timed([&] {
      solve_symmetric(frame.view(factor), {frame.MSTAT.data(), frame.n}, {x.data(), frame.n});
    });
    ours += time;
    state.SetIterationTime(time);
  }
  if (plain != x) state.SkipWithError("the two solutions differ");
  report(state, frame, reference, ours, 2.0 * static_cast<double>(factor.size()));
}

// Half of the equations changed: the tail alone is reduced, and its sums run over divided rows as well.
void tail_factorisation(benchmark::State& state) {
  const Frame frame = frame_of(state);
  const ConstIntegers MSTAT{frame.MSTAT.data(), frame.n};
  const int first = frame.n / 2 + 1;
  std::vector<double> assembled = frame.K, factor = frame.K;
  const double whole = timed([&] { reduce_symmetric(frame.view(factor), MSTAT, 1, 1); });
  double ours = 0.0;
  for (auto _ : state) {
    const double time = timed([&] {
      copy_changed_rows(frame.view(assembled), {factor.data(), static_cast<int>(factor.size())}, first, first);
      reduce_symmetric(frame.view(factor), MSTAT, first, first);
    });
    ours += time;
    state.SetIterationTime(time);
  }
  state.counters["equations"] = frame.n;
  state.counters["part_of_full"] = ours / static_cast<double>(state.iterations()) / whole;
}

#define TIDEARC_FRAMES \
  UseManualTime()->Unit(benchmark::kMillisecond)->Args({5, 5, 7})->Args({10, 10, 10})->Args({10, 10, 50})
BENCHMARK(factorisation)->TIDEARC_FRAMES;
BENCHMARK(tail_factorisation)->TIDEARC_FRAMES;
BENCHMARK(solution)->TIDEARC_FRAMES;
#undef TIDEARC_FRAMES

}  // namespace
}  // namespace tidearc

BENCHMARK_MAIN();
