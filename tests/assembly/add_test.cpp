// Element matrices into the profile: the two forms against the full matrix that they stand for.
#include "assembly/add.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace tidearc {
namespace {

constexpr int NEQ = 12;

// A full profile of NEQ equations.
struct FullProfile {
  std::vector<int> IDIAG;
  std::vector<double> A;
  FullProfile() : A(NEQ * (NEQ + 1) / 2, 0.0) {
    for (int c = 1; c <= NEQ; ++c) IDIAG.push_back(c * (c + 1) / 2);
  }
  Profile<double> view() { return {{A.data(), static_cast<int>(A.size())}, {IDIAG.data(), NEQ}, NEQ}; }
};

ConstIntegers view(const std::vector<int>& v) { return {v.data(), static_cast<int>(v.size())}; }
std::size_t at(int i) { return static_cast<std::size_t>(i); }

// A symmetric matrix of small integers (so that sums are exact) in both forms.
struct Element {
  int ND;
  std::vector<double> full, packed;
  Element(std::mt19937& random, int freedoms) : ND(freedoms), full(at(ND * ND)) {
    for (int i = 0; i < ND; ++i) {
      for (int j = i; j < ND; ++j) {
        const double value = static_cast<double>(random() % 19) - 9.0;
        full[at(j * ND + i)] = full[at(i * ND + j)] = value;
        packed.push_back(value);  // upper triangle by rows
      }
    }
  }
};

TEST(AddElement, PutsBothFormsWhereTheCongruenceOfItsLocationVectorSays) {
  std::mt19937 random(5);
  for (int trial = 0; trial < 500; ++trial) {
    const Element element(random, 1 + trial % 12);
    std::vector<int> LM;  // repeats, 0, negative entries and the sink included
    for (int i = 0; i < element.ND; ++i) LM.push_back(static_cast<int>(random() % (NEQ + 3)) - 1);
    // K = T^T k T with T(i, e) = 1 where freedom i is equation e.
    std::vector<double> expected(NEQ * NEQ, 0.0);
    for (int i = 0; i < element.ND; ++i) {
      for (int j = 0; j < element.ND; ++j) {
        const int a = LM[at(i)], b = LM[at(j)];
        if (a < 1 || a > NEQ || b < 1 || b > NEQ) continue;
        expected[at((b - 1) * NEQ + a - 1)] += element.full[at(j * element.ND + i)];
      }
    }
    FullProfile from_full, from_packed;
    EXPECT_TRUE(ADDSYM(view(LM), element.full.data(), from_full.view()));
    EXPECT_TRUE(ADDSYP(view(LM), element.packed.data(), from_packed.view()));
    for (int b = 1; b <= NEQ; ++b) {
      for (int a = 1; a <= b; ++a) ASSERT_EQ(from_full.view().column(b)(a), expected[at((b - 1) * NEQ + a - 1)]);
    }
    EXPECT_EQ(from_packed.A, from_full.A);
  }
}

TEST(AddElement, WithTiedFreedomsPutsBothOffDiagonalPairsOnTheDiagonal) {
  // Two freedoms of one spring on the same equation: 3 - 3 - 3 + 3 = 0, a rigid tie has no stiffness.
  const std::vector<double> spring{3.0, -3.0, -3.0, 3.0};
  FullProfile K;
  K.A[at(K.IDIAG[4] - 1)] = 7.0;
  ADDSYM(view({5, 5}), spring.data(), K.view());
  EXPECT_EQ(K.view().diagonal(5), 7.0);
}

TEST(AddElement, WithoutEquationsChangesNothing) {
  const std::vector<double> spring{3.0, -3.0, -3.0, 3.0};
  FullProfile K;
  EXPECT_TRUE(ADDSYM(view({0, NEQ + 1}), spring.data(), K.view()));
  EXPECT_EQ(K.A, std::vector<double>(K.A.size(), 0.0));
}

TEST(AddElement, TellsOfAnEntryOutsideTheProfile) {
  const std::vector<double> spring{3.0, -3.0, -3.0, 3.0};
  const std::vector<int> IDIAG{1, 2};  // two equations that were said to stand alone
  std::vector<double> A{0.0, 0.0};
  EXPECT_FALSE(ADDSYM(view({1, 2}), spring.data(), {{A.data(), 2}, {IDIAG.data(), 2}, 2}));
  EXPECT_FALSE(ADDSYP(view({1, 2}), spring.data(), {{A.data(), 2}, {IDIAG.data(), 2}, 2}));
}

TEST(LowestEquation, IsTheSmallestInside) {
  EXPECT_EQ(lowest_equation(view({0, 9, 4, NEQ + 1, -3}), NEQ), 4);
  EXPECT_EQ(lowest_equation(view({0, NEQ + 1}), NEQ), NEQ + 1);
}

}  // namespace
}  // namespace tidearc
