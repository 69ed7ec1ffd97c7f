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
  std::vector<double> factor{}, X{}, Y{}, small{}, lists{};

  explicit ModesBench(FrameMatrix& f) : frame(f) {
    for (int e = 0; e < f.n; ++e) M[at(e)] = e % 6 < 3 ? 1.0 : 0.0;  // translations
    q = subspace_size(wanted, count_masses({M.data(), f.n}));
    X.resize(at(f.n) * at(q));
    Y.resize(at(f.n) * at(q));
    small.resize(3 * at(q) * at(q));
    lists.resize(4 * at(q) + at(f.n));
  }

  RealTable table(std::vector<double>& v) const { return {v.data(), frame.n, q}; }
  RealTable matrix(int k) { return {small.data() + k * q * q, q, q}; }
  Reals list(int k) { return {lists.data() + k * q, q}; }

  void copy() { factor = frame.K; }

  void solve_all(const Profile<double>& K) {
    for (int j = 1; j <= q; ++j) active_column_solver(K.A, table(X).column(j), K.IDIAG, K.NEQ, false, true);
  }

  /// The whole analysis as the macro makes it.
  void run() {
    copy();
    const Profile<double> K = frame.view(factor);
    const ConstReals masses(M.data(), frame.n);
    const Reals scratch(lists.data() + 4 * q, frame.n);
    starting_loads(K, masses, table(Y), scratch);
    active_column_solver(K.A, {}, K.IDIAG, K.NEQ, true, false);
    for (cycles = 1; cycles <= most_cycles; ++cycles) {
      X = Y;
      solve_all(K);
      project(table(X), table(Y), masses, matrix(0), matrix(1), scratch);
      std::copy(list(0).begin(), list(0).end(), list(1).begin());
      solve_small_problem(matrix(0), matrix(1), matrix(2), list(0));
      rotate(table(X), matrix(2), list(3));
      relative_changes(list(0), list(1), list(2));
      if (all_within(list(2), wanted, 1.0e-5)) break;
      mass_weighted(table(X), masses, table(Y));
    }
  }
};

void measure(const char* name, const FrameGraph& graph) {
  FrameMatrix frame = assemble(graph, sloan(graph));
  ModesBench bench(frame);
  const double whole = best_of(2, nothing, [&] { bench.run(); });
  const double plain = best_of(2, nothing, [&] {
    bench.copy();
    const Profile<double> K = frame.view(bench.factor);
    active_column_solver(K.A, {}, K.IDIAG, K.NEQ, true, false);
  });
  const double solves = best_of(2, nothing, [&] { bench.solve_all(frame.view(bench.factor)); });
  const double kernel = best_of(2, nothing, [&] {
    bench.copy();
    reduce_symmetric(frame.view(bench.factor), {frame.MSTAT.data(), frame.n}, 1, 1);
  });
  const double needed = kernel + bench.cycles * solves;
  std::printf(
      "%-14s %6d equations  %2d cycles of %2d vectors  %8.3f s whole  %7.3f s factorisation (%7.3f s here)  "
      "%7.3f s solutions of a cycle  whole / (factorisation + solutions) %5.2f\n",
      name, frame.n, bench.cycles, bench.q, whole, kernel, plain, solves, whole / needed);
}

}  // namespace
}  // namespace tidearc::bench

int main() {
  using namespace tidearc::bench;
  measure("tower 6x35", tower(6, 35));
  measure("block 20x20x10", block(20, 20, 10));
}
