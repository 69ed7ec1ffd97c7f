// Layouts as such: what the parser takes and refuses, and that the compiler refuses a literal that does not fit.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>

#include "run/layout.h"

namespace tidearc {
namespace {
using layout_check::layout_fits;

// The same parser serves the compiler: these lines are the test.
static_assert(layout_error("A4,4X,18A4").empty());
static_assert(layout_error("I5,3(2I5,F10.0)/,1(57X,14I5)").empty());
static_assert(layout_error("I1,98(/)").empty());
static_assert(layout_error("1P,E12.4,0P,F5.1,-2PG10.3").empty());
static_assert(layout_error("' it''s',\"say \"\"so\"\"\"").empty());
static_assert(layout_error("").empty());
static_assert(layout_error(" i5 , f10.0 ,t20 , x,a8 ").empty());

static_assert(layout_error("I5,(F10.0") == "a group is not closed");
static_assert(layout_error("I5)") == "a closing bracket too many");
static_assert(layout_error("I5,3") == "a field letter is missing");
static_assert(layout_error("' open") == "a text is not closed");
static_assert(layout_error("I") == "a field without a width");
static_assert(layout_error("I0") == "a field without a width");
static_assert(layout_error("A") == "a field without a width");
static_assert(layout_error("F10") == "a real field without decimals");
static_assert(layout_error("E10.") == "a real field without decimals");
static_assert(layout_error("Q5") == "an unknown field letter");
static_assert(layout_error("0I5") == "a count is zero");
static_assert(layout_error("0A5") == "a count is zero");
static_assert(layout_error("0(I5)") == "a count is zero");
static_assert(layout_error("-2(I5)") == "a count is negative");
static_assert(layout_error("-3I5") == "a sign before a field");
static_assert(layout_error("P") == "P without a number");
static_assert(layout_error("T") == "T without a column");
static_assert(layout_error("T0") == "T without a column");
static_assert(layout_error("((((((((I5))))))))").empty());
static_assert(layout_error("(((((((((I5)))))))))") == "groups are nested too deep");

// What a layout in a deck may ask for is bounded.
static_assert(layout_error("1000000X") == "a record is too wide");
static_assert(layout_error("1000001X") == "a count is too large");
static_assert(layout_error("99999999999999999999I5") == "a count is too large");
static_assert(layout_error("F256.10").empty());
static_assert(layout_error("F257.10") == "a field is too wide");
static_assert(layout_error("I99999999999") == "a field is too wide");
static_assert(layout_error("100000A1").empty());
static_assert(layout_error("100001A1") == "a field is too wide");
static_assert(layout_error("99999A99999") == "a field is too wide");
static_assert(layout_error("99P,F5.0").empty());
static_assert(layout_error("100P,F5.0") == "a scale factor is too large");
static_assert(layout_error("60000X,50000X") == "a record is too wide");
static_assert(layout_error("60000X,/,50000X").empty());

static_assert(layout_fits<int, double, double>("I5,2F10.0"));
static_assert(layout_fits<int, int, int>("I5"));  // goes back for each
static_assert(layout_fits<int, double, int, double>("I5,2(F5.0,I5)"));
static_assert(layout_fits<std::array<int, 3>, double>("3I5,E10.2"));
static_assert(layout_fits<const char*>("18A4"));
static_assert(layout_fits<std::array<char, 72>&>("18A4"));
static_assert(layout_fits<>("'1',/"));
static_assert(layout_fits<std::span<const double>, int>("F10.0"));  // how many is known only in the run

static_assert(!layout_fits<int>("F10.0"));
static_assert(!layout_fits<double>("I10"));
static_assert(!layout_fits<double>("A10"));
static_assert(!layout_fits<const char*>("I4"));
static_assert(!layout_fits<int, double>("I5,I5"));
static_assert(!layout_fits<std::array<int, 4>, double>("3I5,E10.2"));
static_assert(!layout_fits<int, int>("I5,(F5.0)"));  // goes back to the group
static_assert(!layout_fits<int>("5X,'no field'"));
static_assert(!layout_fits<int>("I5,("));
static_assert(!layout_fits<std::span<const double>>("I5"));
static_assert(!layout_fits<Vector<const int>>("F5.0"));

TEST(LayoutParser, AGroupWithoutFieldsIsPassedAtOnceWhateverItsCount) {
  EXPECT_EQ(layout_error("1000000(1000000(1000000()))I5"), "");
}

TEST(LayoutParser, ALayoutThatNeverEndsIsRefused) {
  EXPECT_EQ(layout_error("1000(1000(1X,/))"), "the layout is too long");
}

/// The compiler's opinion of one statement that writes.
bool compiles(const std::string& statement) {
  namespace fs = std::filesystem;
  std::string folder = (fs::temp_directory_path() / "tidearc-compile-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) return false;
  std::ofstream(folder + "/t.cpp") << "#include \"run/layout.h\"\nvoid f(int i, double x) { " << statement
                                   << " (void)i; (void)x; }\n";
  const fs::path root = fs::path(__FILE__).parent_path().parent_path().parent_path();
  const std::string command =
      "c++ -std=c++20 -fsyntax-only -I" + (root / "src").string() + " " + folder + "/t.cpp > /dev/null 2>&1";
  const bool good = std::system(command.c_str()) == 0;
  fs::remove_all(folder);
  return good;
}

TEST(LayoutParser, ALiteralThatDoesNotFitItsItemsDoesNotCompile) {
  if (std::system("c++ --version > /dev/null 2>&1") != 0) GTEST_SKIP() << "SKIPPED: there is no compiler c++";
  EXPECT_TRUE(compiles("tidearc::write(6, \"I5,F10.3\", i, x);"));
  EXPECT_FALSE(compiles("tidearc::write(6, \"I5,I10\", i, x);"));
  EXPECT_FALSE(compiles("tidearc::write(6, \"I5,F10\", i, x);"));
  EXPECT_TRUE(compiles("tidearc::read(5, \"I5,F10.0\", i, x);"));
  EXPECT_FALSE(compiles("tidearc::read(5, \"F5.0,F10.0\", i, x);"));
  EXPECT_FALSE(compiles("tidearc::write(6, \"I5\", 5L);"));
}

}  // namespace
}  // namespace tidearc
