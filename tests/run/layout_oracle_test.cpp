// Number fields against an independent opinion: what the run-time library of gfortran prints and reads. The program
// that asks it stands in tests/oracle/number_fields.f90 and is compiled here, into a temporary folder.
//
// Where the two differ on purpose, the difference is named, translated and counted, never left out:
//   printing: gfortran writes "Infinity" when it fits, here it is always "Inf"; and it refuses an edit that leaves no
//   digits (E8.0, -3P,E10.2), where here the field is filled with asterisks. Under G it compares with a limit that is
//   itself rounded: a value of nines just below the half that would carry it over (999999.95 as a real under G14.7) it
//   rounds up, where here the exact binary value decides.
//   reading: gfortran takes a field without any digit ("+", ".", "E5", "--5") for zero, words for infinity and NaN, the
//   letter Q for an exponent, a number beyond the largest real for infinity; here these are refused.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "run/layout_numbers.h"

namespace tidearc {
namespace {
namespace fs = std::filesystem;

/// One number field: its edit as the layout notation has it.
struct Field {
  Edit edit;
  int scale = 0;
  std::string text() const {
    const char* const letters = "IFEDG";
    std::string words = scale == 0 ? "" : std::to_string(scale) + "P,";
    words += letters[static_cast<int>(edit.type)];
    words += std::to_string(edit.width);
    return edit.type == Edit::Type::integer ? words : words + "." + std::to_string(edit.decimals);
  }
};

Field field_of(Edit::Type type, int width, int decimals, int scale = 0) {
  Field field;
  field.edit.type = type;
  field.edit.width = width;
  field.edit.decimals = decimals;
  field.scale = scale;
  return field;
}

class NumberFieldOracle : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    std::string pattern = (fs::temp_directory_path() / "tidearc-oracle-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder = pattern;
    available = std::system("gfortran --version > /dev/null 2>&1") == 0;
    if (!available) return;
    const fs::path source = fs::path(__FILE__).parent_path().parent_path() / "oracle" / "number_fields.f90";
    const std::string command = "gfortran -O1 -o " + folder + "/oracle " + source.string();
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
  }
  static void TearDownTestSuite() {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
  }
  void SetUp() override {
    if (!available) GTEST_SKIP() << "SKIPPED: gfortran is not installed, number fields are not compared with it";
  }

  /// One answer per question.
  static std::vector<std::string> ask(const std::vector<std::string>& questions) {
    {
      std::ofstream out(folder + "/questions");
      for (const std::string& question : questions) out << question << '\n';
    }
    const std::string command = folder + "/oracle < " + folder + "/questions > " + folder + "/answers";
    EXPECT_EQ(std::system(command.c_str()), 0);
    std::ifstream in(folder + "/answers");
    std::vector<std::string> answers;
    for (std::string line; std::getline(in, line);) answers.push_back(line);
    return answers;
  }

  inline static std::string folder;
  inline static bool available = false;
};

std::string head_of_question(char what, const Field& field) {
  std::ostringstream line;
  line << what << ' ' << std::setw(3) << field.edit.width << ' ' << std::left << std::setw(24) << field.text() << ' ';
  return line.str();
}

std::string write_question(const Field& field, std::uint64_t bits) {
  std::ostringstream line;
  line << head_of_question('W', field) << std::hex << std::uppercase << std::setfill('0') << std::setw(16) << bits;
  return line.str();
}

// ---- printing ----------------------------------------------------------------------------------------------------

/// Reals of every kind: any bits at all; few digits; exact ties; around powers of ten; subnormal; the ends; zeros.
class RealValues {
 public:
  double next() {
    switch (turn_++ % 8) {
      case 0:
        return std::bit_cast<double>(random_());
      case 1:
        return signed_value(short_decimal());
      case 2:
        return signed_value(tie());
      case 3:
        return signed_value(near_power_of_ten());
      case 4:
        return signed_value(std::bit_cast<double>(random_() >> (12 + random_() % 50)));  // subnormal
      case 5:
        return signed_value(std::ldexp(1.0 + fraction(), static_cast<int>(random_() % 60) - 30));
      case 6:
        return signed_value(std::round(std::pow(10.0, 9.0 * fraction())));
      default:
        return special();
    }
  }

 private:
  double fraction() { return static_cast<double>(random_() >> 11) * 0x1p-53; }
  double signed_value(double value) { return random_() % 3 == 0 ? -value : value; }
  double short_decimal() {
    return static_cast<double>(random_() % 1000000) / std::pow(10.0, static_cast<double>(random_() % 12));
  }
  double tie() {  // a number of halves, quarters .. 1/4096: its last digit is a 5 with nothing behind it
    const int power = 1 + static_cast<int>(random_() % 12);
    return std::ldexp(static_cast<double>(2 * (random_() % 5000) + 1), -power);
  }
  double near_power_of_ten() {
    double value = std::pow(10.0, static_cast<double>(random_() % 40) - 20.0);
    if (random_() % 4 == 0) value *= 5.0;
    for (std::uint64_t i = random_() % 4; i > 0; --i) value = std::nextafter(value, 0.0);
    if (random_() % 4 == 0) value *= 1.0 - std::pow(10.0, -1.0 - static_cast<double>(random_() % 9)) / 2.0;
    return value;
  }
  double special() {
    using Limits = std::numeric_limits<double>;
    const double values[] = {0.0,
                             -0.0,
                             Limits::max(),
                             -Limits::max(),
                             Limits::min(),
                             -Limits::min(),
                             Limits::denorm_min(),
                             Limits::infinity(),
                             -Limits::infinity(),
                             Limits::quiet_NaN(),
                             1e100,
                             -1e-100,
                             9.9995e99,
                             9.9995e-100,
                             1e-99};
    return values[random_() % std::size(values)];
  }

  std::mt19937_64 random_{19680725};
  std::uint64_t turn_ = 0;
};

/// Fields of every letter, from too narrow to wide.
class RealFields {
 public:
  Field next() {
    const Edit::Type types[] = {Edit::Type::fixed, Edit::Type::exponent, Edit::Type::d_exponent, Edit::Type::general};
    const Edit::Type type = types[pick(4)];
    const int scale = pick(3) == 0 ? 1 : pick(12) == 0 ? pick(8) - 3 : 0;
    const int decimals = pick(10) == 0 ? pick(21) : pick(8);
    const int slack = pick(6) == 0 ? pick(20) : pick(5);
    const int least = type == Edit::Type::fixed ? decimals + 1 + pick(8) : decimals + 5;
    return field_of(type, std::max(1, least + slack - pick(3)), decimals, scale);
  }

 private:
  int pick(int n) { return static_cast<int>(random_() % static_cast<std::uint64_t>(n)); }
  std::mt19937_64 random_{42};
};

std::string our_field(const Field& field, double value) {
  std::string text(static_cast<std::size_t>(field.edit.width), '#');
  put_real(text, field.edit, field.scale, value);
  return text;
}

/// The layouts of this system's own cards and report lines, which the random fields need not meet.
const Field usual_fields[] = {
    field_of(Edit::Type::fixed, 10, 3),       field_of(Edit::Type::fixed, 14, 3),
    field_of(Edit::Type::fixed, 8, 3),        field_of(Edit::Type::exponent, 12, 4),
    field_of(Edit::Type::exponent, 10, 2),    field_of(Edit::Type::exponent, 8, 3),
    field_of(Edit::Type::exponent, 8, 2),     field_of(Edit::Type::exponent, 9, 3),
    field_of(Edit::Type::exponent, 11, 4),    field_of(Edit::Type::general, 13, 6),
    field_of(Edit::Type::general, 12, 4),     field_of(Edit::Type::general, 10, 4),
    field_of(Edit::Type::d_exponent, 13, 5),  field_of(Edit::Type::exponent, 23, 15, 1),
    field_of(Edit::Type::exponent, 12, 4, 1),
};

struct Pair {
  Field field;
  double value;
};

std::vector<Pair> printed_pairs() {
  std::vector<Pair> pairs;
  RealValues values;
  RealFields fields;
  for (int i = 0; i < 60000; ++i) pairs.push_back({fields.next(), values.next()});
  for (const Field& field : usual_fields) {
    for (int i = 0; i < 1000; ++i) pairs.push_back({field, values.next()});
  }
  return pairs;
}

struct PrintCount {
  int overflow = 0;
  int infinity = 0;
  int no_digits = 0;
  int nines = 0;
};

/// Nines as far as the edit prints, then less than half a unit, by less than a part in a million.
bool nines_below_half(const Pair& pair) {
  if (pair.field.edit.type != Edit::Type::general || !std::isfinite(pair.value)) return false;
  char digits[100];  // "9.99..9499999.."
  std::snprintf(digits, sizeof digits, "%.60e", std::fabs(pair.value));
  std::string text = digits;
  text.erase(1, 1);
  const auto count = static_cast<std::size_t>(pair.field.edit.decimals);
  return text.substr(0, count) == std::string(count, '9') && text.substr(count, 6) == "499999";
}

/// What the C library prints, which rounds the exact value: F(w-4) and four blanks, all digits being nines.
std::string nines_field(const Pair& pair) {
  const int power = static_cast<int>(std::floor(std::log10(std::fabs(pair.value))));
  char text[100];
  std::snprintf(text, sizeof text, "%#*.*f    ", pair.field.edit.width - 4, pair.field.edit.decimals - 1 - power,
                pair.value);
  return text;
}

/// The field that the library's answer asks for under this system's rules.
std::string expected_field(const Pair& pair, const std::string& answer, PrintCount& count) {
  const auto width = static_cast<std::size_t>(pair.field.edit.width);
  std::string expected = answer.substr(1, width);
  if (const std::size_t at = expected.find("Infinity"); at != std::string::npos) {
    ++count.infinity;
    return "     " + expected.substr(0, at) + "Inf";
  }
  if (expected[0] == '?') {
    ++count.no_digits;
    return std::string(width, '*');
  }
  if (expected[0] == '*') ++count.overflow;
  if (nines_below_half(pair) && expected != our_field(pair.field, pair.value)) {
    ++count.nines;
    return nines_field(pair);
  }
  return expected;
}

TEST_F(NumberFieldOracle, RealsPrintAsTheIndependentLibraryPrintsThem) {
  const std::vector<Pair> pairs = printed_pairs();
  std::vector<std::string> questions;
  for (const auto& [field, value] : pairs)
    questions.push_back(write_question(field, std::bit_cast<std::uint64_t>(value)));
  const std::vector<std::string> answers = ask(questions);
  ASSERT_EQ(answers.size(), pairs.size());

  PrintCount count;
  int different = 0;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    ASSERT_EQ(answers[i].size(), static_cast<std::size_t>(pairs[i].field.edit.width) + 2) << questions[i];
    const std::string expected = expected_field(pairs[i], answers[i], count);
    const std::string ours = our_field(pairs[i].field, pairs[i].value);
    if (ours != expected && ++different <= 20)
      ADD_FAILURE() << questions[i] << " '" << ours << "', not '" << expected << "'";
  }
  EXPECT_EQ(different, 0);
  EXPECT_GT(count.overflow, 2000);
  EXPECT_LT(count.nines, 40);
  const int digits = static_cast<int>(pairs.size()) - count.overflow - count.no_digits;
  EXPECT_GT(digits, 40000);
  std::printf(
      "[ PAIRS    ] %zu reals, %d overflow; by rule different: %d Infinity, %d without digits, %d nines under G\n",
      pairs.size(), count.overflow, count.infinity, count.no_digits, count.nines);
}

TEST_F(NumberFieldOracle, IntegersPrintAsTheIndependentLibraryPrintsThem) {
  std::mt19937_64 random(7);
  std::vector<int> values;
  std::vector<Field> fields;
  std::vector<std::string> questions;
  const int ends[] = {0, -1, 9, 10, -9, -10, 99999, 100000, -9999, -10000, 2147483647, -2147483647 - 1};
  for (int i = 0; i < 5000; ++i) {
    const auto bits = static_cast<std::uint32_t>(random() >> (32 + random() % 32));
    values.push_back(i % 10 == 0 ? ends[random() % std::size(ends)] : static_cast<int>(i % 2 == 0 ? bits : 0 - bits));
    fields.push_back(field_of(Edit::Type::integer, 1 + static_cast<int>(random() % 14), 0));
    questions.push_back(write_question(fields.back(), static_cast<std::uint32_t>(values.back())));
  }
  const std::vector<std::string> answers = ask(questions);
  ASSERT_EQ(answers.size(), values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    std::string text(static_cast<std::size_t>(fields[i].edit.width), '#');
    put_integer(text, values[i]);
    ASSERT_EQ("[" + text + "]", answers[i]) << questions[i];
  }
}

// ---- reading -----------------------------------------------------------------------------------------------------

/// Text of a number in one of the ways in which people punch it, and of what is no number.
class FieldTexts {
 public:
  std::string real() {
    if (pick(8) == 0) return pick(12) == 0 ? "" : no_number();
    std::string text = sign() + digits(1 + pick(pick(10) == 0 ? 25 : 6));
    if (pick(4) != 0) text.insert(text.size() - static_cast<std::size_t>(pick(static_cast<int>(text.size()))), ".");
    if (!text.empty() && (text[0] == '.') && pick(2) == 0) text = sign() + text;
    if (pick(2) == 0) text += exponent();
    return with_blanks(text);
  }
  std::string integer() {
    if (pick(8) == 0) return pick(12) == 0 ? "" : no_number();
    return with_blanks(sign() + digits(1 + pick(pick(4) == 0 ? 12 : 5)));
  }
  int pick(int n) { return static_cast<int>(random_() % static_cast<std::uint64_t>(n)); }

 private:
  std::string sign() { return pick(3) == 0 ? "-" : pick(4) == 0 ? "+" : ""; }
  std::string digits(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += static_cast<char>('0' + pick(10));
    return text;
  }
  std::string exponent() {
    const char* const letters[] = {"E", "e", "D", "d", ""};
    const char* const letter = letters[pick(5)];
    const std::string way = letter[0] == '\0' ? (pick(2) == 0 ? "+" : "-") : sign();
    return letter + way + std::to_string(pick(pick(6) == 0 ? 400 : 20));
  }
  std::string no_number() {
    const char* const texts[] = {"1.5E",         "E5",       ".",     "+",    "-",     "-.",     "1,5",
                                 "5,",           "0x10",     "--5",   "1..5", "1E5.",  "1E+",    "1;",
                                 "1/",           "'5'",      "T",     "12a",  "5E1E1", "1_8",    "&",
                                 "nan",          "inf",      "1.5Q2", "+-5",  "1e999", "-1D400", "1e-999",
                                 "1E0000000002", "Infinity", "0e999", "ABC",  "5-",    "1.5F2"};
    return texts[pick(static_cast<int>(std::size(texts)))];
  }
  std::string with_blanks(std::string text) {
    for (int i = pick(3) == 0 ? pick(4) : 0; i > 0; --i) {
      text.insert(static_cast<std::size_t>(pick(static_cast<int>(text.size()) + 1)), " ");
    }
    return std::string(static_cast<std::size_t>(pick(4)), ' ') + text;
  }

  std::mt19937_64 random_{1957};
};

/// What the library accepts and this system refuses on purpose. `text` is the field.
bool accepted_by_library_only(const std::string& text, double value) {
  const bool no_digits = text.find_first_of("0123456789") == std::string::npos;
  const bool exponent_only =
      text.find_first_not_of(' ') != std::string::npos && std::toupper(text[text.find_first_not_of(' ')]) == 'E';
  return no_digits || exponent_only || std::isinf(value) || text.find('Q') != std::string::npos ||
         text.find("--") != std::string::npos || text.find("+-") != std::string::npos;
}

struct ReadCount {
  int alike = 0;
  int refused_by_both = 0;
  int library_only = 0;
};

void compare_reading(const Field& field, const std::string& text, const std::string& answer, ReadCount& count) {
  double value = 0.0;
  int whole = 0;
  const bool integer = field.edit.type == Edit::Type::integer;
  const bool read = integer ? get_integer(text, whole) : get_real(text, field.scale, value);
  const bool library_read = answer[0] == '0';
  const std::uint64_t bits = std::strtoull(answer.c_str() + 2, nullptr, 16);
  const std::uint64_t our_bits =
      integer ? static_cast<std::uint64_t>(static_cast<std::int64_t>(whole)) : std::bit_cast<std::uint64_t>(value);
  if (!read && !library_read) {
    ++count.refused_by_both;
  } else if (read && library_read) {
    EXPECT_EQ(our_bits, bits) << field.text() << " '" << text << "'";
    ++count.alike;
  } else if (library_read) {
    EXPECT_TRUE(!integer && accepted_by_library_only(text, std::bit_cast<double>(bits)))
        << field.text() << " '" << text << "'";
    ++count.library_only;
  } else {
    ADD_FAILURE() << field.text() << " '" << text << "' is refused by the library";
  }
}

// There is no implied decimal point here, whatever the decimals of the edit. With gfortran that is the case for d = 0;
// fields with decimals are compared only where the text has a point.
TEST_F(NumberFieldOracle, FieldsReadAsTheIndependentLibraryReadsThem) {
  const Edit::Type types[] = {Edit::Type::integer, Edit::Type::fixed, Edit::Type::exponent, Edit::Type::d_exponent,
                              Edit::Type::general};
  FieldTexts texts;
  std::vector<Field> fields;
  std::vector<std::string> contents;
  std::vector<std::string> questions;
  for (int i = 0; i < 20000; ++i) {
    const Edit::Type type = types[i % 5];
    std::string text = type == Edit::Type::integer ? texts.integer() : texts.real();
    const int decimals = text.find('.') != std::string::npos ? texts.pick(8) : 0;
    const int scale = type != Edit::Type::integer && texts.pick(10) == 0 ? texts.pick(7) - 3 : 0;
    text += std::string(static_cast<std::size_t>(texts.pick(4)), ' ');
    if (text.empty()) text = " ";
    fields.push_back(field_of(type, static_cast<int>(text.size()), decimals, scale));
    questions.push_back(head_of_question('R', fields.back()) + "[" + text + "]");
    contents.push_back(text);
  }
  const std::vector<std::string> answers = ask(questions);
  ASSERT_EQ(answers.size(), questions.size());
  ReadCount count;
  for (std::size_t i = 0; i < answers.size(); ++i) compare_reading(fields[i], contents[i], answers[i], count);
  EXPECT_GT(count.alike, 10000);
  EXPECT_GT(count.refused_by_both, 500);
  std::printf("[ FIELDS   ] %d read alike, %d refused by both; by rule different: %d taken by the library only\n",
              count.alike, count.refused_by_both, count.library_only);
}

}  // namespace
}  // namespace tidearc
