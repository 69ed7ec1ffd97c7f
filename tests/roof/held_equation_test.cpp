// Prescribed equations over a state that has forces: they move by what is imposed and by nothing else.
//
// Two bars of EA/L 100 in a row from a fixed node 1; the first has an initial force of 0.3. Node 2 is held, at level l
// at 0.01 l times the factor of its pattern, and node 3 is pulled by l: the second bar bears l, so node 3 stands 0.01 l
// farther than node 2. The initial force goes into the support.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "run_deck.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

TrussDeck pretensioned_row() {
  TrussDeck deck = nodes_in_a_row(20.0);
  deck.material(1000);
  deck.section(1);
  deck.bar(1, 2, 1, 1, 0, 0, 0.3);
  deck.bar(2, 3);
  deck.pattern(3, 1.0, 0, 0);
  deck.prescribe(2, 1, 0.01);
  return deck;
}

/// Steps of half of the load, or of about that much displacement.
SegmentCards segment_of(int KSTEP, int KNMS, double imposed) {
  SegmentCards cards;
  cards.KSTEP = KSTEP;
  cards.KNMS = KNMS;
  cards.STEP0 = 0.5;
  cards.NSTEPS = 20;
  cards.MAXIT = 1;
  cards.pfactors = {imposed};
  if (KNMS == 2) cards.SEGVAL = 0.01;
  if (KNMS == 3) {
    cards.NSVEC = 1;
    cards.vectors = vector_cards(3, 1, 1.0, 0.01);
  }
  return cards;
}

void expect_imposed(const SegmentCards& cards, double imposed) {
  TrussDeck deck = pretensioned_row();
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_NEAR(run.accumulated, 1.0, 1e-12);
  EXPECT_NEAR(run.U.at(0), 0.01 * imposed, 1e-14);
  EXPECT_NEAR(run.U.at(1), 0.01 * imposed + 0.01, 1e-14);
  const std::vector<TrussRow> bars = truss_rows(run.report);
  EXPECT_NEAR(bars.at(0).force, 0.3 + imposed, 1e-4);
  EXPECT_NEAR(bars.at(1).force, 1.0, 1e-4);
  for (const ProgressRow& row : progress_rows(run.progress)) EXPECT_EQ(row.unbalance, 0.0) << "they have none";
}

TEST(HeldEquations, MoveByWhatIsImposedInLoadSteps) {
  for (const double imposed : {0.0, 1.0, -2.0}) {
    SCOPED_TRACE(imposed);
    expect_imposed(segment_of(1, 0, imposed), imposed);
  }
}

TEST(HeldEquations, MoveByWhatIsImposedInDisplacementSteps) {
  for (const int KNMS : {1, 2, 3}) {
    for (const double imposed : {0.0, 1.0}) {
      SCOPED_TRACE("KNMS " + std::to_string(KNMS) + ", factor " + std::to_string(imposed));
      expect_imposed(segment_of(2, KNMS, imposed), imposed);
    }
  }
}

// The second segment begins with forces of the first, the third is a macro of its own.
TEST(HeldEquations, StayInLaterSegmentsToo) {
  TrussDeck deck = pretensioned_row();
  SegmentCards back = segment_of(2, 1, 0.0);
  back.factors = {-1.0};
  deck.stat({segment_of(2, 1, 1.0), back});
  deck.stat({segment_of(2, 1, 0.0)});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_NEAR(run.U.at(0), 0.01, 1e-14);
  EXPECT_NEAR(run.U.at(1), 0.02, 1e-14);
}

}  // namespace
}  // namespace tidearc::test
