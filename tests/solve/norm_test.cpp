// Norms of unbalance and load, the largest unbalances, and the search for values that are not finite.
#include "solve/norm.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "model/nodes.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/solve.h"
#include "solver_fixture.h"

namespace tidearc::test {
namespace {

/// Two nodes with their first eight freedoms numbered: translations 1 to 3, rotations 4 to 6 of node 1, then two
/// translations of node 2.
class Norms : public SolverProblem {
 protected:
  Norms() {
    number_nodes(2, 8);
    make_full_profile();
    for (int e = 1; e <= 8; ++e) {
      equation_vector(arrays.RU)(e) = e == 4 ? -100.0 : e;
      equation_vector(arrays.P)(e) = e == 5 ? 50.0 : 1.0;
      equation_vector(arrays.R)(e) = 0.0;
      set_entry(e, e, 4.0);
    }
  }
};

TEST_F(Norms, LookAtTranslationsAloneOrAtMomentsToo) {
  EXPECT_EQ(unbalance_norm({0, 0}).unbalance, 8.0);
  EXPECT_EQ(unbalance_norm({0, 0}).applied, 1.0);
  EXPECT_EQ(unbalance_norm({0, 1}).unbalance, 100.0);
  EXPECT_EQ(unbalance_norm({0, 1}).applied, 50.0);
}

TEST_F(Norms, EuclideanAndWeighted) {
  const double sum = 1.0 + 4.0 + 9.0 + 49.0 + 64.0;
  EXPECT_DOUBLE_EQ(unbalance_norm({1, 0}).unbalance, std::sqrt(sum));
  EXPECT_DOUBLE_EQ(unbalance_norm({1, 0}).applied, std::sqrt(5.0));
  EXPECT_DOUBLE_EQ(unbalance_norm({2, 0}).unbalance, std::sqrt(sum / 4.0 / (5.0 / 4.0)));
  EXPECT_EQ(unbalance_norm({2, 0}).applied, 0.0);
}

TEST_F(Norms, ANumberThatIsNoneSpoilsEveryNorm) {
  equation_vector(arrays.RU)(2) = std::numeric_limits<double>::quiet_NaN();
  for (const int KUTYPE : {0, 1, 2}) EXPECT_FALSE(std::isfinite(unbalance_norm({KUTYPE, 0}).unbalance));
}

TEST_F(Norms, TheFirstBadEquationIsThatOfTheFirstBadVector) {
  EXPECT_EQ(first_bad_equation({arrays.RU, arrays.P}), 0);
  equation_vector(arrays.P)(2) = std::numeric_limits<double>::infinity();
  EXPECT_EQ(first_bad_equation({arrays.RU, arrays.P}), 2);
  equation_vector(arrays.RU)(7) = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(first_bad_equation({arrays.RU, arrays.P}), 7);
}

TEST_F(Norms, TheLargestUnbalancesComeByFallingMagnitudeLowerEquationsFirst) {
  equation_vector(arrays.RU)(1) = -8.0;
  open_unbalance_list();
  write_largest_unbalances(3);
  flush_formatted(UNIT_TOP);
  EXPECT_EQ(scratch.contents("TAP32"),
            "    1    4   -1.00000E+02\n"
            "    1    1   -8.00000E+00\n"
            "    2    2    8.00000E+00\n");
}

}  // namespace
}  // namespace tidearc::test
