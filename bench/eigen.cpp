// Ten lowest modes of frames by subspace iteration, beside one factorisation and the solutions that it took.
//
// Every figure is the best of several runs by processor time; all are measured in the same process.
#include "solve/eigen.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "frames.h"
#include "machine.h"
#include "solve/actcol.h"
#include "solve/factor.h"

namespace tidearc::bench {
namespace {

constexpr int wanted = 10;
constexpr int most_cycles = 60;

struct ModesBench {
  FrameMatrix& frame;
  std::vector<double> M = std::vector<double>(at(frame.n), 0.0);
  int q = 0;
  int cycles = 0;
  double solving = 0.0;  ///< seconds of the last run that its solutions took
  std::vector<double> factor{}, X{}, Y{}, scratch{}, small{}, lists{};

  explicit ModesBench(FrameMatrix& f) : frame(f) {
    for (int e = 0; e < f.n; ++e) M[at(e)] = e % 6 < 3 ? 1.0 : 0.0;  // translations
    q = subspace_size(wanted, count_masses({M.data(), f.n}));
    X.resize(at(f.n) * at(q));
    Y.resize(at(f.n) * at(q));
    small.resize(3 * at(q) * at(q));
    scratch.resize(at(f.n) * at(together(q)));
    lists.resize(4 * at(q) + at(f.n));
  }

  RealTable table(std::vector<double>& v) const { return {v.data(), frame.n, q}; }
  RealTable matrix(int k) { return {small.data() + k * q * q, q, q}; }
  Reals list(int k) { return {lists.data() + k * q, q}; }

  void copy() { factor = frame.K; }

  void solve_all(const Profile<double>& K) {
    active_column_solutions(K.A, table(X), K.IDIAG, {scratch.data(), static_cast<int>(scratch.size())}, list(3));
  }

  /// The whole analysis as the macro makes it.
  void run() {
    copy();
    const Profile<double> K = frame.view(factor);
    const ConstReals masses(M.data(), frame.n);
    const Reals row(lists.data() + 4 * q, frame.n);
    starting_loads(K, masses, table(Y), row);
    active_column_solver(K.A, {}, K.IDIAG, K.NEQ, true, false);
    solving = 0.0;
    for (cycles = 1; cycles <= most_cycles; ++cycles) {
      X = Y;
      solving += timed([&] { solve_all(K); });
      project(table(X), table(Y), masses, matrix(0), matrix(1));
      std::copy(list(0).begin(), list(0).end(), list(1).begin());
      solve_small_problem(matrix(0), matrix(1), matrix(2), list(0));
      rotate(table(X), matrix(2), table(Y));
      X.swap(Y);
      relative_changes(list(0), list(1), list(2));
      if (all_within(list(2), wanted, 1.0e-5)) break;
      mass_weighted(table(X), masses, table(Y));
    }
  }
};

/// Prints the figures of one frame: the analysis may cost `bar` times what it cannot do without.
void measure(const char* name, const FrameGraph& graph) {
  constexpr double bar = 1.5;
  FrameMatrix frame = assemble(graph, sloan(graph));
  ModesBench bench(frame);
  double whole = 1.0E30, solves = 0.0;
  for (int run = 0; run < 3; ++run) {
    const double seconds = timed([&] { bench.run(); });
    if (seconds < whole) {
      whole = seconds;
      solves = bench.solving;
    }
  }
  const double plain = best_of(2, nothing, [&] {
    bench.copy();
    const Profile<double> K = frame.view(bench.factor);
    active_column_solver(K.A, {}, K.IDIAG, K.NEQ, true, false);
  });
  const double kernel = best_of(2, nothing, [&] {
    bench.copy();
    reduce_symmetric(frame.view(bench.factor), {frame.MSTAT.data(), frame.n}, 1, 1);
  });
  const double ratio = whole / (kernel + solves);
  std::printf(
      "%-14s %6d equations  %2d cycles of %2d vectors  %8.3f s whole  %7.3f s factorisation (%7.3f s here)  "
      "%7.3f s solutions  whole / (factorisation + solutions) %5.2f  bar %4.2f  %s\n",
      name, frame.n, bench.cycles, bench.q, whole, kernel, plain, solves, ratio, bar, ratio <= bar ? "met" : "MISSED");
}

}  // namespace
}  // namespace tidearc::bench

int main() {
  using namespace tidearc::bench;
  measure("tower 6x35", tower(6, 35));
  measure("block 20x20x10", block(20, 20, 10));
}
