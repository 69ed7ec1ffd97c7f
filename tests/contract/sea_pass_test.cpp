// The pass of the sea: loads from the motion at hand, summed by equation, and the words that elements keep of them,
// which no determination, state update or going back takes away.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "elements/contract/pass.h"
#include "elements/contract/stiffness.h"
#include "fake_types.h"
#include "lattice.h"
#include "model/nodes.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

class SeaPass : public EveryScheme {};
IN_EVERY_SCHEME(SeaPass);

/// Floats 5 and 6 at node 1, a spring 1-2, float 1 at node 2, a latch at node 2; node 3 is held.
std::string floats_between_others() {
  return group_card(7, 2, 5) + "    1\n" + group_card(1, 1) + spring_card(1, 1, 2) + group_card(7, 1) + "    2\n" +
         group_card(13, 1) + "    2\n";
}
constexpr int groups = 4;

FakeFloat float_at_hand(int running) {
  const std::vector<Word> found = records_at_hand()[static_cast<std::size_t>(running - 1)];
  FakeFloat record;
  std::memcpy(&record, found.data(), sizeof(record));
  return record;
}
void put(int vector, int node, double value) { equation_vector(vector)(equation_of(node, 1)) = value; }
double at(int vector, int node) { return equation_vector(vector)(equation_of(node, 1)); }

TEST_P(SeaPass, SumsTheLoadsOfTheMotionFromZero) {
  Line line(3, floats_between_others(), groups);
  line.build();
  put(arrays.U, 1, 1.0);
  put(arrays.VEL, 1, 0.5);
  put(arrays.ACC, 2, 0.25);
  equation_vector(arrays.WAVE)(equation_of(2, 2)) = 77.0;
  form_wave_loads(3.0, false, arrays.WAVE);
  EXPECT_EQ(calls, (std::vector<std::string>{"sea 1/5", "sea 1/6", "sea 3/1"}));
  EXPECT_EQ(at(arrays.WAVE, 1), 2 * 31.5);
  EXPECT_EQ(at(arrays.WAVE, 2), 30.25);
  EXPECT_EQ(equation_vector(arrays.WAVE)(equation_of(2, 2)), 0.0);
  EXPECT_EQ(float_at_hand(1).load, 31.5);
  EXPECT_EQ(float_at_hand(4).load, 30.25);
  EXPECT_EQ(float_at_hand(1).displacement, 0.0) << "the state is not touched";
  form_wave_loads(3.0, true, arrays.WAVE);
  EXPECT_EQ(at(arrays.WAVE, 2), 1030.25);
}

TEST_P(SeaPass, TurnsMotionAndLoadsOfATurnedNode) {
  Line line(3, floats_between_others(), groups, true);  // node 1: local 1 along Y, local 2 along -X
  line.build();
  equation_vector(arrays.U)(equation_of(1, 2)) = -2.0;  // 2 along X
  form_wave_loads(1.0, false, arrays.WAVE);
  EXPECT_EQ(float_at_hand(1).load, 12.0);
  EXPECT_EQ(equation_vector(arrays.WAVE)(equation_of(1, 1)), 0.0);
  EXPECT_EQ(equation_vector(arrays.WAVE)(equation_of(1, 2)), -24.0);
}

TEST_P(SeaPass, LoadsSurviveDeterminationsStateUpdatesAndGoingBack) {
  Line line(3, floats_between_others(), groups);
  line.build();
  save_states();
  const auto expect = [&](double load, int loadings, double displacement) {
    for (const int running : {1, 2}) {
      const FakeFloat found = float_at_hand(running);
      EXPECT_EQ(found.load, load);
      EXPECT_EQ(found.loadings, loadings);
      EXPECT_EQ(found.displacement, displacement);
      EXPECT_EQ(found.words_after, 4711);
    }
  };
  form_wave_loads(1.0, false, arrays.WAVE);
  expect(10.0, 1, 0.0);
  put(arrays.U, 1, 0.5);
  determine_states();  // from a reference that was written before the load came
  expect(10.0, 1, 0.5);
  EXPECT_EQ(float_at_hand(1).load_seen, 10.0);
  line.update_state();
  form_wave_loads(2.0, false, arrays.WAVE);
  expect(20.5, 2, 0.5);
  put(arrays.U, 1, 0.75);
  determine_states();
  expect(20.5, 2, 0.75);
  EXPECT_EQ(float_at_hand(1).load_seen, 20.5);
  recover_states();
  expect(20.5, 2, 0.0);
  recover_states();
  expect(20.5, 2, 0.0);
  equation_vector(arrays.U0)(equation_of(1, 1)) = 0.0;
  determine_states();
  expect(20.5, 2, 0.75);
  restart_element_envelopes();
  expect(20.5, 2, 0.75);
}

TEST_P(SeaPass, LoadsSurviveTheStiffnessPassWhichPassesThemOver) {
  Line line(3, floats_between_others(), groups);
  line.build();
  form_wave_loads(1.0, false, arrays.WAVE);
  calls.clear();
  int matrices = 0;
  form_element_matrices(0, true, 5, [&](const ElementMatrix&) { ++matrices; });
  EXPECT_EQ(matrices, 2);
  EXPECT_EQ(calls, (std::vector<std::string>{"form 2/1", "form 4/1"}));
  EXPECT_EQ(float_at_hand(1).load, 10.0);
  EXPECT_EQ(float_at_hand(4).load, 10.0);
  determine_states();
  EXPECT_EQ(float_at_hand(4).load_seen, 10.0);
}

TEST_P(SeaPass, TakesTheLastLoadOfManyWithoutAState) {
  Line line(3, floats_between_others(), groups);
  line.build();
  for (const double time : {1.0, 2.0, 5.0}) form_wave_loads(time, false, arrays.WAVE);
  EXPECT_EQ(float_at_hand(2).load, 50.0);
  EXPECT_EQ(float_at_hand(2).loadings, 3);
  EXPECT_EQ(at(arrays.WAVE, 1), 100.0);
  put(arrays.U, 1, 0.5);
  for (int k = 0; k < 2; ++k) determine_states();
  EXPECT_EQ(float_at_hand(2).displacement, 0.5);
  EXPECT_EQ(float_at_hand(2).loadings, 3);
}

// The same words in every scheme, over a sequence of all passes.
TEST(SeaPassSequence, LeavesTheSameRecordsInEveryScheme) {
  std::vector<std::vector<std::vector<Word>>> found;
  for (const Scheme scheme : {Scheme::core, Scheme::stream, Scheme::disk}) {
    Line::scheme = scheme;
    Line line(3, floats_between_others(), groups);
    line.build();
    for (int step = 1; step <= 4; ++step) {
      if (step % 2 == 1) save_states();
      form_wave_loads(0.1 * step, false, arrays.WAVE);
      put(arrays.U, 1, 0.3 * step + at(arrays.WAVE, 1) / 3.0);
      put(arrays.VEL, 2, 0.7 / step);
      determine_states();
      if (step == 3) {
        recover_states();
        determine_states();
      }
      line.update_state();
      form_element_matrices(0, step == 1, 5, [](const ElementMatrix&) {});
    }
    found.push_back(records_at_hand());
  }
  Line::scheme = Scheme::core;
  EXPECT_EQ(found[0], found[1]);
  EXPECT_EQ(found[0], found[2]);
}

}  // namespace
}  // namespace tidearc::test
