// Every bit of the solver against the plain loop, with every table of loops that this machine can run.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "plain_factor.h"
#include "profile_systems.h"
#include "solve/factor.h"
#include "solve/kernels.h"

namespace tidearc {
namespace {

using test::ProfileSystem;
using test::Random;
using test::random_int;
using test::random_real;

std::size_t at(int i) { return static_cast<std::size_t>(i); }
ConstIntegers view(const std::vector<int>& v) { return {v.data(), static_cast<int>(v.size())}; }
Reals view(std::vector<double>& v) { return {v.data(), static_cast<int>(v.size())}; }

bool same_bits(const std::vector<double>& a, const std::vector<double>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

// Tables of loops, each in use for as long as it is walked through.
template <class Act>
void with_every_kernel(Act&& act) {
  const UsableKernels usable = usable_kernels();
  const Kernels* const chosen = kernels;
  for (int i = 0; i < usable.count; ++i) {
    kernels = usable.table[i];
    act();
  }
  kernels = chosen;
}

// Columns of nodes, as a frame has them: `size` equations that start at one row.
ProfileSystem node_profile(Random& random, int n, int size, int tallest) {
  ProfileSystem system;
  system.n = n;
  int address = 0, top = 1;
  for (int e = 1; e <= n; ++e) {
    if ((e - 1) % size == 0) top = std::max(1, e - size * random_int(random, 0, tallest / size));
    address += e - top + 1;
    system.IDIAG.push_back(address);
  }
  system.A.assign(at(address), 0.0);
  return system;
}

struct Case {
  ProfileSystem system;
  std::vector<int> status, MSTAT;
};

Case random_case(Random& random, int trial) {
  const int n = random_int(random, 1, trial % 16 == 0 ? 300 : 60);
  const int tallest = trial % 3 == 0 ? n : random_int(random, 1, n);
  Case c;
  c.system = trial % 5 < 2 ? test::random_profile(random, n, tallest)
                           : node_profile(random, n, trial % 5 == 2 ? 3 : 6, tallest);
  trial % 2 == 0 ? test::fill_dominant(c.system, random, 0.4) : test::fill_definite(c.system, random);
  c.status = test::random_status(random, n, trial % 8);
  c.MSTAT = test::links_by_definition(c.status);
  return c;
}

// Values of a factor of earlier times in the columns before KFIRST and in the rows before KROW0, as a tail finds them.
void make_tail(Case& c, int KFIRST, int KROW0) {
  ProfileSystem factor = c.system;
  test::plain_factor(factor, c.status, 1, 1);
  for (int e = 1; e <= c.system.n; ++e) {
    for (int r = c.system.top(e); r <= e; ++r) {
      if (e < KFIRST || r < KROW0) c.system.entry(r, e) = factor.entry(r, e);
    }
  }
}

TEST(Bits, OfEveryFactorAreThoseOfThePlainLoop) {
  Random random(31);
  for (int trial = 0; trial < 1600; ++trial) {
    Case c = random_case(random, trial);
    const int n = c.system.n;
    const int KFIRST = trial % 3 == 0 ? 1 : random_int(random, 1, n);
    const int KROW0 = trial % 2 == 0 ? KFIRST : random_int(random, 1, KFIRST);
    make_tail(c, KFIRST, KROW0);
    ProfileSystem plain = c.system;
    ASSERT_EQ(test::plain_factor(plain, c.status, KFIRST, KROW0).column, 0);
    with_every_kernel([&] {
      std::vector<double> values = c.system.A;
      ASSERT_EQ(reduce_symmetric(c.system.view(values), view(c.MSTAT), KFIRST, KROW0).equation, 0);
      ASSERT_TRUE(same_bits(values, plain.A))
          << kernels->name << " trial " << trial << " n " << n << " KFIRST " << KFIRST << " KROW0 " << KROW0;
    });
  }
}

TEST(Bits, OfSmallSystemsForEveryFirstColumnAndRow) {
  Random random(32);
  for (int trial = 0; trial < 24; ++trial) {
    const int n = random_int(random, 1, 16);
    for (int KFIRST = 1; KFIRST <= n; ++KFIRST) {
      for (int KROW0 = 1; KROW0 <= KFIRST; ++KROW0) {
        Case c;
        c.system = test::random_profile(random, n, random_int(random, 1, n));
        test::fill_dominant(c.system, random, 0.4);
        c.status = test::random_status(random, n, trial % 8);
        c.MSTAT = test::links_by_definition(c.status);
        make_tail(c, KFIRST, KROW0);
        ProfileSystem plain = c.system;
        test::plain_factor(plain, c.status, KFIRST, KROW0);
        with_every_kernel([&] {
          std::vector<double> values = c.system.A;
          reduce_symmetric(c.system.view(values), view(c.MSTAT), KFIRST, KROW0);
          ASSERT_TRUE(same_bits(values, plain.A)) << kernels->name << " n " << n << " " << KFIRST << " " << KROW0;
        });
      }
    }
  }
}

// A matrix cut into stretches of columns, each with addresses and values of its own.
struct Stretches {
  std::vector<int> first, IDIAG;
  std::vector<std::vector<double>> values;

  Stretches(Random& random, const ProfileSystem& system, int longest) : IDIAG(at(system.n)) {
    for (int c = 1; c <= system.n;) {
      const int last = std::min(system.n, c + random_int(random, 1, longest) - 1);
      const int from = c == 1 ? 0 : system.IDIAG[at(c - 2)];
      first.push_back(c);
      values.emplace_back(system.A.begin() + from, system.A.begin() + system.IDIAG[at(last - 1)]);
      for (; c <= last; ++c) IDIAG[at(c - 1)] = system.IDIAG[at(c - 1)] - from;
    }
    first.push_back(system.n + 1);
  }
  Profile<double> view(int i) {
    std::vector<double>& v = values[at(i)];
    return {{v.data(), static_cast<int>(v.size())},
            {IDIAG.data(), static_cast<int>(IDIAG.size())},
            first[at(i + 1)] - 1,
            first[at(i)]};
  }
  int count() const { return static_cast<int>(values.size()); }
  std::vector<double> joined() const {
    std::vector<double> all;
    for (const auto& v : values) all.insert(all.end(), v.begin(), v.end());
    return all;
  }
};

TEST(Bits, OfAMatrixInStretchesAreThoseOfThePlainLoop) {
  Random random(33);
  for (int trial = 0; trial < 600; ++trial) {
    Case c = random_case(random, trial);
    const int n = c.system.n;
    const int KFIRST = trial % 3 == 0 ? 1 : random_int(random, 1, n);
    const int KROW0 = trial % 2 == 0 ? KFIRST : random_int(random, 1, KFIRST);
    make_tail(c, KFIRST, KROW0);
    ProfileSystem plain = c.system;
    test::plain_factor(plain, c.status, KFIRST, KROW0);
    const Stretches cut(random, c.system, random_int(random, 1, n));
    with_every_kernel([&] {
      Stretches blocks = cut;
      std::vector<double> D(at(n));
      const ReductionRange range{view(c.MSTAT), view(D), KFIRST, KROW0};
      for (int i = 0; i < blocks.count(); ++i) {
        for (int j = 0; j < i; ++j) reduce_against(blocks.view(i), blocks.view(j), range);
        ASSERT_EQ(reduce_within(blocks.view(i), range).equation, 0);
      }
      ASSERT_TRUE(same_bits(blocks.joined(), plain.A))
          << kernels->name << " trial " << trial << " n " << n << " KFIRST " << KFIRST << " KROW0 " << KROW0;
      for (int e = 1; e <= n; ++e) ASSERT_EQ(D[at(e - 1)], plain.entry(e, e));
    });
  }
}

// Either sign, an exponent in this range, and often digits just above a power of two.
double sized_real(Random& random, int least, int most) {
  const double digits = 1.0 + random_real(random, 0.0, 1.0) * (random_int(random, 0, 3) == 0 ? 0x1p-50 : 1.0);
  return std::ldexp(random_int(random, 0, 1) == 0 ? digits : -digits, random_int(random, least, most));
}

// Sizes at which a reciprocal would leave the range of normal numbers, signed zeros, and quotients that are hard to
// round: the two sides divide in different ways and agree in every bit.
TEST(Bits, OfQuotientsOfAnySize) {
  Random random(34);
  const auto sized = [&](int least, int most) { return sized_real(random, least, most); };
  for (int trial = 0; trial < 800; ++trial) {
    // One row above columns of their own: L(1, c) = a / d, and nothing else happens but to the diagonals.
    ProfileSystem system{17, {}, {}};
    const int wide = trial % 4 == 0 ? 1000 : trial % 4 == 1 ? 460 : 40;
    system.A.push_back(sized(-wide, wide));
    system.IDIAG.push_back(1);
    for (int c = 2; c <= 17; ++c) {
      for (int r = 1; r <= c; ++r) system.A.push_back(r == c ? 1.0 : r > 1 ? 0.0 : sized(-wide, wide));
      if (random_int(random, 0, 9) == 0) system.entry(1, c > 2 ? c - 1 : 1) *= c > 2 ? 0.0 : 1.0;
      system.IDIAG.push_back(static_cast<int>(system.A.size()));
    }
    const std::vector<int> status(17, 0), MSTAT(17, -17);
    ProfileSystem plain = system;
    test::plain_factor(plain, status, 1, 1);
    with_every_kernel([&] {
      std::vector<double> values = system.A;
      reduce_symmetric(system.view(values), view(MSTAT), 1, 1);
      for (std::size_t i = 0; i < values.size(); ++i) {
        if (std::isnan(plain.A[i])) continue;  // overflown diagonals further down: which NaN is nobody's business
        ASSERT_EQ(std::memcmp(&values[i], &plain.A[i], sizeof(double)), 0)
            << kernels->name << " trial " << trial << ": " << values[i] << " " << plain.A[i];
      }
    });
  }
}

// g / d that lies next to the middle of two numbers: with d odd and x its inverse modulo 2^54, d x = 2^54 g + 1, so
// that g / d differs from x / 2^54, which has one bit too many, by one part in 2^106. No quotient comes closer.
TEST(Bits, OfTheQuotientsThatAreHardestToRound) {
  Random random(38);
  for (int trial = 0; trial < 500; ++trial) {
    const std::uint64_t d = (random() >> 11) | (std::uint64_t{1} << 52) | 1;
    std::uint64_t x = d;  // Newton's iteration doubles the bits that are right
    for (int k = 0; k < 6; ++k) x *= 2 - d * x;
    x &= (std::uint64_t{1} << 54) - 1;
    if (x < std::uint64_t{1} << 53) x = (std::uint64_t{1} << 54) - x;  // then d x = 2^54 g - 1
    const long double product = std::ldexp(static_cast<long double>(d), -54) * static_cast<long double>(x);
    const double g = static_cast<double>(std::round(product));
    ProfileSystem system{9, {1}, {static_cast<double>(d)}};
    for (int c = 2; c <= 9; ++c) {
      for (int r = 1; r <= c; ++r) system.A.push_back(r == c ? 1.0 : r > 1 ? 0.0 : std::ldexp(c % 2 == 0 ? g : -g, c));
      system.IDIAG.push_back(static_cast<int>(system.A.size()));
    }
    const std::vector<int> status(9, 0), MSTAT(9, -9);
    ProfileSystem plain = system;
    test::plain_factor(plain, status, 1, 1);
    with_every_kernel([&] {
      std::vector<double> values = system.A;
      reduce_symmetric(system.view(values), view(MSTAT), 1, 1);
      ASSERT_TRUE(same_bits(values, plain.A)) << kernels->name << " trial " << trial;
    });
  }
}

TEST(Bits, OfSolutionsAreThoseOfThePlainLoop) {
  Random random(35);
  for (int trial = 0; trial < 800; ++trial) {
    Case c = random_case(random, trial);
    ProfileSystem factor = c.system;
    test::plain_factor(factor, c.status, 1, 1);
    std::vector<double> loads(at(c.system.n));
    const int from = trial % 3 == 0 ? random_int(random, 1, c.system.n) : 1;
    for (int e = from; e <= c.system.n; ++e) loads[at(e - 1)] = random_real(random, -1.0, 1.0);
    std::vector<double> plain = loads;
    test::plain_solve(factor, c.status, plain);
    with_every_kernel([&] {
      std::vector<double> x = loads;
      solve_symmetric(factor.view(), view(c.MSTAT), view(x));
      ASSERT_TRUE(same_bits(x, plain)) << kernels->name << " trial " << trial << " n " << c.system.n;
    });
  }
}

// Frames of many nodes: pairs of columns of every difference of height, free as a whole or but for a few equations, and
// longer than the caches that a solution counts on.
TEST(Bits, OfSolutionsOfLargeFrames) {
  Random random(39);
  for (int trial = 0; trial < 24; ++trial) {
    const int size = trial % 4 == 3 ? 3 : 6, n = size * random_int(random, 40, 160);
    ProfileSystem factor = node_profile(random, n, size, trial % 3 == 0 ? 60 : n);
    for (double& value : factor.A) value = random_real(random, -0.02, 0.02);
    for (int e = 1; e <= n; ++e) factor.entry(e, e) = random_real(random, 0.5, 2.0);
    std::vector<int> status(at(n), 0);
    for (int k = trial % 2 == 0 ? 0 : 3; k > 0; --k) status[at(random_int(random, 0, n - 1))] = 1;
    const std::vector<int> MSTAT = test::links_by_definition(status);
    std::vector<double> loads(at(n));
    for (int e = trial % 5 == 0 ? n / 3 : 1; e <= n; ++e) loads[at(e - 1)] = random_real(random, -1.0, 1.0);
    std::vector<double> plain = loads;
    test::plain_solve(factor, status, plain);
    with_every_kernel([&] {
      std::vector<double> x = loads;
      solve_symmetric(factor.view(), view(MSTAT), view(x));
      ASSERT_TRUE(same_bits(x, plain)) << kernels->name << " trial " << trial << " n " << n;
    });
  }
}

TEST(Bits, OfManySolutionsAreThoseOfOneAfterTheOther) {
  Random random(37);
  for (int trial = 0; trial < 400; ++trial) {
    Case c = random_case(random, trial);
    const int n = c.system.n, count = trial < 64 ? trial % 32 + 1 : random_int(random, 1, most_loads);
    ProfileSystem factor = c.system;
    test::plain_factor(factor, c.status, 1, 1);
    std::vector<double> loads(at(n * count)), plain(at(n * count));
    for (int j = 0; j < count; ++j) {
      std::vector<double> one(at(n));
      const int from = random_int(random, 0, 2) > 0 ? random_int(random, 1, n) : 1;
      for (int e = from; e <= n; ++e)
        one[at(e - 1)] = random_int(random, 0, 4) > 0 ? random_real(random, -1.0, 1.0) : 0.0;
      for (int e = 0; e < n; ++e) loads[at(count * e + j)] = one[at(e)];
      test::plain_solve(factor, c.status, one);
      for (int e = 0; e < n; ++e) plain[at(count * e + j)] = one[at(e)];
    }
    with_every_kernel([&] {
      std::vector<double> x = loads;
      solve_many(factor.view(), view(c.MSTAT), view(x), count);
      ASSERT_TRUE(same_bits(x, plain)) << kernels->name << " trial " << trial << " n " << n << " count " << count;
    });
  }
}

TEST(Bits, OfManyLoadsOverPivotsOfAnySize) {
  Random random(40);
  for (int trial = 0; trial < 400; ++trial) {
    const int n = 9, count = random_int(random, 8, most_loads),
              wide = trial % 3 == 0   ? 1000
                     : trial % 3 == 1 ? 460
                                      : 40;
    ProfileSystem factor{n, {}, {}};
    for (int e = 1; e <= n; ++e) {
      factor.A.push_back(sized_real(random, -wide, wide));
      factor.IDIAG.push_back(e);
    }
    std::vector<double> loads(at(n * count));
    for (double& load : loads) load = sized_real(random, -wide, wide) * (random_int(random, 0, 9) == 0 ? 0.0 : 1.0);
    for (int j = 0; j < count; ++j) loads[at(j)] = 1.0;  // all begin at the first row
    const std::vector<int> MSTAT(at(n), -n);
    with_every_kernel([&] {
      std::vector<double> x = loads;
      solve_many(factor.view(), view(MSTAT), view(x), count);
      for (int e = 1; e <= n; ++e) {
        for (int j = 0; j < count; ++j) {
          const double quotient = loads[at(count * (e - 1) + j)] / factor.entry(e, e);
          ASSERT_EQ(std::memcmp(&x[at(count * (e - 1) + j)], &quotient, sizeof(double)), 0)
              << kernels->name << " trial " << trial << " row " << e << ": " << quotient;
        }
      }
    });
  }
}

// The plain loop names the row at which it stops; so does every kernel, however many pivots are zero.
TEST(Bits, TheSameZeroPivotIsMet) {
  Random random(36);
  int met = 0;
  for (int trial = 0; trial < 600; ++trial) {
    Case c = random_case(random, trial);
    const int n = c.system.n;
    for (int k = random_int(random, 1, 4); k > 0; --k) {  // rows and columns of zeros
      const int e = random_int(random, 1, n);
      for (int r = c.system.top(e); r <= e; ++r) c.system.entry(r, e) = 0.0;
      for (int j = e + 1; j <= n; ++j) {
        if (c.system.top(j) <= e) c.system.entry(e, j) = 0.0;
      }
    }
    ProfileSystem plain = c.system;
    const test::PlainStop stop = test::plain_factor(plain, c.status, 1, 1);
    met += stop.column != 0 ? 1 : 0;
    const Stretches cut(random, c.system, random_int(random, 1, n));
    with_every_kernel([&] {
      std::vector<double> values = c.system.A;
      const ZeroPivot zero = reduce_symmetric(c.system.view(values), view(c.MSTAT), 1, 1);
      ASSERT_EQ(zero.equation, stop.row) << kernels->name << " trial " << trial;
      ASSERT_EQ(zero.address, stop.row == 0 ? 0 : c.system.IDIAG[at(stop.row - 1)]);
      Stretches blocks = cut;
      std::vector<double> D(at(n));
      const ReductionRange range{view(c.MSTAT), view(D), 1, 1};
      int row = 0;
      for (int i = 0; i < blocks.count() && row == 0; ++i) {
        for (int j = 0; j < i; ++j) reduce_against(blocks.view(i), blocks.view(j), range);
        row = reduce_within(blocks.view(i), range).equation;
      }
      ASSERT_EQ(row, stop.row) << kernels->name << " trial " << trial << " in stretches";
    });
  }
  EXPECT_GT(met, 150);
}

TEST(Kernels, ThePlainTableRunsEverywhere) {
  const UsableKernels usable = usable_kernels();
  ASSERT_GT(usable.count, 0);
  EXPECT_STREQ(usable.table[usable.count - 1]->name, "plain");
  EXPECT_EQ(kernels, usable.table[0]);
}

}  // namespace
}  // namespace tidearc
