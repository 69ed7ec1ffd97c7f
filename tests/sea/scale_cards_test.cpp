// The wave force magnification cards.
#include "sea/scale_input.h"
#include "wave_section.h"

namespace tidearc::test {
namespace {

std::string deck(const std::string& NORAMP, const std::string& cards) {
  WaveControl control{"3"};
  control.NORAMP = NORAMP;
  return control.card() + cards;
}

TEST(ForceScale, IsReadAndPrintedUnderItsHead) {
  WaveSection m(deck("3", tens({"1.", "0.5"}) + tens({"2.", "1."}) + tens({"-4.", "1.5E3"})));
  WAVEIN();
  EXPECT_EQ(wave.NORAMP, 3);
  EXPECT_EQ(force_scale.time[0], 1.0);
  EXPECT_EQ(force_scale.multiplier[0], 0.5);
  EXPECT_EQ(force_scale.time[2], -4.0);  // times are not checked
  EXPECT_EQ(force_scale.multiplier[2], 1500.0);
  EXPECT_EQ(force_scale.index, 0);
  EXPECT_TRUE(
      m.reports(" ***** WAVE FROCE MAGNIFICATION DATA *****\n"
                "    TIME     MULTIPLIER\n"
                "   1.0000       0.50000\n"
                "   2.0000        1.0000\n"
                "  -4.0000        1500.0\n"))
      << m.report();
  EXPECT_EQ(m.times_reported("MAGNIFICATION DATA"), 1);
}

TEST(ForceScale, HasNoCardsForACountBelowOne) {
  for (const std::string NORAMP : {"", "0", "-5"}) {
    WaveSection m(deck(NORAMP, tens({"1.", "0.5"})));
    WAVEIN();
    EXPECT_EQ(deck_line(), 1);
    EXPECT_FALSE(m.reports("MAGNIFICATION"));
    EXPECT_EQ(force_scale.index, 0);
  }
}

TEST(ForceScale, HasRoomForAllRowsThatPass) {
  WaveSection over("");
  EXPECT_EQ(stop_of([] { read_force_scale(100001); }), status_fatal);
  EXPECT_TRUE(over.reports(error_box("NORAMP CANNOT EXCEED 10000"))) << over.report();
  std::string cards;
  for (int i = 0; i < 100000; ++i) cards += "        1.        2.\n";
  WaveSection at(cards);
  EXPECT_EQ(stop_of([] { read_force_scale(100000); }), std::nullopt);
  EXPECT_EQ(force_scale.multiplier[99999], 2.0);
  EXPECT_FALSE(at.reports("CANNOT EXCEED"));
}

TEST(ForceScale, MayHaveMoreRowsThanItsMessageSays) {
  std::string cards;
  for (int i = 0; i < 10001; ++i) cards += "        1.        2.\n";
  WaveSection m(deck("10001", cards));
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
  EXPECT_EQ(force_scale.multiplier[10000], 2.0);
}

TEST(ForceScale, ThatEndsTooEarlyStopsInTheInputLayer) {
  WaveSection m(deck("2", tens({"1.", "0.5"})));
  EXPECT_EQ(stop_of(WAVEIN), status_io);
}

TEST(ForceScale, ComesBehindTheCardsOfTheWave) {
  WaveControl control{"1"};
  control.NORAMP = "1";
  WaveSection m(control.card() + RegularWave{}.cards() + tens({"3.", "4."}));
  WAVEIN();
  EXPECT_EQ(force_scale.time[0], 3.0);
  EXPECT_LT(m.report().find("WAVE CELERITY"), m.report().find("MAGNIFICATION"));
}

}  // namespace
}  // namespace tidearc::test
