// Which matrices elements are asked for in a dynamic analysis, and when.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "elements/contract/pass.h"
#include "elements/contract/stiffness.h"
#include "fake_types.h"
#include "lattice.h"
#include "solve/integration.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

class DampedMatrices : public EveryScheme {};
IN_EVERY_SCHEME(DampedMatrices);

/// Spring 1-2 with BETAO 0.5 and BETAT 0.25, spring 2-3 without.
std::string damped_then_undamped() {
  return group_card(1, 1) + spring_card(1, 1, 2) + undamped_group_card(1, 1) + spring_card(1, 2, 3);
}
using Factors = std::vector<std::array<double, 3>>;

std::vector<std::string> formed(int KFORM, bool reset, int NELCHK) {
  calls.clear();
  factors.clear();
  form_element_matrices(KFORM, reset, NELCHK, [](const ElementMatrix&) {});
  return calls;
}

// A2 40, AB 0.125: c1 = 0.5 * 40, c2 = 0.25 * 40 - 0.125.
TEST_P(DampedMatrices, TakeTheGroupsCoefficientsByTheConstantOfVelocity) {
  Line line(3, damped_then_undamped(), 2);
  line.build();
  integration.A2 = 40.0;
  integration.AB = 0.125;
  for (const int KFORM : {1, 2, 300}) {
    formed(KFORM, true, 0);
    const double k = KFORM;
    EXPECT_EQ(factors, (Factors{{k, 20.0, 9.875}, {k, 0.0, -0.125}}));
  }
}

TEST_P(DampedMatrices, ArePlainInAStaticAnalysisWhateverTheConstants) {
  Line line(3, damped_then_undamped(), 2);
  line.build();
  integration.A2 = 40.0;
  integration.AB = 0.125;
  for (const int KFORM : {0, -1, -50}) {
    formed(KFORM, true, 0);
    const double k = KFORM;
    EXPECT_EQ(factors, (Factors{{k, 0.0, 0.0}, {k, 0.0, 0.0}}));
  }
}

TEST_P(DampedMatrices, AreDueInTheFirstStepUntilTheMatrixHoldsThem) {
  Line line(3, damped_then_undamped(), 2);
  line.build();
  formed(0, true, 0);
  determine_states();
  ASSERT_EQ(solver.NELCHK, 0);
  EXPECT_EQ(formed(1, false, 2), (std::vector<std::string>{"form 1/1"})) << "unchanged, but damped";
  EXPECT_EQ(formed(1, false, 0), (std::vector<std::string>{})) << "behind the last that is looked at";
  EXPECT_EQ(formed(2, false, 2), (std::vector<std::string>{})) << "a later step";
  integration.NEWCON = 1;
  EXPECT_EQ(formed(1, false, 2), (std::vector<std::string>{})) << "the same step again";
}

}  // namespace
}  // namespace tidearc::test
