// The passes that leave states as they are, over trusses. Bars of EA/L 100 with hardening 0.1 and a yield stress of 1.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "elements/contract/pass.h"
#include "model.h"
#include "model/control.h"
#include "run/workpool.h"
#include "solve/arrays.h"

namespace tidearc::test {
namespace {

/// Nodes 1 and 2 are free in X; bars 1-2 and 2-3 of 10 each.
std::vector<ModelNode> two_bars_in_line() { return {{20, 0, 0, "X"}, {10, 0, 0, "X"}, {0, 0, 0, ""}}; }
std::string two_bar_cards(int KGEOM = 0) {
  TrussGroupText text;
  text.ratio = 0.1;
  text.tension = 1.0;
  text.NUMEL = 2;
  text.NFIRST = 8;
  text.BETAO = 0.5;
  text.BETAT = 0.25;
  text.elements = ElementText{.number = 8, .I = 1, .J = 2, .KGEOM = KGEOM}.card() +
                  ElementText{.number = 9, .I = 2, .J = 3, .KGEOM = KGEOM}.card();
  return text.cards();
}
std::vector<Word> both_records() {
  const Word* first = pool.words(storage.KEDAT, 2 * 359);
  return {first, first + 2 * 359};
}

// Bar 8 is stretched by 0.005 already, half of its yield extension of 0.01; the increment stretches it by 0.01 and bar
// 9 by 0.03. Bar 8 yields at 0.5, bar 9 at 1/3, both passed by 1E-6 of the yield extension.
TEST(TrussPasses, TheFirstYieldOfAllBarsIsTheEvent) {
  for (const int KGEOM : {0, 1}) {
    Model model(two_bars_in_line(), two_bar_cards(KGEOM));
    model.build();
    model.set_displacement(1, 1, 0.005);
    determine_states();
    const std::vector<Word> before = both_records();
    const Reals increment = equation_vector(arrays.WORK);
    increment(1) = 0.04;
    increment(2) = 0.03;
    const FirstEvent found = first_event(arrays.WORK);
    EXPECT_NEAR(found.EFAC, 1.0 / 3.0 + 1.0e-8 / 0.03, 1e-12);
    EXPECT_EQ(found.IEVT, 2);
    EXPECT_EQ(found.IGRP, 1);
    EXPECT_EQ(found.IMEM, 9);
    EXPECT_EQ(both_records(), before);
    increment(1) = 0.002;
    increment(2) = 0.001;
    EXPECT_EQ(first_event(arrays.WORK).EFAC, 1.0);
  }
}

TEST(TrussPasses, ResistingForcesAreThoseOfTheLastDetermination) {
  Model model(two_bars_in_line(), two_bar_cards());
  model.build();
  model.set_displacement(1, 1, 0.03);
  model.set_displacement(2, 1, 0.005);
  determine_states();  // bar 8 by 0.025: 0.9 + 0.25; bar 9 by 0.005: 0.5
  const std::vector<Word> before = both_records();
  equation_vector(arrays.U)(1) = 0.0;
  sum_dynamic_forces(0.0, 0.0, 0, 0, {.resisting = arrays.WORK});
  EXPECT_NEAR(equation_vector(arrays.WORK)(1), 1.15, 1e-13);
  EXPECT_NEAR(equation_vector(arrays.WORK)(2), 0.5 - 1.15, 1e-13);
  EXPECT_EQ(both_records(), before);
}

// Bar 8 has yielded: 0.5 * 100 + 0.25 * 10 = 52.5; bar 9 has not: 75. Velocities 2 and 0, accelerations 0 and 4.
TEST(TrussPasses, DynamicForcesAreStiffnessProportional) {
  Model model(two_bars_in_line(), two_bar_cards());
  model.build();
  model.set_displacement(1, 1, 0.03);
  model.set_displacement(2, 1, 0.005);
  determine_states();
  const std::vector<Word> before = both_records();
  equation_vector(arrays.VEL)(1) = 2.0;
  equation_vector(arrays.ACC)(2) = 4.0;
  sum_dynamic_forces(0.5, 0.25, arrays.VEL, arrays.ACC,
                     {.effective = arrays.WORK, .resisting = arrays.BFGS1, .damping = arrays.BFGS2});
  // Bar 8: 52.5 (1.5 * 2 - 0.25 * 4); bar 9: 75 * 0.25 * 4.
  EXPECT_NEAR(equation_vector(arrays.WORK)(1), 105.0, 1e-10);
  EXPECT_NEAR(equation_vector(arrays.WORK)(2), 75.0 - 105.0, 1e-10);
  EXPECT_NEAR(equation_vector(arrays.BFGS1)(1), 1.15, 1e-13);
  EXPECT_NEAR(equation_vector(arrays.BFGS2)(1), 105.0, 1e-10);
  EXPECT_NEAR(equation_vector(arrays.BFGS2)(2), -105.0, 1e-10);
  EXPECT_EQ(both_records(), before);
}

}  // namespace
}  // namespace tidearc::test
