// Lift of type 27 in whole runs: what the cards hand to the wake, what the records keep, that steps done again leave no
// trace.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "elements/beam/vortex.h"
#include "elements/contract/types.h"
#include "frame_deck.h"
#include "run/layout.h"
#include "run/stops.h"
#include "support/scratch.h"

namespace tidearc::test {
namespace {

TEST(WakeLaw, TakesEveryFieldOfTheCards) {
  VortexControl v{};
  v.KMOTN = 1;
  v.nnc = 2;
  v.iseed = 3;
  v.nbuf = 4;
  v.strouhal = 5.0;
  v.cl0 = 6.0;
  v.cd0 = 7.0;
  v.trampb = 8.0;
  v.trampl = 9.0;
  v.timrwl = 10.0;
  v.alpha = 11.0;
  v.cutoff = 12.0;
  v.blokfac = 13.0;
  v.arguments = 2;
  v.columns = 3;
  v.argument[1] = 14.0;
  v.coefficient[5] = 15.0;
  const WakeLaw law = wake_law(v);
  EXPECT_EQ(law.KMOTN, 1);
  EXPECT_EQ(law.nnc, 2);
  EXPECT_EQ(law.iseed, 3);
  EXPECT_EQ(law.nbuf, 4);
  const double found[9] = {law.strouhal, law.cl0,   law.cd0,    law.trampb, law.trampl,
                           law.timrwl,   law.alpha, law.cutoff, law.blokfac};
  for (int i = 0; i < 9; ++i) EXPECT_EQ(found[i], 5.0 + i);
  ASSERT_EQ(law.argument.size(), 2u);
  EXPECT_EQ(law.argument[1], 14.0);
  EXPECT_EQ(law.columns, 3);
  ASSERT_EQ(law.coefficient.size(), 6u);
  EXPECT_EQ(law.coefficient[5], 15.0);
}

TEST(VortexBeam, WordsOfTheSeaHoldLoadsAndWakeAndEndInTheFirstPortion) {
  const ElementType& type = element_type(27);
  const int first = type.sea_word - 1, end = first + type.sea_words;
  EXPECT_LE(first, words(offsetof(LargeBeam, KTOLD)));
  EXPECT_GE(end, words(offsetof(VortexBeamRecord, wake) + sizeof(WakeState)));
  EXPECT_LE(end, type.LFIX);
}

/// A pile of type 27 on a bar across the current, which has a mass at its head: it vibrates in its own lift.
std::string shedding_pile(const std::string& storage, const std::string& macro) {
  std::string t = " STAR   P4.314  A PILE\n\n\n" + storage + "\n";
  t += format("13I5", 4, 4, 0, 0, 0, 0, 2, 0, 1, 2, 1, 0, 0) + "\n";
  t += "   -Z             0.  10.05525     1.025    0    0      9.81\n";
  t += "    1        0.        0.      -30.\n    2        0.        0.      -10.\n";
  t += "    3        0.      -10.      -30.\n    4        0.      -10.      -10.\n";
  t += "    1    101111    2\n    3    111111    4\n    1                 20.                                          "
       "       2    1\n";
  t += "   27    1    1        0.        0.     PILE\n    1    1    4    1         2    0\n";
  t += "    0    4        .2        .8        .6        0.        1.        0.        0.        .4        42        0. "
       " 400\n"
       "    0    0\n\n";
  t +=
      "    1          1.0E6      0.25\n\n    1             1.        0.        0.     1.E-6     1.E-6        1.\n"
      "        .5        1.        2.        0.        0.\n\n    1    1    2    0    0    1    1    0    0    0    2\n";
  t += "    1    2    1        0.        0.     BARS\n    1    1    0\n    1    1000.0\n\n    1        1.\n\n"
       "    1    3    1    1    1\n    2    4    2    1    1\n";
  t += "    0    0    0    0    0\n    0    0    0    0    0    0    1    0\n";
  t += "    3    1    0    1        0.    0        0.        0.    0    0\n"
       "    1    2    0        0.                                                      1\n        0.\n"
       "        0.        1.        0.        0.       1.5\n       50.        1.        0.        0.       1.5\n";
  return t + "   -1   -1   -1\n" + macro + "NONE\n STOP\n";
}

std::string dyn2(int steps) {
  return "DYN2    STEPS\n       .02        0.        0.        0.\n" + format("I6", steps) +
         "   0    0    0    0   50   50    0    0    0    0    0    0\n   10    1    0    1    0     1.E-8    0    0   "
         " 0    0\n";
}

TEST(VortexLift, IsTheSameInCoreAndOnDisk) {
  const RunResult core = run_deck(shedding_pile(" CORE SYMM         0", dyn2(500)));
  const RunResult disk = run_deck(shedding_pile(" DISK SYMM        20", dyn2(500)));
  EXPECT_EQ(core.status, status_good) << core.errors;
  double largest = 0.0;
  for (int print = 0; print < 10; ++print) {
    const double y = displacement(core.report, " Y", 2, print);
    EXPECT_EQ(y, displacement(disk.report, " Y", 2, print)) << print;
    largest = std::max(largest, std::abs(y));
  }
  EXPECT_GT(largest, 1e-3);
}

TEST(VortexLift, AMacroThatGoesOnGoesOnInTheSameWake) {
  const RunResult whole = run_deck(shedding_pile(" CORE SYMM         0", dyn2(400)));
  const RunResult parts = run_deck(shedding_pile(" CORE SYMM         0", dyn2(200) + dyn2(200)));
  EXPECT_EQ(whole.status, status_good);
  for (int print = 0; print < 8; ++print) {
    const double y = displacement(whole.report, " Y", 2, print);
    EXPECT_NEAR(displacement(parts.report, " Y", 2, print), y, 1e-6 * std::abs(y)) << print;
  }
}

}  // namespace
}  // namespace tidearc::test
