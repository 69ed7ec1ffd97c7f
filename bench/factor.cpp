// The symmetric profile solver on frames of several sizes, beside the plain loop, the machine's multiply-add peak, the
// reading of the factor, and a sparse factorisation.
//
// Every figure is the best of several runs by processor time, the ones it is compared with measured in the same
// process. Frames that have bars to meet stand in the reverse order of Cuthill and McKee, whose columns are alike; the
// rows behind them show what members in many pieces cost, in that order and in Sloan's, which has fewer entries in
// columns of very different heights.
//
// One solution is told in reads of the factor, and a read is what the plain loop takes that adds its values: one sum in
// order, like every sum of the solver. Beside it stand the same sum re-associated in vector lanes, which this program
// does nowhere, and the factor's lines read up and down again with no arithmetic: no solution that reads the factor
// twice goes below that.
#include "solve/factor.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "frames.h"
#include "machine.h"
#include "sparse.h"

namespace tidearc::bench {
namespace {

#if defined(__x86_64__)
#define TIDEARC_PLAIN __attribute__((target("avx2,fma"), noinline))
#else
#define TIDEARC_PLAIN __attribute__((noinline))
#endif

// The textbook loops on bare arrays, columns from `first` on, 0-based: one column and one sum after the other, in the
// order of the solver and with its fused step, so that the two agree in every bit.
TIDEARC_PLAIN void plain_factor(int first, int n, const int* IDIAG, double* A) {
  for (int c = first; c < n; ++c) {
    double* column = A + IDIAG[c] - 1 - c;
    const int top = c - (IDIAG[c] - IDIAG[c - 1]) + 1;
    for (int r = top + 1; r < c; ++r) {
      const double* row = A + IDIAG[r] - 1 - r;
      const int row_top = r - (IDIAG[r] - IDIAG[r - 1]) + 1;
      double s = 0.0;
      for (int i = std::max(top, row_top); i < r; ++i) s = __builtin_fma(column[i], row[i], s);
      column[r] -= s;
    }
    double s = 0.0;
    for (int i = top; i < c; ++i) {
      const double t = column[i] / A[IDIAG[i] - 1];
      s = __builtin_fma(column[i], t, s);
      column[i] = t;
    }
    column[c] -= s;
  }
}

// Flush to zero, as the program runs.
void flush_to_zero() {
#if defined(__x86_64__)
  _mm_setcsr(_mm_getcsr() | 0x8040);
#endif
}

struct Bench {
  FrameMatrix& frame;
  int times;
  std::vector<double> factor{};

  ConstIntegers MSTAT() const { return {frame.MSTAT.data(), frame.n}; }

  double whole() {
    return best_of(
        times, [&] { factor = frame.K; }, [&] { reduce_symmetric(frame.view(factor), MSTAT(), 1, 1); });
  }

  // The plain loop, as long as it takes seconds: on a large frame a fortieth of its columns stands for the whole, in
  // proportion to the work. Counts the bits in which it differs.
  double plain(double work) {
    std::vector<double> values = frame.K;
    int first = 1;
    double part = work;
    if (work > 2.0E9) {
      first = frame.n / 2;
      const int last = std::min(frame.n, first + frame.n / 40);
      part = 0.0;
      for (int c = first + 1; c <= last; ++c) {
        for (int r = frame.top(c) + 1; r < c; ++r) part += std::max(0, r - std::max(frame.top(c), frame.top(r)));
      }
      std::memcpy(values.data(), factor.data(), at(frame.IDIAG[at(first - 1)]) * sizeof(double));
      const double seconds = timed([&] { plain_factor(first, last, frame.IDIAG.data(), values.data()); });
      compare(values, frame.IDIAG[at(last - 1)]);
      return seconds * work / part;
    }
    const double seconds = best_of(
        std::min(times, 3), [&] { values = frame.K; },
        [&] { plain_factor(first, frame.n, frame.IDIAG.data(), values.data()); });
    compare(values, frame.IDIAG.back());
    return seconds;
  }
  void compare(const std::vector<double>& values, int count) const {
    if (std::memcmp(values.data(), factor.data(), at(count) * sizeof(double)) != 0) std::printf("  THE BITS DIFFER\n");
  }

  double tail() {
    const int first = frame.n - frame.n / 10 + 1;
    std::vector<double> values;
    return best_of(
        times, [&] { values = factor; },
        [&] {
          copy_changed_rows(frame.view(frame.K), {values.data(), static_cast<int>(values.size())}, first, first);
          reduce_symmetric(frame.view(values), MSTAT(), first, first);
        });
  }

  // One solution and the reads that it is compared with take turns, so that all of them see the machine in its moods.
  struct Reads {
    double solution = 1.0E30, in_order = 1.0E30, in_lanes = 1.0E30, up_and_down = 1.0E30;
  };
  Reads reads() {
    Reads best;
    std::vector<double> x;
    const auto take = [&](double& seconds, auto&& read) {
      seconds = std::min(seconds, timed([&] { sink = read(factor.data(), factor.size()); }));
    };
    for (int i = 0; i < 5 * times; ++i) {
      take(best.in_order, sum_in_order);
      take(best.in_lanes, sum_in_lanes);
      for (int k = 0; k < 2; ++k) take(best.up_and_down, up_and_down);
      for (int k = 0; k < 2; ++k) {  // the second one finds the machine as a solution leaves it
        x = frame.loads;
        best.solution = std::min(best.solution, timed([&] {
                                   solve_symmetric(frame.view(factor), MSTAT(), {x.data(), frame.n});
                                 }));
      }
    }
    return best;
  }

  double solutions(int count) {
    std::vector<double> x(at(count * frame.n));
    return best_of(
        times,
        [&] {
          for (int e = 0; e < frame.n; ++e) std::fill_n(x.begin() + e * count, count, frame.loads[at(e)]);
        },
        [&] {
          solve_many(frame.view(factor), MSTAT(), {x.data(), count * frame.n}, count);
        });
  }
};

// What a frame has to reach; 0 where nothing is asked for.
struct Bars {
  double plain = 0.0, share = 0.0, tail = 0.0, reads = 0.0, many = 0.0, sparse = 0.0;
};

int missed = 0;

void judge(const char* what, double value, double bar, bool at_least) {
  if (bar == 0.0) return;
  const bool met = at_least ? value >= bar : value <= bar;
  missed += met ? 0 : 1;
  std::printf("    %-40s %6.2f   %s %5.2f   %s\n", what, value, at_least ? "at least" : "at most ", bar,
              met ? "met" : "MISSED");
}

void compare_with_sparse(FrameMatrix& frame, double whole, double bar) {
  const SparseResult other = sparse_factorisation(frame, 5);
  if (other.seconds == 0.0) {
    std::printf("    sparse factorisation: CHOLMOD is not installed (libsuitesparse-dev), not compared\n");
    return;
  }
  std::printf("    CHOLMOD's best (%s): %.2f ms, %.2f million entries; ours takes %.2f times its time\n",
              other.what.c_str(), 1.0E3 * other.seconds, 1.0E-6 * other.entries, whole / other.seconds);
  judge("time beside CHOLMOD's best", whole / other.seconds, bar, false);
}

struct Row {
  const char* name;
  FrameGraph graph;
  bool in_sloan;
  Bars bars;
  bool sparse;
};

void measure(const Row& row) {
  FrameMatrix frame = assemble(row.graph, row.in_sloan ? sloan(row.graph) : reverse_cuthill_mckee(row.graph));
  const double work = frame.work();
  Bench bench{frame, work > 2.0E9 ? 3 : frame.n < 10000 ? 40 : 20};
  double peak = multiply_add_peak();  // beside the row: the clock of the machine wanders
  const double whole = bench.whole();
  peak = std::max(peak, multiply_add_peak());
  const double plain = bench.plain(work);
  const double tail = bench.tail();
  const Bench::Reads one = bench.reads();
  const double many = 16.0 * one.solution / bench.solutions(16);
  std::printf("%-18s %-5s %7d %6.0f %8.2f %9.3f %9.2f %6.1f %6.2f %6.2f %8.3f %6.2f %6.2f %6.2f %6.1f\n", row.name,
              row.in_sloan ? "Sloan" : "RCM", frame.n, static_cast<double>(frame.K.size()) / frame.n,
              1.0E-6 * static_cast<double>(frame.K.size()), 1.0E-9 * work, 1.0E3 * whole, plain / whole,
              work / whole / peak, tail / whole, 1.0E3 * one.solution, one.solution / one.in_order,
              one.solution / one.in_lanes, one.solution / one.up_and_down, many);
  judge("times as fast as the plain loop", plain / whole, row.bars.plain, true);
  judge("share of the multiply-add peak", work / whole / peak, row.bars.share, true);
  judge("last tenth of the columns, of the whole", tail / whole, row.bars.tail, false);
  judge("one solution, in reads of the factor", one.solution / one.in_order, row.bars.reads, false);
  judge("16 solutions at once, times as fast", many, row.bars.many, true);
  if (row.sparse) compare_with_sparse(frame, whole, row.bars.sparse);
}

void run() {
  flush_to_zero();
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  std::printf("symmetric profile solver: %s, %.1f thousand million multiply-adds a second on this core, BLAS %s\n",
              kernels->name, 1.0E-9 * multiply_add_peak(), blas_library().c_str());
  std::printf(
      "times in ms; one solution beside reads of the factor: `read` the sum of its values in order, `lanes` that\n"
      "sum re-associated in vector lanes, `up+dn` its lines read up and down again at the speed of memory\n");
  std::printf("%-18s %-5s %7s %6s %8s %9s %9s %6s %6s %6s %8s %6s %6s %6s %6s\n", "frame", "order", "eqns", "height",
              "Mreals", "10^9 m-a", "factor", "plain", "peak", "tenth", "solve", "read", "lanes", "up+dn", "16");
  const Bars none;
  const Row rows[] = {{"jacket 3/3 in 2", jacket(3, 3, 2), false, {4, 0.18, 0, 1.9, 4, 0}, false},
                      {"jacket 18/6 in 4", jacket(18, 6, 4), false, {6, 0.25, 0.12, 1.9, 4.5, 0}, false},
                      {"jacket 75/32 in 4", jacket(75, 32, 4), false, {9, 0.38, 0.06, 1.4, 3.5, 1.8}, true},
                      {"jacket 200/85 in 5", jacket(200, 85, 5), false, {9, 0.38, 0.06, 2.5, 4, 0}, false},
                      {"block", block(20, 20, 10), false, {16, 0.58, 0.04, 2.1, 3.5, 1}, true},
                      {"jacket 75/32 in 4", jacket(75, 32, 4), true, none, true},
                      {"tower 6x8", tower(6, 8), true, none, false},
                      {"tower 6x8", tower(6, 8), false, none, false},
                      {"tower 6x35", tower(6, 35), true, none, true},
                      {"tower 6x35", tower(6, 35), false, none, true},
                      {"tower 6x116", tower(6, 116), true, none, false},
                      {"tower 6x116", tower(6, 116), false, none, false}};
  for (const Row& row : rows) measure(row);
  std::printf("%d bars missed\n", missed);
}

}  // namespace
}  // namespace tidearc::bench

int main() { tidearc::bench::run(); }
