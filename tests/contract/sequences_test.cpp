// Random sequences of passes over random groups, beside a model in memory that knows no records, files or generations
// of files, and the same sequence in every scheme word for word.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "elements/contract/group.h"
#include "elements/contract/pass.h"
#include "elements/contract/state_log.h"
#include "elements/contract/stiffness.h"
#include "elements/contract/walk.h"
#include "fake_types.h"
#include "lattice.h"
#include "model/nodes.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

constexpr int node_count = 4;
constexpr int equations = 3 * (node_count - 1);
using Random = std::mt19937;

int below(Random& random, int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }

enum class Kind { spring, block, latch };

/// What evolves: x is the first difference of a spring, the displacement of the others.
struct State {
  double x = 0.0;
  double largest = 0.0;
  int code = 0;
  int moves = 0;
};

struct Element {
  Kind kind;
  int number;
  int node_i, node_j;
  State reference{}, current{}, kept_reference{}, kept_current{};
  int KSTIF = 1;
  int last_code = -1;
  double delivered = 0.0;
  int formed = 0;
};

double x_of(int node, const std::vector<double>& u) {
  return node == node_count ? 0.0 : u[static_cast<std::size_t>(3 * (node - 1))];
}

double stiffness(const Element& e) {
  if (e.kind == Kind::spring) return e.current.code == 1 ? 50.0 : 100.0;
  return e.kind == Kind::block ? 11.0 : e.current.x;
}

/// Forces in X on the nodes of elements that went from their kept states through an increment.
std::vector<double> midstep_forces(const std::vector<Element>& elements, const std::vector<double>& du) {
  std::vector<double> R(node_count + 1);
  for (const Element& e : elements) {
    double x = e.kept_current.x + x_of(e.node_i, du);
    if (e.kind == Kind::spring) {
      x -= x_of(e.node_j, du);
      const double force = (x > 1.0 ? 50.0 : 100.0) * x;
      R[static_cast<std::size_t>(e.node_i)] += force;
      R[static_cast<std::size_t>(e.node_j)] -= force;
    } else {
      R[static_cast<std::size_t>(e.node_i)] += e.kind == Kind::block ? x : 2.0 * x;
    }
  }
  return R;
}

/// The same model in a handful of lines.
struct Model {
  std::vector<Element> elements;
  std::vector<double> U = std::vector<double>(equations), U0 = U, kept_U = U;
  std::vector<int> log, waiting;  ///< element numbers: final records, and those since the last state update
  std::size_t kept_log = 0;
  int NELCHK = 1;

  void determine() {
    waiting.clear();
    NELCHK = solver.KRESET == 0 ? 0 : NELCHK;
    for (std::size_t i = 0; i < elements.size(); ++i) {
      Element& e = elements[i];
      move(e);
      if (e.KSTIF != 0) NELCHK = std::max(NELCHK, static_cast<int>(i) + 1);
    }
  }
  void move(Element& e) {
    State s = e.reference;
    s.x += x_of(e.node_i, U) - x_of(e.node_i, U0);
    ++s.moves;
    if (e.kind == Kind::spring) {
      s.x -= x_of(e.node_j, U) - x_of(e.node_j, U0);
      s.code = s.x > 1.0 ? 1 : 0;
      s.largest = std::max(s.largest, s.x);
      if (s.code != e.reference.code) waiting.push_back(e.number);
      e.KSTIF = s.code == e.last_code ? 0 : 1;
    } else if (e.kind == Kind::block) {
      e.KSTIF = 0;
    } else if (std::abs(s.x) > 1.0) {
      e.KSTIF = 1;
    }
    e.current = s;
  }
  void take_over() {
    U0 = U;
    for (Element& e : elements) e.reference = e.current;
    log.insert(log.end(), waiting.begin(), waiting.end());
    waiting.clear();
  }
  void save() {
    kept_U = U0;
    kept_log = log.size();
    for (Element& e : elements) {
      e.kept_reference = e.reference;
      e.kept_current = e.current;
    }
  }
  void recover() {
    U0 = kept_U;
    U = kept_U;
    log.resize(kept_log);
    waiting.clear();
    for (Element& e : elements) {
      e.reference = e.kept_reference;
      e.current = e.kept_current;
    }
  }
  /// First diagonal entries of what is delivered, and for whom.
  std::vector<double> form(bool reset, int until) {
    std::vector<double> delivered;
    for (std::size_t i = 0; i < elements.size(); ++i) {
      Element& e = elements[i];
      if (!reset && (static_cast<int>(i) + 1 > until || e.KSTIF == 0)) continue;
      const bool difference = e.kind == Kind::spring && !reset;
      delivered.push_back(e.number);
      delivered.push_back(stiffness(e) - (difference ? e.delivered : 0.0));
      e.delivered = stiffness(e);
      e.last_code = e.current.code;
      e.KSTIF = 0;
      ++e.formed;
    }
    return delivered;
  }
  void restart_envelopes() {
    take_over();
    for (Element& e : elements) {
      if (e.kind == Kind::spring) e.current.largest = e.reference.largest = e.current.x;
    }
  }
};

/// Random groups, some without elements; their cards, and the model's elements.
std::string random_groups(Random& random, int& groups, Model& model) {
  std::string cards;
  groups = 1 + below(random, 5);
  int number = 1;
  for (int g = 0; g < groups; ++g) {
    const auto kind = static_cast<Kind>(below(random, 3));
    const int count = below(random, 4);
    const int node = 1 + below(random, node_count - 1);
    constexpr std::array<int, 3> types = {1, 11, 13};
    cards += group_card(types[static_cast<std::size_t>(kind)], count, number);
    if (kind != Kind::spring) cards += node_card(node);
    for (int i = 0; i < count; ++i, ++number) {
      const int other = 1 + (node + below(random, node_count - 1)) % node_count;
      if (kind == Kind::spring) cards += spring_card(number, node, other);
      model.elements.push_back({kind, number, node, kind == Kind::spring ? other : 0});
    }
  }
  return cards;
}

/// One sequence in the scheme of the line: every observation as words, so that schemes can be compared.
class Sequence {
 public:
  Sequence(unsigned seed, bool with_log) : random_(seed), with_log_(with_log) {
    int groups = 0;
    const std::string cards = random_groups(random_, groups, model_);
    Line line(node_count, cards, groups);
    if (with_log) open_log();
    line.build();
    solver.KRESET = 1;
    solver.NELCHK = 1;
    for (int i = 0; i < 40; ++i) {
      act(below(random_, 10));
      compare_records();
      if (testing::Test::HasFailure()) return;
    }
    take_over();
    compare_log();
  }
  std::vector<Word> seen;

 private:
  /// As a static macro does.
  static void open_log() {
    const Word header = 0;
    open_tape(UNIT_STATE_LOG, "OVRLOAD", true);
    FILE(UNIT_STATE_LOG, "WRIT", 1, &header);
    FILE(UNIT_STATE_LOG, "REWI");
  }

  void act(int action) {
    trail_ += " " + std::to_string(action);
    if (action <= 2) {
      determine();
    } else if (action == 3) {
      take_over();
    } else if (action == 4) {
      form(below(random_, 4) == 0 || solver.KRESET == 1);
    } else if (action == 5) {
      save();
    } else if (action == 6) {
      if (kept_) recover();
    } else if (action == 7) {
      restart_element_envelopes();
      model_.restart_envelopes();
      put_U0();
    } else if (action == 8) {
      if (kept_) go_half_way();
    } else {
      read_only();
    }
  }

  void determine() {
    for (int e = 1; e <= equations; ++e) {
      const double u = 0.5 * (below(random_, 9) - 4);
      equation_vector(arrays.U)(e) = u;
      model_.U[static_cast<std::size_t>(e - 1)] = u;
    }
    equation_vector(arrays.VD)(1 + below(random_, equations)) = below(random_, 9);
    determine_states({.damped = arrays.VD, .damping = arrays.DAMP});
    model_.determine();
    EXPECT_EQ(solver.NELCHK, model_.NELCHK) << trail_;
    note_vectors(arrays.R, arrays.DAMP);
  }
  void go_half_way() {
    std::vector<double> du(equations);
    for (int node = 1; node < node_count; ++node) {
      const int e = 3 * (node - 1) + 1;
      equation_vector(arrays.BFGS1)(e) = du[static_cast<std::size_t>(e - 1)] = 0.5 * (below(random_, 9) - 4);
    }
    determine_midstep(arrays.BFGS1, arrays.VD, arrays.BFGS2, arrays.DAMP);
    const std::vector<double> R = midstep_forces(model_.elements, du);
    for (int node = 1; node < node_count; ++node)
      EXPECT_EQ(equation_vector(arrays.BFGS2)(3 * (node - 1) + 1), R[static_cast<std::size_t>(node)]) << trail_;
    note_vectors(arrays.BFGS2, arrays.DAMP);
  }
  void put_U0() {
    for (int e = 1; e <= equations; ++e) {
      equation_vector(arrays.U0)(e) = model_.U0[static_cast<std::size_t>(e - 1)];
      equation_vector(arrays.U)(e) = model_.U[static_cast<std::size_t>(e - 1)];
    }
  }
  void take_over() {
    take_over_states();
    model_.take_over();
    put_U0();
  }
  void form(bool reset) {
    std::vector<double> delivered;
    const int until = below(random_, 3) == 0 ? below(random_, 4) : solver.NELCHK;
    form_element_matrices(0, reset, until, [&](const ElementMatrix& m) {
      delivered.push_back(record_words()[0]);
      delivered.push_back(m.EMAT[0]);
    });
    EXPECT_EQ(delivered, model_.form(reset, until)) << trail_;
    solver.KRESET = 0;
    for (const double value : delivered) note(value);
  }
  /// As a step does it, with records of its own behind the states.
  void save() {
    save_states();
    kept_mark_ = static_cast<Word>(random_() % 1000);
    FILE(units.NT15, "WRIT", 1, &kept_mark_);
    FILE(units.NT15, "WRIT", 2 * NEQ1(), equation_vector(arrays.U0).data());
    kept_ = true;
    model_.save();
  }
  void recover() {
    recover_states();
    Word mark = 0;
    FILE(units.NT15, "READ", 1, &mark);
    EXPECT_EQ(mark, kept_mark_) << trail_;
    FILE(units.NT15, "READ", 2 * NEQ1(), equation_vector(arrays.U0).data());
    model_.recover();
    EXPECT_EQ(equation_vector(arrays.U0)(1), model_.U0[0]) << trail_;
    put_U0();
  }
  void read_only() {
    clear_vector(arrays.BFGS1);
    equation_vector(arrays.BFGS1)(1) = 1.0;
    note(first_event(arrays.BFGS1).EFAC);
    sum_dynamic_forces(0.0, 0.0, 0, 0, {.resisting = arrays.WORK});
    for (int e = 1; e <= equations; ++e) note(equation_vector(arrays.WORK)(e));
    print_elements();
  }

  void note_vectors(int first, int second) {
    for (int e = 1; e <= equations; ++e) {
      note(equation_vector(first)(e));
      note(equation_vector(second)(e));
    }
  }
  void note(double value) {
    std::array<Word, 2> words;
    std::memcpy(words.data(), &value, sizeof value);
    seen.insert(seen.end(), words.begin(), words.end());
  }

  void compare_records() {
    const std::vector<std::vector<Word>> records = records_at_hand();
    ASSERT_EQ(records.size(), model_.elements.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
      seen.insert(seen.end(), records[i].begin(), records[i].end());
      compare(records[i], model_.elements[i]);
    }
    calls.clear();
  }
  void compare(const std::vector<Word>& words, const Element& e) const {
    EXPECT_EQ(words[0], e.number) << trail_;
    EXPECT_EQ(words[1], e.KSTIF) << trail_ << " element " << e.number;
    if (e.kind == Kind::spring) {
      FakeSpring r;
      std::memcpy(&r, words.data(), sizeof r);
      EXPECT_EQ(r.difference[0], e.current.x) << trail_;
      EXPECT_EQ(r.largest, e.current.largest) << trail_;
      EXPECT_EQ(r.code, e.current.code) << trail_;
      EXPECT_EQ(r.last_code, e.last_code) << trail_;
      EXPECT_EQ(r.tangent[0], e.delivered) << trail_;
    } else if (e.kind == Kind::latch) {
      FakeLatch r{};
      std::memcpy(&r, words.data(), words.size() * sizeof(Word));
      EXPECT_EQ(r.displacement, e.current.x) << trail_;
      EXPECT_EQ(r.moves, e.current.moves) << trail_;
      EXPECT_EQ(r.filler[684], e.current.moves) << trail_;
      EXPECT_EQ(r.formed, e.formed) << trail_;
    }
  }
  void compare_log() {
    if (!with_log_) return;
    FILE(UNIT_STATE_LOG, "REWI");
    FILE(UNIT_STATE_LOG, "SKIP", 1);
    std::vector<int> numbers;
    for (std::size_t i = 0; i < model_.log.size(); ++i) numbers.push_back(next_record(UNIT_STATE_LOG)[1]);
    EXPECT_EQ(numbers, model_.log) << trail_;
    EXPECT_TRUE(stop_of([] { next_record(UNIT_STATE_LOG); }).has_value()) << "and nothing behind them";
  }

  Random random_;
  bool with_log_;
  Model model_;
  bool kept_ = false;
  Word kept_mark_ = 0;
  std::string trail_;
};

TEST(Sequences, AreTheModelsInEverySchemeAndTheSameWordForWord) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::vector<std::vector<Word>> seen;
    // Files in the folder cost more; they take part in every tenth sequence.
    for (const Scheme scheme : {Scheme::core, Scheme::stream, Scheme::disk}) {
      if (scheme == Scheme::disk && seed % 10 != 0) continue;
      Line::scheme = scheme;
      seen.push_back(Sequence(seed, seed % 2 == 0).seen);
      EXPECT_EQ(seen.back() == seen.front(), true) << "words differ from those of the core job";
      if (testing::Test::HasFailure()) break;
    }
    Line::scheme = Scheme::core;
    if (testing::Test::HasFailure()) return;
  }
}

}  // namespace
}  // namespace tidearc::test
