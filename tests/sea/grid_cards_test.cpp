// Cards of the grid wave, the head of its file, and its groups through the steps of an analysis.
#include <cmath>
#include <tuple>

#include "grid_section.h"

namespace tidearc::test {
namespace {

std::string line(const std::string& label, const std::string& value) {
  std::string text = "        " + label;
  text.resize(8 + 44, ' ');
  return text + std::string(10 - value.size(), ' ') + value + "\n";
}

TEST(GridCards, AreEchoedWithTheHeadOfTheFile) {
  GridSection m({.direction = {"3.", "4.", ""},
                 .highest = "8.",
                 .lowest = "-45.",
                 .print = "7",
                 .position = "3",
                 .shift = "2.5"});
  m.read();
  EXPECT_TRUE(m.reports(line("MEAN WATER DEPTH", "50.00"))) << m.report();
  EXPECT_TRUE(m.reports(line("X-COMPONENT", "0.600")));
  EXPECT_TRUE(m.reports(line("Y-COMPONENT", "0.800")));
  EXPECT_TRUE(m.reports(line("HIGHEST ELEVATION TO CALCULATE WAVE FORCE", "8.00")));
  EXPECT_TRUE(m.reports(line("LOWEST ELEVATION TO CALCULATE WAVE FORCE", "-45.00")));
  EXPECT_TRUE(m.reports(line("GRID PRINT CODE", "7")));
  EXPECT_TRUE(m.reports(line("GRID TIME POSITIONING CODE", "3")));
  EXPECT_TRUE(m.reports(line("HORIZONTAL GRID ORIGIN SHIFT", "2.50")));
  EXPECT_TRUE(m.reports("GRID FILE   grid.bin\n"));
  EXPECT_TRUE(m.reports(line("NUMBER OF HORIZONTAL GRID POINTS", "4")));
  EXPECT_TRUE(m.reports(line("NUMBER OF VERTICAL GRID POINTS", "3")));
  EXPECT_EQ(wave.upper_force, 8.0);
  EXPECT_EQ(wave.lower_force, -45.0);
  EXPECT_EQ(wave.lower_current, -45.0);
  EXPECT_EQ(wave.mudline, -50.0);
}

TEST(GridCards, TakeTheRowsOfTheGridAsLimitsWhenBlank) {
  GridSection m;
  gravity.water_level = 1.0;
  m.read();
  EXPECT_EQ(wave.upper_force, 10.0);
  EXPECT_EQ(wave.lower_force, -50.0);
  EXPECT_EQ(wave.mudline, -49.0);
  EXPECT_EQ(grid_wave.position_code, 1);
}

TEST(GridCards, ShiftTheOriginOfTheColumns) {
  GridSection m({.shift = "10."});
  m.read();
  EXPECT_EQ(grid_wave.NH, 4);
  EXPECT_EQ(grid_wave.NV, 3);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(grid_wave.X[i], grid_X[i] - 10.0);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(grid_wave.Z[i], grid_Z[i]);
}

TEST(GridCards, ReplaceADepthThatIsNotPositive) {
  for (const std::string d : {"0.", "-4."}) {
    GridSection m({.d = d});
    m.read();
    EXPECT_TRUE(m.reports(error_box("WATER DEPTH IS NOT POSITIVE")));
    EXPECT_EQ(wave.d, 1.0);
  }
}

TEST(GridCards, TellAMissingDirectionAndGoOn) {
  GridSection m({.direction = {"", "", ""}});
  m.read();
  EXPECT_TRUE(m.reports(error_box("WAVE DIRECTION IS NOT SPECIFIED")));
}

TEST(GridCards, EndTheRunWhenTheDirectionIsNotHorizontal) {
  GridSection m({.direction = {"1.", "", "1."}});
  EXPECT_EQ(stop_of([&] { m.read(); }), status_fatal);
  EXPECT_EQ(m.times_reported(error_box("WAVE DIRECTION DOES NOT LIE ON THE HORIZONTAL PLANE")), 1);
}

TEST(GridCards, TakeAFileNameWithoutTheBlanksAroundIt) {
  GridSection m({.name = "   grid.bin     "});
  m.read();
  EXPECT_EQ(file_of_binary(grid_wave.file), "grid.bin");
}

TEST(GridCards, EndTheRunWhenTheFileCannotBeOpened) {
  for (const std::string name : {"no such file.bin", ""}) {
    GridSection m({.name = name});
    EXPECT_EQ(stop_of([&] { m.read(); }), status_fatal);
    EXPECT_TRUE(m.reports("\n     FAIL TO OPEN GRID FILE\n" + trimmed("     " + name)));
  }
}

TEST(GridCards, OfAnEleventhFileFindTheTableFull) {
  GridSection m;
  for (int i = 1; i <= 10; ++i) EXPECT_EQ(open_binary("grid.bin"), i);
  EXPECT_EQ(stop_of([&] { m.read(); }), status_fatal);
  EXPECT_TRUE(m.reports("     FAIL TO OPEN GRID FILE\n     grid.bin\n"));
}

struct Counts {
  int NH, NV;
  bool accepted;
};

TEST(GridFile, HasOneToAHundredColumnsAndOneToTwoHundredRows) {
  for (const Counts& c : {Counts{1, 1, true}, Counts{100, 200, true}, Counts{0, 3, false}, Counts{101, 3, false},
                          Counts{3, 0, false}, Counts{3, 201, false}, Counts{-1, 3, false}, Counts{3, -7, false}}) {
    GridBytes bytes;
    bytes.integer(0).integer(c.NH).integer(c.NV).integer(0).real(0.0);
    for (int i = 0; i < 300; ++i) bytes.real(i < c.NH ? i : i - c.NH);
    GridSection m({}, bytes);
    EXPECT_EQ(stop_of([&] { m.read(); }), c.accepted ? std::nullopt : std::optional<int>(status_fatal))
        << c.NH << " " << c.NV;
    const std::string told = format("2I10,' SHOULD NOT BE 0 OR GREATER THAH ',2I5", c.NH, c.NV, 100, 200);
    EXPECT_EQ(m.reports("     " + told + "\n"), !c.accepted);
  }
}

TEST(GridFile, WithCoordinatesOutOfOrderEndsTheRun) {
  using Row = std::vector<double>;
  for (const auto& [X, Z, word] :
       {std::tuple{Row{0.0, 5.0, 5.0}, grid_Z, "HORIZONTAL"}, std::tuple{grid_X, Row{10.0, -20.0, -50.0}, "VERTICAL"},
        std::tuple{Row{0.0, std::nan(""), 5.0}, grid_Z, "HORIZONTAL"}}) {
    GridSection m({}, linear_grid(1, X, Z));
    EXPECT_EQ(stop_of([&] { m.read(); }), status_fatal);
    EXPECT_TRUE(m.reports("COORDINATES OF THE GRID ARE NOT IN ASCENDING ORDER"));
    EXPECT_TRUE(m.reports(word));
  }
}

TEST(GridFile, ThatEndsWithinItsHeadEndsTheRunWithItsName) {
  const std::string all = linear_grid(0).bytes();
  for (const std::size_t length : {std::size_t{0}, std::size_t{3}, std::size_t{11}, std::size_t{30}, all.size() - 1}) {
    GridSection m;
    std::ofstream("grid.bin", std::ios::binary) << all.substr(0, length);
    EXPECT_EQ(stop_of([&] { m.read(); }), status_io) << length;
    EXPECT_TRUE(m.complains("grid.bin"));
    EXPECT_TRUE(m.complains("the file ends"));
  }
}

TEST(GridFile, ThatSaysMoreColumnsThanItHasEndsTheRun) {
  GridBytes bytes;
  bytes.integer(0).integer(90).integer(2).integer(0).real(0.0);
  for (int i = 0; i < 50; ++i) bytes.real(i);
  GridSection m({}, bytes);
  EXPECT_EQ(stop_of([&] { m.read(); }), status_io);
}

// --- groups ---------------------------------------------------------------------------------------------------------

double scale_of_group() {
  WaterMotion m;
  GRDVEL({0.0, 0.0, 0.0}, 0.0, -100.0, {}, m);
  return m.velocity[0] / LinearFields{}.U(0.0, 0.0);
}

TEST(GridGroups, ComeOneForEachStep) {
  GridSection m;
  m.read();
  start_grid_steps();
  for (int step = 1; step <= 4; ++step) {
    next_grid_group(step);
    EXPECT_NEAR(scale_of_group(), step, 1e-12);
  }
  EXPECT_EQ(grid_wave.groups, 4);
}

TEST(GridGroups, StayForAStepThatIsDoneAgain) {
  GridSection m;
  m.start();
  next_grid_group(1);
  next_grid_group(1);
  EXPECT_NEAR(scale_of_group(), 1.0, 1e-12);
  next_grid_group(2);
  EXPECT_NEAR(scale_of_group(), 2.0, 1e-12);
}

TEST(GridGroups, BeforeThePositioningCodeAreDroppedOnce) {
  GridSection m({.position = "3"});
  m.read();
  start_grid_steps();
  EXPECT_EQ(grid_wave.position_code, 1);
  next_grid_group(1);
  EXPECT_NEAR(scale_of_group(), 3.0, 1e-12);
  start_grid_steps();  // the next analysis goes on in the file
  EXPECT_NEAR(scale_of_group(), 3.0, 1e-12);
  next_grid_group(1);
  EXPECT_NEAR(scale_of_group(), 4.0, 1e-12);
}

TEST(GridGroups, OfPositioningCodesBelowTwoDropNothing) {
  for (const std::string code : {"", "1", "-2"}) {
    GridSection m({.position = code});
    m.start();
    EXPECT_NEAR(scale_of_group(), 1.0, 1e-12);
  }
}

TEST(GridGroups, BeyondTheEndOfTheFileEndTheRun) {
  GridSection m({}, linear_grid(2));
  m.start();
  next_grid_group(2);
  EXPECT_EQ(stop_of([] { next_grid_group(3); }), status_io);
  EXPECT_TRUE(m.complains("grid.bin"));
}

TEST(GridGroups, ThatAreCutShortEndTheRun) {
  GridSection m;
  const std::string all = linear_grid(1).bytes();
  std::ofstream("grid.bin", std::ios::binary) << all.substr(0, all.size() - 1);
  m.read();
  EXPECT_EQ(stop_of([] { next_grid_group(1); }), status_io);
}

TEST(GridGroups, BehindTheEndCannotBeDropped) {
  GridSection m({.position = "6"});
  m.read();
  EXPECT_EQ(stop_of([] { start_grid_steps(); }), status_io);
}

TEST(GridGroups, ArePrintedAtTheStepOfThePrintCode) {
  GridSection m({.print = "2"});
  m.start();
  EXPECT_FALSE(m.reports("GRID KINEMATICS"));
  next_grid_group(2);
  EXPECT_TRUE(m.reports("GRID KINEMATICS FOR TIME STEP     2\n")) << m.report();
  EXPECT_TRUE(m.reports("COLUMN ROW      XL      ZL     ELEVATION"));
  EXPECT_TRUE(m.reports("U         V         UU        VV         P\n"));
  // Column 3 of row 2, twice the fields at x 10, z -20: surface 6, U 8.8, V -1.4, UU -7.6, VV 4.3, P 470.
  EXPECT_TRUE(
      m.reports("          3   2   10.00  -20.00         6.000     8.800    -1.400    -7.600     4.300   470.000\n"))
      << m.report();
  next_grid_group(3);
  EXPECT_EQ(m.times_reported("GRID KINEMATICS"), 1);
}

TEST(GridGroups, OfAnotherWaveTypeAreNone) {
  WaveSection m("");
  grid_wave = {};
  wave.IWTY = wave_airy;
  start_grid_steps();
  next_grid_group(1);
  EXPECT_EQ(grid_wave.groups, 0);
}

}  // namespace
}  // namespace tidearc::test
