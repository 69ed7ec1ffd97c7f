#include "fake_types.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>

#include "elements/contract/group.h"
#include "elements/contract/input.h"
#include "elements/contract/state_log.h"
#include "elements/contract/stiffness.h"
#include "model/control.h"
#include "run/layout.h"
#include "run/units.h"

namespace tidearc {
namespace test {
namespace {

void note(const char* what) {
  calls.push_back(std::string(what) + " " + std::to_string(element.IGRP) + "/" + std::to_string(record_words()[0]));
}

template <class Record>
Record& start(int number) {
  std::fill_n(record_words(), group.LEI, 0);
  Record& record = current_record<Record>();
  record.head.number = number;
  record.head.KSTIF = 1;
  return record;
}

/// One card per element: number, two nodes, stiffness.
void read_springs() {
  ElementNumbering numbering(group.NFIRST, group.NUMEL);
  while (!numbering.complete()) {
    int number = 0, I = 0, J = 0;
    double stiffness = 0.0;
    read(units.NDIN, "3I5,F10.0", number, I, J, stiffness);
    FakeSpring& spring = start<FakeSpring>(number);
    spring.NODEI = I;
    spring.NODEJ = J;
    spring.stiffness = stiffness;
    spring.last_code = -1;
    const std::array<int, 2> ends = {I, J};
    form_location_vector(ends, 3, spring.head.LM);
    lower_column_heights(spring.head.LM, 6);
    add_element_mass(I, 1.0);
    add_self_weight(I, 2.0);
    write_element_record();
    numbering.accept(number);
  }
  note("input");
}

void stretch_spring() {
  FakeSpring& spring = current_record<FakeSpring>();
  for (std::size_t c = 0; c < 3; ++c) spring.difference[c] += element.EDISP[c] - element.EDISP[c + 3];
  const int code = spring.difference[0] > 1.0 ? 1 : 0;
  if (code != spring.code) {
    StateLogRecord change{};
    change.number = spring.head.number;
    change.code = code;
    change.group = element.IGRP;
    log_state_change(change);
  }
  spring.code = code;
  if (spring.difference[0] > spring.largest) {
    spring.largest = spring.difference[0];
    spring.largest_time = element.TIME;
  }
  spring.speed = element.EVEL[0] - element.EVEL[3];
  spring.growth = element.EACC[0] - element.EACC[3];
  spring.head.KSTIF = spring.code == spring.last_code ? 0 : 1;
  note("state");
}

double spring_stiffness(const FakeSpring& spring) {
  return spring.code == 1 ? 0.5 * spring.stiffness : spring.stiffness;
}

void resist_spring() {
  const FakeSpring& spring = current_record<FakeSpring>();
  for (std::size_t c = 0; c < 3; ++c) {
    element.ERES[c] = spring_stiffness(spring) * spring.difference[c];
    element.ERES[c + 3] = -element.ERES[c];
  }
  for (std::size_t i = 0; i < 6; ++i) element.EDAMP[i] = 3.0 * element.EVEL[i];
}

MatrixForm form_spring(int KFORM, double c1, double c2, bool reset) {
  factors.push_back({static_cast<double>(KFORM), c1, c2});
  FakeSpring& spring = current_record<FakeSpring>();
  const double k = spring_stiffness(spring);
  for (std::size_t j = 0; j < 6; ++j) {
    for (std::size_t i = 0; i < 6; ++i) element.EMAT[i + 6 * j] = i == j ? k : i % 3 == j % 3 ? -k : 0.0;
  }
  deliver_change(6, reset, element.EMAT.data(), spring.tangent);
  spring.head.KSTIF = 0;
  spring.last_code = spring.code;
  note("form");
  return MatrixForm::full;
}

void damp_spring(double c1, double c2) {
  const FakeSpring& spring = current_record<FakeSpring>();
  for (std::size_t i = 0; i < 6; ++i) {
    element.EDYNF[i] = spring.stiffness * ((1.0 + c1) * element.EVEL[i] + c2 * element.EACC[i]);
  }
  note("dynamic");
}

/// Softening on the way, which would be at a first difference of 1; type 7 while it stretches, 8 while it shortens.
ElementEvent spring_event() {
  FakeSpring& spring = current_record<FakeSpring>();
  note("event");
  const double change = element.EDISP[0] - element.EDISP[3];
  const double left = 1.0 - spring.difference[0];
  spring.difference[0] += change;  // in the work block alone
  return change == 0.0 ? ElementEvent{1.0, 1} : ElementEvent{left / std::abs(change), change > 0.0 ? 7 : 8};
}

void restart_spring_envelope() {
  FakeSpring& spring = current_record<FakeSpring>();
  spring.largest = spring.difference[0];
  spring.largest_time = element.TIME;
  note("restart");
}

void print_spring_envelope() { note("envelope"); }
void print_spring() { note("print"); }

/// One card per group: the node of every element.
void read_blocks() {
  int node = 0;
  read(units.NDIN, "I5", node);
  for (int i = 0; i < group.NUMEL; ++i) {
    FakeBlock& block = start<FakeBlock>(group.NFIRST + i);
    block.head.LM[0] = node;
    lower_column_heights(block.head.LM, 6);
    write_element_record();
  }
}
void move_block() {
  current_record<FakeBlock>().displacement += element.EDISP[0];
  current_record<FakeBlock>().head.KSTIF = 0;
}
void resist_block() {
  element.ERES = {};
  element.ERES[0] = current_record<FakeBlock>().displacement;
  element.EDAMP = {};
}
/// Packed: entry (i, j), i not above j, is 10 i + j.
MatrixForm form_block(int, double, double, bool) {
  std::size_t next = 0;
  for (int i = 1; i <= 6; ++i) {
    for (int j = i; j <= 6; ++j) element.EMAT[next++] = 10 * i + j;
  }
  current_record<FakeBlock>().head.KSTIF = 0;
  note("form");
  return MatrixForm::packed;
}

/// One card per group: the node of every element.
void read_latches() {
  int node = 0;
  read(units.NDIN, "I5", node);
  for (int i = 0; i < group.NUMEL; ++i) {
    FakeLatch& latch = start<FakeLatch>(group.NFIRST + i);
    latch.head.LM[0] = node;
    lower_column_heights(latch.head.LM, 6);
    write_element_record();
  }
}
void move_latch() {
  FakeLatch& latch = current_record<FakeLatch>();
  latch.displacement += element.EDISP[0];
  ++latch.moves;
  std::fill_n(latch.filler, std::size(latch.filler), latch.moves);
  if (std::abs(latch.displacement) > 1.0) latch.head.KSTIF = 1;
}
void resist_latch() {
  element.ERES = {};
  element.ERES[0] = 2.0 * current_record<FakeLatch>().displacement;
  element.EDAMP = {};
}
MatrixForm form_latch(int, double, double, bool) {
  FakeLatch& latch = current_record<FakeLatch>();
  std::fill_n(element.EMAT.begin(), 36, 0.0);
  element.EMAT[0] = latch.displacement;
  ++latch.formed;
  std::memcpy(latch.formed_at, &latch.displacement, sizeof latch.formed_at);
  latch.head.KSTIF = 0;
  note("form");
  return MatrixForm::full;
}

/// One card per group: the node of every element.
void read_floats() {
  int node = 0;
  read(units.NDIN, "I5", node);
  for (int i = 0; i < group.NUMEL; ++i) {
    FakeFloat& floating = start<FakeFloat>(group.NFIRST + i);
    floating.head.KSTIF = 0;
    floating.words_after = 4711;
    const std::array<int, 1> nodes_of = {node};
    form_location_vector(nodes_of, 6, floating.head.LM);
    std::fill_n(floating.head.LM + 3, 3, 0);
    write_element_record();
  }
}
void move_float() {
  FakeFloat& floating = current_record<FakeFloat>();
  floating.displacement += element.EDISP[0];
  floating.load_seen = floating.load;
}
void resist_float() {
  element.ERES = {};
  element.EDAMP = {};
}
void load_float(double time, bool lines) {
  FakeFloat& floating = current_record<FakeFloat>();
  floating.load = 10.0 * time + element.EDISP[0] + element.EVEL[0] + element.EACC[0] + (lines ? 1000.0 : 0.0);
  ++floating.loadings;
  floating.displacement += 99.0;  // in the work block alone
  element.ERES = {};
  element.ERES[0] = floating.load;
  note("sea");
}

constexpr ElementOperations floating = {read_floats, move_float, resist_float, nullptr, nullptr,
                                        nullptr,     nullptr,    nullptr,      nullptr, load_float};
constexpr ElementOperations latch = {read_latches, move_latch, resist_latch, nullptr,
                                     form_latch,   nullptr,    nullptr,      nullptr};
constexpr ElementOperations spring = {read_springs,          stretch_spring, resist_spring,
                                      damp_spring,           form_spring,    spring_event,
                                      print_spring_envelope, print_spring,   restart_spring_envelope};
constexpr ElementOperations block = {read_blocks, move_block, resist_block, nullptr,
                                     form_block,  nullptr,    nullptr,      nullptr};

constexpr ElementType spring_type = {
    1, "FAKE SPRINGS", 6, spring_first, 42, 0, words(offsetof(FakeSpring, last_code)) + 1, 2, 0, 0, spring};
constexpr ElementType slip_type = {
    22, "FAKE SLIPS", 6, spring_first, 42, 0, words(offsetof(FakeSpring, last_code)) + 1, 0, 0, 0, spring};
constexpr ElementType block_type = {11, "FAKE BLOCKS", 6, words(sizeof(FakeBlock)), 0, 0, 0, 1, 0, 0, block};
constexpr ElementType latch_type = {13, "FAKE LATCHES", 6, latch_first, 2, 1, 0, 1, 0, 0, latch};
constexpr ElementType float_type = {7, "FAKE FLOATS", 6, float_first, 2, 0, 0, 0, words(offsetof(FakeFloat, load)) + 1,
                                    3, floating};
constexpr ElementType no_type = {2, "NOT BUILT", 12, 668, 156, 2, 0, 2, 0, 0, {}};

}  // namespace
}  // namespace test

const ElementType& element_type(int ITYPE) {
  if (ITYPE == 7) return test::float_type;
  if (ITYPE == 11) return test::block_type;
  if (ITYPE == 13) return test::latch_type;
  if (ITYPE == 22) return test::slip_type;
  return ITYPE >= 2 && ITYPE <= 28 ? test::no_type : test::spring_type;
}

}  // namespace tidearc
