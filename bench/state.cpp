// State determination of elastic trusses for a model beyond the caches, beside a plain loop that only moves the
// records.
//
// The model is a square lattice of bars whose records are laid directly into the work array and onto the reference
// file.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "elements/contract/pass.h"
#include "elements/contract/walk.h"
#include "elements/truss/geometry.h"
#include "elements/truss/law.h"
#include "elements/truss/record.h"
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
  Word* record = pool.words(storage.KEDAT + truss_stride * (number - 1), truss_stride);
  std::memcpy(record, record_words(), sizeof(TrussRecord));
  FILE(units.NT12, "WRIT", group.LFIX, record_words());
}

void make_records() {
  group = {};
  group.ITYPE = 1;
  group.NUMEL = bars;
  const ElementType& type = element_type(1);
  group.NDOF = type.NDOF;
  group.LFIX = type.LFIX;
  group.LTAN = type.LTAN;
  group.LAUX = type.LAUX;
  group.LEI = type.LFIX + type.LTAN + type.LAUX;
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

/// Laid down once, by the first benchmark.
void lay_down_model() {
  if (storage.MSTOR > 0) return;
  pool.allocate(200000000);
  storage.NEXT = 1;
  place_nodes();
  carve_analysis_arrays();
  storage.KEDAT = storage.NEXT;
  make_records();
  for (int e = 1; e <= sizes.NEQ; ++e) equation_vector(arrays.U)(e) = 1.0e-6 * (e % 17);
}

void tell_rate(benchmark::State& state) {
  state.counters["elements/s"] = benchmark::Counter(static_cast<double>(bars) * static_cast<double>(state.iterations()),
                                                    benchmark::Counter::kIsRate);
}

void state_determination(benchmark::State& state) {
  lay_down_model();
  for (auto _ : state) determine_states();
  tell_rate(state);
}
BENCHMARK(state_determination)->Unit(benchmark::kMillisecond)->MinTime(1.0);

/// The least that a determination moves: first portions from the reference, through a block, into the pool.
void moving_the_records(benchmark::State& state) {
  lay_down_model();
  const std::size_t bytes = bytes_of_words(element_type(1).LFIX);
  std::vector<Word> reference(static_cast<std::size_t>(bars) * 314, 1);
  std::vector<Word> block(314);
  for (auto _ : state) {
    for (int i = 0; i < bars; ++i) {
      std::memcpy(block.data(), reference.data() + static_cast<std::size_t>(i) * 314, bytes);
      benchmark::DoNotOptimize(block.data());
      benchmark::ClobberMemory();
      std::memcpy(pool.words(storage.KEDAT + truss_stride * i, 314), block.data(), bytes);
    }
  }
  tell_rate(state);
  // The pool holds the copy now; the model is made again by whoever comes next.
  pool.release();
  storage = {};
  close_all_tapes();
}
BENCHMARK(moving_the_records)->Unit(benchmark::kMillisecond)->MinTime(1.0);

/// A state update: every first portion back onto the reference file.
void taking_over(benchmark::State& state) {
  lay_down_model();
  for (auto _ : state) take_over_states();
  tell_rate(state);
}
BENCHMARK(taking_over)->Unit(benchmark::kMillisecond)->MinTime(1.0);

}  // namespace
}  // namespace tidearc

BENCHMARK_MAIN();
