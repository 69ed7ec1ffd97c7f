// The compact number field and the lines of TAModel.sac.
#include "sea/members/load_lines.h"

#include <charconv>
#include <cmath>
#include <string>

#include "run/layout.h"
#include "run/run_block.h"
#include "run/units.h"

namespace tidearc {

namespace {

constexpr int digits_kept = 7;

/// A number as 0.m1..m7 times a power of ten, rounded.
struct Decimal {
  std::string_view digits;
  int exponent = 0;
};

/// @param room  where the digits stand, behind the call
Decimal decimal_of(double size, std::array<char, 32>& room) {
  if (size == 0.0) return {"0000000", 0};
  const auto end =
      std::to_chars(room.data(), room.data() + room.size(), size, std::chars_format::scientific, digits_kept - 1);
  room[1] = room[0];  // the first digit takes the place of the point
  int exponent = 0;
  const char* sign = room.data() + digits_kept + 2;
  std::from_chars(sign + 1, end.ptr, exponent);
  return {{room.data() + 1, digits_kept}, (*sign == '-' ? -exponent : exponent) + 1};
}

/// The digits around their point in `columns` columns, six with a sign before them, else seven.
std::string compact(const Decimal& number, std::size_t columns) {
  const int e = number.exponent;
  const std::size_t with_power = columns - 3;  // a point, digits, the sign and the digit of the power
  if (e > 9) return std::string(7, '*');
  if (e >= static_cast<int>(columns)) {
    return '.' + std::string(number.digits.substr(0, with_power)) + '+' + std::to_string(e);
  }
  if (e > 0) {
    const auto whole = static_cast<std::size_t>(e);
    return std::string(number.digits.substr(0, whole)) + '.' +
           std::string(number.digits.substr(whole, columns - 1 - whole));
  }
  if (e == 0) return '.' + std::string(number.digits.substr(0, columns - 1));
  if (e == -1) return ".0" + std::string(number.digits.substr(0, columns - 2));
  if (e < -9) return std::string(".000000");
  return '.' + std::string(number.digits.substr(0, with_power)) + '-' + std::to_string(-e);
}

void count_line(double time) {
  if (load_files.lines == 0 || time != load_files.last_time) run.NWAVNO += 1;
  load_files.last_time = time;
  load_files.lines += 1;
}

std::string_view text_of(const std::array<char, 7>& field) { return {field.data(), field.size()}; }

}  // namespace

std::array<char, 7> FMT7(double value) {
  std::array<char, 7> field{'*', '*', '*', '*', '*', '*', '*'};
  if (!std::isfinite(value)) return field;
  std::array<char, 32> room{};
  const Decimal number = decimal_of(std::abs(value), room);
  const bool negative = value < 0.0;
  std::string text = compact(number, negative ? 6 : 7);
  if (negative && text.size() < field.size()) text.insert(text.begin(), '-');
  text.copy(field.data(), field.size());
  return field;
}

void write_member_line(std::string_view axis, std::string_view frame, int NODEI, int NODEJ, const LineLoad& line,
                       double time) {
  const auto first = FMT7(line.at_start), last = FMT7(line.at_end);
  write(UNIT_LOADS_TEXT, "'LOAD',A2,I5,I4,1X,F7.2,A7,F7.2,A7,16X,A4,1X,'UNIF',3X,F8.2", axis, NODEI, NODEJ, line.start,
        text_of(first), line.length, text_of(last), frame, time);
  count_line(time);
}

void write_joint_line(int node, const Point& force, double time) {
  std::string forces, moments;
  for (const double part : force) forces += text_of(FMT7(part));
  forces += text_of(FMT7(0.0));
  for (int i = 0; i < 2; ++i) moments += text_of(FMT7(0.0));
  write(UNIT_LOADS_TEXT, "'LOAD',3X,I4,5X,4A7,1X,2A7,1X,'GLOB',1X,'JOIN',3X,F8.2", node, forces, moments, time);
  count_line(time);
}

bool load_lines_due(double time) {
  return load_files.wanted && (load_files.lines == 0 || time != load_files.last_time);
}

}  // namespace tidearc
