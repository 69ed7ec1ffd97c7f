// Element matrices into the profile: the four forms against the full matrix that they stand for, in one piece and in
// stretches.
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

// Rows and columns that a location vector leaves inside: K = T^T k T with T(i, e) = 1 where freedom i is equation e.
std::vector<double> congruence(const std::vector<int>& LM, const std::vector<double>& full) {
  const std::size_t ND = LM.size();
  std::vector<double> K(NEQ * NEQ, 0.0);
  for (std::size_t i = 0; i < ND; ++i) {
    for (std::size_t j = 0; j < ND; ++j) {
      const int a = LM[i], b = LM[j];
      if (a < 1 || a > NEQ || b < 1 || b > NEQ) continue;
      K[at((b - 1) * NEQ + a - 1)] += full[j * ND + i];
    }
  }
  return K;
}

// Repeats, 0, negative entries and the sink included.
std::vector<int> random_locations(std::mt19937& random, int ND) {
  std::vector<int> LM;
  for (int i = 0; i < ND; ++i) LM.push_back(static_cast<int>(random() % (NEQ + 3)) - 1);
  return LM;
}

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
    const std::vector<int> LM = random_locations(random, element.ND);
    const std::vector<double> expected = congruence(LM, element.full);
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
  const std::vector<double> packed_spring{3.0, -3.0, 3.0};
  const std::vector<int> IDIAG{1, 2};  // two equations that were said to stand alone
  std::vector<double> A{0.0, 0.0}, B{0.0, 0.0};
  const Profile<double> upper{{A.data(), 2}, {IDIAG.data(), 2}, 2}, lower{{B.data(), 2}, {IDIAG.data(), 2}, 2};
  for (const std::vector<int>& LM : {std::vector<int>{1, 2}, std::vector<int>{2, 1}}) {
    EXPECT_FALSE(ADDSYM(view(LM), spring.data(), upper));
    EXPECT_FALSE(ADDSYP(view(LM), packed_spring.data(), upper));
    EXPECT_FALSE(ADDUNS(view(LM), spring.data(), {upper, lower}));
    EXPECT_FALSE(ADDUNP(view(LM), packed_spring.data(), {upper, lower}));
  }
}

TEST(AddElement, TellsOfAnEntryOutsideAStretch) {
  // Columns 3 and 4 of four, 1 and 2 entries high: row 2 of column 4 is not kept.
  const std::vector<double> spring{3.0, -3.0, -3.0, 3.0};
  const std::vector<int> IDIAG{1, 3, 1, 3};
  std::vector<double> A(3, 0.0), B(3, 0.0);
  const Profile<double> upper{{A.data(), 3}, {IDIAG.data(), 4}, 4, 3}, lower{{B.data(), 3}, {IDIAG.data(), 4}, 4, 3};
  EXPECT_TRUE(ADDSYM(view({3, 4}), spring.data(), upper));
  EXPECT_FALSE(ADDSYM(view({2, 4}), spring.data(), upper));
  EXPECT_FALSE(ADDUNS(view({2, 4}), spring.data(), {upper, lower}));
  EXPECT_TRUE(ADDUNS(view({1, 2}), spring.data(), {upper, lower})) << "columns 1 and 2 stand elsewhere";
}

std::vector<double> random_reals(std::mt19937& random, int count) {
  std::uniform_real_distribution<double> value(-1.0, 1.0);
  std::vector<double> values;
  for (int i = 0; i < count; ++i) values.push_back(value(random));
  return values;
}

TEST(AddUnsymmetric, PutsEntriesAboveAndBelowTheDiagonalIntoTheirTriangles) {
  std::mt19937 random(6);
  for (int trial = 0; trial < 300; ++trial) {
    const int ND = 1 + trial % 12;
    std::vector<double> full;
    for (int i = 0; i < ND * ND; ++i) full.push_back(static_cast<double>(random() % 19) - 9.0);
    const std::vector<int> LM = random_locations(random, ND);
    const std::vector<double> expected = congruence(LM, full);
    FullProfile upper, lower;
    ASSERT_TRUE(ADDUNS(view(LM), full.data(), {upper.view(), lower.view()}));
    for (int b = 1; b <= NEQ; ++b) {
      for (int a = 1; a <= b; ++a) {
        ASSERT_EQ(upper.view().column(b)(a), expected[at((b - 1) * NEQ + a - 1)]);
        ASSERT_EQ(lower.view().column(b)(a), expected[at((a - 1) * NEQ + b - 1)]);
      }
    }
  }
}

TEST(AddUnsymmetric, OfASymmetricMatrixIsTheSymmetricOneTwice) {
  std::mt19937 random(7);
  for (int trial = 0; trial < 200; ++trial) {
    const int ND = 1 + trial % 12;
    const std::vector<double> packed = random_reals(random, ND * (ND + 1) / 2);
    std::vector<double> full(at(ND * ND));
    std::size_t next = 0;
    for (int i = 0; i < ND; ++i) {
      for (int j = i; j < ND; ++j) full[at(j * ND + i)] = full[at(i * ND + j)] = packed[next++];
    }
    const std::vector<int> LM = random_locations(random, ND);
    FullProfile one, upper, lower, packed_upper, packed_lower;
    ADDSYM(view(LM), full.data(), one.view());
    ADDUNS(view(LM), full.data(), {upper.view(), lower.view()});
    ADDUNP(view(LM), packed.data(), {packed_upper.view(), packed_lower.view()});
    ASSERT_EQ(upper.A, one.A);
    ASSERT_EQ(lower.A, one.A);
    ASSERT_EQ(packed_upper.A, one.A);
    ASSERT_EQ(packed_lower.A, one.A);
  }
}

TEST(AddUnsymmetric, GivesBothTrianglesTheSameDiagonal) {
  std::mt19937 random(8);
  for (int trial = 0; trial < 100; ++trial) {
    const std::vector<double> full = random_reals(random, 64);
    FullProfile upper, lower;
    ADDUNS(view({3, 5, 3, 5, 5, 3, 1, 3}), full.data(), {upper.view(), lower.view()});
    for (int e = 1; e <= NEQ; ++e) ASSERT_EQ(upper.view().diagonal(e), lower.view().diagonal(e));
  }
}

// The columns first..last of a full profile with addresses of their own.
struct Stretch {
  int first, last;
  std::vector<int> IDIAG;
  std::vector<double> A;
  Stretch(int from, int to) : first(from), last(to), IDIAG(at(to)) {
    int address = 0;
    for (int c = first; c <= last; ++c) IDIAG[at(c - 1)] = address += c;
    A.resize(at(address), 0.0);
  }
  Profile<double> view() { return {{A.data(), static_cast<int>(A.size())}, {IDIAG.data(), last}, last, first}; }
};

TEST(AddElement, StretchByStretchGivesTheDigitsOfOnePiece) {
  std::mt19937 random(9);
  FullProfile whole, whole_lower;
  Stretch front(1, 5), back(6, NEQ), front_lower(1, 5), back_lower(6, NEQ);
  for (int trial = 0; trial < 100; ++trial) {
    const std::vector<double> full = random_reals(random, 64);
    const std::vector<int> LM = random_locations(random, 8);
    ADDUNS(view(LM), full.data(), {whole.view(), whole_lower.view()});
    EXPECT_TRUE(ADDUNS(view(LM), full.data(), {front.view(), front_lower.view()}));
    EXPECT_TRUE(ADDUNS(view(LM), full.data(), {back.view(), back_lower.view()}));
  }
  const auto joined = [](const Stretch& a, const Stretch& b) {
    std::vector<double> A = a.A;
    A.insert(A.end(), b.A.begin(), b.A.end());
    return A;
  };
  EXPECT_EQ(joined(front, back), whole.A);
  EXPECT_EQ(joined(front_lower, back_lower), whole_lower.A);
}

TEST(LowestEquation, IsTheSmallestInside) {
  EXPECT_EQ(lowest_equation(view({0, 9, 4, NEQ + 1, -3}), NEQ), 4);
  EXPECT_EQ(lowest_equation(view({0, NEQ + 1}), NEQ), NEQ + 1);
}

}  // namespace
}  // namespace tidearc
