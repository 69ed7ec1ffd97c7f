// State determination of elastic trusses for a model beyond the caches, in core and with the records on files, beside a
// plain loop that only moves the records.
//
// The model is a square lattice of bars whose records are written as element input writes them.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "elements/contract/input.h"
#include "elements/contract/pass.h"
#include "elements/contract/stiffness.h"
#include "elements/contract/walk.h"
#include "elements/truss/geometry.h"
#include "elements/truss/law.h"
#include "elements/truss/record.h"
#include "folder.h"
#include "model/nodes.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc {
namespace {

constexpr int side = 245;                                              // nodes of a side: 60025 nodes
constexpr int bars = 2 * side * (side - 1) + (side - 1) * (side - 1);  // 179,096: 225 MB in each generation
constexpr int truss_stride = 359;

void place_nodes() {
  sizes.NUMNP = side * side;
  nodes.ID = carve_integers(6LL * sizes.NUMNP);
  nodes.X = carve_reals(sizes.NUMNP);
  nodes.Y = carve_reals(sizes.NUMNP);
  nodes.Z = carve_reals(sizes.NUMNP);
  sizes.NEQ = 3 * sizes.NUMNP;
  const IntegerTable ID = node_ID();
  for (int n = 1; n <= sizes.NUMNP; ++n) {
    pool.reals(nodes.X, sizes.NUMNP)(n) = (n - 1) % side;
    pool.reals(nodes.Y, sizes.NUMNP)(n) = (n - 1) / side;
    for (int c = 1; c <= 6; ++c) ID(n, c) = c <= 3 ? 3 * (n - 1) + c : NEQ1();
  }
}

void make_record(int number, int NODEI, int NODEJ) {
  std::memset(record_words(), 0, sizeof(TrussRecord));
  TrussRecord& truss = current_record<TrussRecord>();
  truss.head.number = number;
  truss.head.KSTIF = 1;
  truss.NODEI = NODEI;
  truss.NODEJ = NODEJ;
  for (int c = 1; c <= 3; ++c) {
    truss.head.LM[c - 1] = (c - 1) * sizes.NUMNP + NODEI;
    truss.head.LM[c + 2] = (c - 1) * sizes.NUMNP + NODEJ;
  }
  truss.material.EMOD = 1000.0;
  truss.section.area = 1.0;
  const TrussGeometry geometry = truss_geometry(coordinates(NODEI), coordinates(NODEJ));
  truss.XL = geometry.length;
  std::memcpy(truss.DIR, geometry.DIR, sizeof(truss.DIR));
  form_truss_law(truss);
  write_element_record();
}

void make_records(double damping) {
  group = {};
  group.BETAT = damping;
  group.ITYPE = 1;
  group.NUMEL = bars;
  const ElementType& type = element_type(1);
  group.NDOF = type.NDOF;
  group.LFIX = type.LFIX;
  group.LTAN = type.LTAN;
  group.LAUX = type.LAUX;
  group.LEI = type.LFIX + type.LTAN + type.LAUX;
  element_counts = {bars, group.LEI};
  sizes.NELGR = 1;
  FILE(units.NT5, "WRIT", group_words, &group);
  int number = 0;
  for (int n = 1; n <= sizes.NUMNP; ++n) {
    const bool right = n % side != 0;
    const bool up = n + side <= sizes.NUMNP;
    if (right) make_record(++number, n, n + 1);
    if (up) make_record(++number, n, n + side);
    if (right && up) make_record(++number, n, n + side + 1);
  }
}

/// Lays the model down in one storage scheme; the destructor takes it away.
class Model {
 public:
  explicit Model(int KSTOR, double damping = 0.0) {
    solver.KSTOR = KSTOR;
    keep_scratch_in_memory(!records_on_disk());
    pool.allocate(records_on_disk() ? 20000000 : 200000000);
    storage.NEXT = 1;
    place_nodes();
    carve_analysis_arrays();
    storage.KEDAT = storage.NEXT;
    make_records(damping);
    LODELM();
    for (int e = 1; e <= sizes.NEQ; ++e) equation_vector(arrays.U)(e) = 1.0e-6 * (e % 17);
  }
  ~Model() {
    flush_all_units();
    pool.release();
    storage = {};
    units = {};
  }

 private:
  bench::Folder folder_;
};

void tell_rate(benchmark::State& state) {
  state.counters["elements/s"] = benchmark::Counter(static_cast<double>(bars) * static_cast<double>(state.iterations()),
                                                    benchmark::Counter::kIsRate);
}

void state_determination(benchmark::State& state) {
  const Model model(static_cast<int>(state.range(0)));
  for (auto _ : state) determine_states();
  tell_rate(state);
}
BENCHMARK(state_determination)->ArgName("KSTOR")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->MinTime(1.0);

/// The least that a determination moves: first portions from the reference, through a block, into the pool.
void moving_the_records(benchmark::State& state) {
  const std::size_t bytes = bytes_of_words(element_type(1).LFIX);
  std::vector<Word> reference(static_cast<std::size_t>(bars) * 314, 1);
  std::vector<Word> current(static_cast<std::size_t>(bars) * truss_stride, 1);
  std::vector<Word> block(314);
  for (auto _ : state) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(bars); ++i) {
      std::memcpy(block.data(), reference.data() + i * 314, bytes);
      benchmark::DoNotOptimize(block.data());
      benchmark::ClobberMemory();
      std::memcpy(current.data() + i * truss_stride, block.data(), bytes);
    }
  }
  tell_rate(state);
}
BENCHMARK(moving_the_records)->Unit(benchmark::kMillisecond)->MinTime(1.0);

/// What a dynamic step with one iteration asks of the elements: the state update, and a determination with resisting
/// and damping forces. In a disk job the update is an exchange of files.
void dynamic_step(benchmark::State& state) {
  const Model model(static_cast<int>(state.range(0)), state.range(1) != 0 ? 0.01 : 0.0);
  for (auto _ : state) {
    take_over_states();
    determine_states({arrays.VT, arrays.AT, arrays.VD, elements_damp() ? arrays.DAMP : 0});
  }
  tell_rate(state);
}
BENCHMARK(dynamic_step)
    ->ArgNames({"KSTOR", "damped"})
    ->Args({1, 0})
    ->Args({1, 1})
    ->Args({2, 0})
    ->Unit(benchmark::kMillisecond)
    ->MinTime(1.0);

/// The pass of an assembly in which no element is due: a core job looks at each, a disk job copies its tail.
void stiffness_pass(benchmark::State& state) {
  const Model model(static_cast<int>(state.range(0)));
  form_element_matrices(0, true, 0, [](const ElementMatrix&) {});
  for (auto _ : state) form_element_matrices(0, false, 0, [](const ElementMatrix&) {});
  tell_rate(state);
}
BENCHMARK(stiffness_pass)->ArgName("KSTOR")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->MinTime(0.5);

}  // namespace
}  // namespace tidearc

BENCHMARK_MAIN();
