// BFGS updates of the right-hand side. K = diag(4, 3, 2) is the factored stiffness.
#include "solve/bfgs.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "run/tapefile.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solver_fixture.h"

namespace tidearc {
namespace {

using Vector3 = std::array<double, 3>;

class UpdatePairs : public test::SolverProblem {
 protected:
  UpdatePairs() {
    number_nodes(1, 3);
    carve_analysis_arrays();
    forget_pairs();
  }

  static void store(Vector3 f, Vector3 s) { store_pair({f.data(), 3}, {s.data(), 3}); }

  /// v behind both passes around a solve with K.
  static Vector3 solved(Vector3 v, UpdateSlot slot = UpdateSlot::unbalance) {
    const Reals view(v.data(), 3);
    update_before_solve(view, slot);
    v = {v[0] / 4.0, v[1] / 3.0, v[2] / 2.0};
    update_after_solve(view, slot);
    return v;
  }

  static void expect_near(const Vector3& a, const Vector3& b, double tolerance = 1e-14) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(a[i], b[i], tolerance) << i;
  }
};

TEST_F(UpdatePairs, TheForceChangeOfAPairIsSolvedByItsDisplacementChange) {
  const Vector3 f{5.0, 1.0, -2.0};  // new minus old internal forces
  const Vector3 s{1.0, 0.5, -0.25};
  store(f, s);
  expect_near(solved(f), s);
}

TEST_F(UpdatePairs, OfTheOppositeSignWouldTurnTheDisplacementRound) {
  // A pair of old minus new forces maps the force change to -s: that sign of f cannot work.
  const Vector3 f{5.0, 1.0, -2.0};
  store({-5.0, -1.0, 2.0}, {1.0, 0.5, -0.25});
  expect_near(solved(f), {-1.0, -0.5, 0.25});
}

TEST_F(UpdatePairs, TheNewestOfSeveralIsMetExactly) {
  store({5.0, 1.0, -2.0}, {1.0, 0.5, -0.25});
  const Vector3 f{1.0, 4.0, 1.0};
  const Vector3 s{0.25, 1.0, 0.5};
  store(f, s);
  EXPECT_EQ(bfgs.NBFGS, 2);
  expect_near(solved(f), s);
}

TEST_F(UpdatePairs, TheUpdatedInverseStaysSymmetric) {
  store({5.0, 1.0, -2.0}, {1.0, 0.5, -0.25});
  store({1.0, 4.0, 1.0}, {0.25, 1.0, 0.5});
  std::array<Vector3, 3> column;
  for (std::size_t j = 0; j < 3; ++j) {
    Vector3 unit{};
    unit[j] = 1.0;
    column[j] = solved(unit);
  }
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < i; ++j) EXPECT_NEAR(column[j][i], column[i][j], 1e-14);
}

TEST_F(UpdatePairs, WithoutPairsASolveIsThatOfTheStiffness) { expect_near(solved({4.0, 3.0, 2.0}), {1.0, 1.0, 1.0}); }

TEST_F(UpdatePairs, EachVectorHasCoefficientsOfItsOwn) {
  const Vector3 f{5.0, 1.0, -2.0};
  const Vector3 s{1.0, 0.5, -0.25};
  store(f, s);
  Vector3 v = f;
  Vector3 other{1.0, 1.0, 1.0};
  update_before_solve({v.data(), 3}, UpdateSlot::unbalance);
  update_before_solve({other.data(), 3}, UpdateSlot::reference);
  v = {v[0] / 4.0, v[1] / 3.0, v[2] / 2.0};
  update_after_solve({v.data(), 3}, UpdateSlot::unbalance);
  expect_near(v, s);
}

TEST_F(UpdatePairs, AZeroEntryLeavesTheVectorAlone) {
  store({5.0, 0.0, -2.0}, {1.0, 0.0, -0.25});  // equation 2 is prescribed
  Vector3 v{1.0, 0.125, 1.0};
  update_before_solve({v.data(), 3}, UpdateSlot::unbalance);
  EXPECT_EQ(v[1], 0.125);
  update_after_solve({v.data(), 3}, UpdateSlot::unbalance);
  EXPECT_EQ(v[1], 0.125);
}

TEST_F(UpdatePairs, AtRightAnglesAreNotStored) {
  store({1.0, 0.0, 0.0}, {0.0, 1.0, 0.0});
  EXPECT_EQ(bfgs.NBFGS, 0);
  store({1.0, 0.0, 0.0}, {1.0, 1.0, 0.0});
  EXPECT_EQ(bfgs.NBFGS, 1);
  EXPECT_EQ(bfgs.RHO[0], 1.0);
}

TEST_F(UpdatePairs, MoreThanTwentyAreNotStored) {
  for (int i = 0; i < 20; ++i) store({1.0, 1.0, 1.0}, {1.0, 1.0, 1.0});
  EXPECT_EQ(bfgs.NBFGS, 20);
  const Vector3 before = solved({1.0, 2.0, 3.0});
  store({5.0, 1.0, -2.0}, {1.0, 0.5, -0.25});
  EXPECT_EQ(bfgs.NBFGS, 20);
  expect_near(solved({1.0, 2.0, 3.0}), before, 0.0);
}

TEST_F(UpdatePairs, TheFirstPairAfterAFactorisationBeginsTheFileAnew) {
  store({5.0, 1.0, -2.0}, {1.0, 0.5, -0.25});
  store({1.0, 4.0, 1.0}, {0.25, 1.0, 0.5});
  forget_pairs();
  store({1.0, 2.0, 3.0}, {3.0, 2.0, 1.0});
  EXPECT_EQ(bfgs.NBFGS, 1);
  Vector3 record{};
  FILE(units.NT14, "REWI");
  FILE(units.NT14, "READ", 6, record.data());
  EXPECT_EQ(record, (Vector3{1.0, 2.0, 3.0}));
  FILE(units.NT14, "READ", 6, record.data());
  EXPECT_EQ(record, (Vector3{3.0, 2.0, 1.0}));
  EXPECT_EQ(test::stop_of([&] { FILE(units.NT14, "READ", 6, record.data()); }), 2) << "two records, no more";
}

}  // namespace
}  // namespace tidearc
