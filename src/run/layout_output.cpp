// Number fields of record layouts, written. Every digit comes from std::to_chars with a precision, which rounds the
// exact binary value; this file only places point, sign, zeros and exponent in the columns.
#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>

#include "run/layout_numbers.h"

namespace tidearc {
namespace {

/// Significant digits that tell every real exactly (the longest has 767).
constexpr int exact_digits = 770;
/// Room for the digits of any number field: all of them, or 309 before the point and the widest field behind it.
constexpr int digit_room = 800;
static_assert(digit_room > 320 + widest_number_field && digit_room > exact_digits + 16);

/// The decimal digits of a magnitude, d1 d2 .. dn, standing for 0.d1d2..dn * 10**exponent.
struct Digits {
  std::array<char, digit_room> text;
  int count = 0;
  int exponent = 0;
};

// The process may treat denormal numbers as zero, so sign and zero are asked of the bits.
bool is_negative(double value) { return (std::bit_cast<std::uint64_t>(value) >> 63) != 0; }
double magnitude(double value) {
  return std::bit_cast<double>(std::bit_cast<std::uint64_t>(value) & 0x7FFFFFFFFFFFFFFFULL);
}
bool is_zero(double value) { return (std::bit_cast<std::uint64_t>(value) << 1) == 0; }
bool is_special(double value) { return ((std::bit_cast<std::uint64_t>(value) >> 52) & 0x7FF) == 0x7FF; }
bool is_nan(double value) { return is_special(value) && (std::bit_cast<std::uint64_t>(value) << 12) != 0; }

void fill_asterisks(std::span<char> field) { std::ranges::fill(field, '*'); }

void put_right(std::span<char> field, std::string_view text) {
  if (text.size() > field.size()) return fill_asterisks(field);
  const std::size_t blanks = field.size() - text.size();
  std::fill_n(field.begin(), blanks, ' ');
  std::ranges::copy(text, field.begin() + static_cast<std::ptrdiff_t>(blanks));
}

void put_special(std::span<char> field, double value) {
  put_right(field, is_nan(value) ? "NaN" : is_negative(value) ? "-Inf" : "Inf");
}

/// std::to_chars with a precision. It too takes a denormal number for zero when the process does, unless it comes to it
/// as a wider real, in which it is a normal one.
char* to_digits(std::span<char> room, double value, std::chars_format form, int precision) {
  char* const end = room.data() + room.size();
  const bool denormal = ((std::bit_cast<std::uint64_t>(value) >> 52) & 0x7FF) == 0 && !is_zero(value);
  if (denormal) return std::to_chars(room.data(), end, static_cast<long double>(value), form, precision).ptr;
  return std::to_chars(room.data(), end, value, form, precision).ptr;
}

/// Rounds a magnitude to `count` (at least 1) significant digits.
void significant_digits(double value, int count, Digits& digits) {
  std::array<char, digit_room> room;
  char* const end = to_digits(room, value, std::chars_format::scientific, count - 1);
  char* const letter = std::find(room.begin(), end, 'e');
  digits.text[0] = room[0];
  if (count > 1) std::copy(room.begin() + 2, letter, digits.text.begin() + 1);
  digits.count = count;
  int exponent = 0;
  const bool negative = letter[1] == '-';
  std::from_chars(letter + 2, end, exponent);
  digits.exponent = is_zero(value) ? 0 : (negative ? -exponent : exponent) + 1;
}

/// Digits of a magnitude times 10**scale, rounded to `decimals` places. Used only with a scale factor: the point may
/// then stand where the rounding of std::to_chars cannot reach, left of the units.
void scaled_digits(double value, int decimals, int scale, Digits& digits) {
  significant_digits(value, 18, digits);
  const int places = digits.exponent + scale + decimals;
  if (places > 0) {
    significant_digits(value, std::min(places, exact_digits), digits);
  } else {
    // Rounds to nothing or to one unit of the last place; exactly half a unit goes to the even neighbour, nothing.
    significant_digits(value, exact_digits, digits);
    const bool up = places == 0 &&
                    (digits.text[0] > '5' ||
                     (digits.text[0] == '5' && std::any_of(digits.text.begin() + 1, digits.text.begin() + digits.count,
                                                           [](char c) { return c != '0'; })));
    digits.text[0] = up ? '1' : '0';
    digits.count = 1;
    digits.exponent = 1 - decimals - scale;
  }
  digits.exponent += scale;
}

/// Puts "-iii.fff" into the field, without the zero before the point when it is tight. `text` has the magnitude.
void put_fixed_text(std::span<char> field, bool negative, std::string_view text) {
  const std::size_t sign = negative ? 1 : 0;
  if (text.size() + sign > field.size() && text.size() > 2 && text[0] == '0' && text[1] == '.') text.remove_prefix(1);
  if (text.size() + sign > field.size()) return fill_asterisks(field);
  put_right(field.subspan(sign), text);
  if (!negative) return;
  const std::size_t at = field.size() - text.size() - 1;
  field[0] = ' ';
  field[at] = '-';
}

void put_fixed_scaled(std::span<char> field, int decimals, int scale, double value) {
  Digits digits;
  if (is_zero(value)) {
    digits.text[0] = '0';
    digits.count = digits.exponent = 1;
  } else {
    scaled_digits(magnitude(value), decimals, scale, digits);
  }
  if (digits.exponent > static_cast<int>(field.size())) return fill_asterisks(field);
  std::array<char, digit_room> text;
  int length = 0;
  const auto digit = [&](int place) {  // place 0 stands before the point, 1 behind it
    const int index = digits.exponent - 1 + place;
    return index >= 0 && index < digits.count ? digits.text[static_cast<std::size_t>(index)] : '0';
  };
  for (int place = 1 - std::max(digits.exponent, 1); place <= 0; ++place) {
    text[static_cast<std::size_t>(length++)] = digit(place);
  }
  text[static_cast<std::size_t>(length++)] = '.';
  for (int place = 1; place <= decimals; ++place) text[static_cast<std::size_t>(length++)] = digit(place);
  put_fixed_text(field, is_negative(value), std::string_view(text.data(), static_cast<std::size_t>(length)));
}

void put_fixed(std::span<char> field, int decimals, int scale, double value) {
  if (is_special(value)) return put_special(field, value);
  if (decimals >= static_cast<int>(field.size())) return fill_asterisks(field);
  if (scale != 0) return put_fixed_scaled(field, decimals, scale, value);
  std::array<char, digit_room> room;
  char* end = to_digits(room, magnitude(value), std::chars_format::fixed, decimals);
  if (decimals == 0) *end++ = '.';
  put_fixed_text(field, is_negative(value), std::string_view(room.begin(), end));
}

/// "E+05", "+105": the exponent behind the digits, always four columns.
void put_exponent(char* at, char letter, int exponent) {
  const int size = exponent < 0 ? -exponent : exponent;
  const char sign = exponent < 0 ? '-' : '+';
  at[0] = size > 99 ? sign : letter;
  at[1] = size > 99 ? static_cast<char>('0' + size / 100) : sign;
  at[2] = static_cast<char>('0' + size / 10 % 10);
  at[3] = static_cast<char>('0' + size % 10);
}

void put_exponential(std::span<char> field, char letter, int decimals, int scale, double value) {
  if (is_special(value)) return put_special(field, value);
  const int before = std::max(scale, 0);  // digits before the point
  const int zeros = std::max(-scale, 0);  // zeros behind the point
  const int count = scale > 0 ? decimals + 1 : decimals - zeros;
  const int behind = count - before;
  const int width = static_cast<int>(field.size());
  const int sign = is_negative(value) ? 1 : 0;
  if (count < 1 || behind < 0 || sign + before + 1 + zeros + behind + 4 > width) return fill_asterisks(field);
  Digits digits;
  significant_digits(magnitude(value), count, digits);
  std::ranges::fill(field, ' ');
  char* at = field.data() + width - 4;
  put_exponent(at, letter, is_zero(value) ? 0 : digits.exponent - scale);
  at = std::copy_backward(digits.text.begin() + before, digits.text.begin() + count, at);
  for (int i = 0; i < zeros; ++i) *--at = '0';
  *--at = '.';
  at = std::copy_backward(digits.text.begin(), digits.text.begin() + before, at);
  if (before == 0 && at - field.data() > sign) *--at = '0';
  if (sign > 0) *--at = '-';
}

void put_general(std::span<char> field, int decimals, int scale, double value) {
  if (is_special(value)) return put_special(field, value);
  // More digits than columns fit in no form.
  if (decimals > static_cast<int>(field.size())) return fill_asterisks(field);
  int places = decimals - 1;
  if (decimals > 0 && !is_zero(value)) {
    Digits digits;
    significant_digits(magnitude(value), decimals, digits);
    places = decimals - digits.exponent;
  }
  if (places < 0 || places > decimals || decimals == 0) return put_exponential(field, 'E', decimals, scale, value);
  if (field.size() <= 4) return fill_asterisks(field);
  put_fixed(field.first(field.size() - 4), places, 0, value);
  if (field[0] == '*') return fill_asterisks(field);
  std::ranges::fill(field.last(4), ' ');
}

}  // namespace

void put_integer(std::span<char> field, int value) {
  std::array<char, 12> room;
  const auto end = std::to_chars(room.begin(), room.end(), value).ptr;
  put_right(field, std::string_view(room.begin(), end));
}

void put_real(std::span<char> field, const Edit& edit, int scale, double value) {
  switch (edit.type) {
    case Edit::Type::fixed:
      return put_fixed(field, edit.decimals, scale, value);
    case Edit::Type::exponent:
      return put_exponential(field, 'E', edit.decimals, scale, value);
    case Edit::Type::d_exponent:
      return put_exponential(field, 'D', edit.decimals, scale, value);
    case Edit::Type::general:
      return put_general(field, edit.decimals, scale, value);
    case Edit::Type::integer:
    case Edit::Type::text:
    case Edit::Type::skip:
    case Edit::Type::tab:
    case Edit::Type::quote:
    case Edit::Type::new_record:
    case Edit::Type::scale:
    case Edit::Type::end:
    case Edit::Type::error:
      fill_asterisks(field);
  }
}

std::string_view list_real(std::span<char, list_real_columns> room, double value) {
  const std::span<char> field = room.first(23);
  put_exponential(field, 'E', 15, 1, value);
  const std::string_view text(field.data(), field.size());
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

}  // namespace tidearc
