// Number fields of record layouts, read. Blanks anywhere in a field are ignored; what is left must be a number as a
// whole. Conversion is that of std::from_chars: the nearest real, ties to even.
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>

#include "run/layout_numbers.h"

namespace tidearc {
namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// A field cut into its parts, blanks taken out: sign, "ddd.ddd", exponent.
struct RealText {
  bool negative = false;
  bool has_digits = false;
  bool has_exponent = false;
  std::int64_t exponent = 0;
  std::size_t length = 0;                           ///< characters of the mantissa
  std::array<char, widest_number_field + 32> text;  ///< mantissa, then room for an exponent
};

/// The characters of a field, blanks left out.
class Blankless {
 public:
  explicit Blankless(std::string_view field) : field_(field) { skip(); }
  bool done() const { return at_ >= field_.size(); }
  char peek() const { return done() ? '\0' : field_[at_]; }
  void advance() {
    ++at_;
    skip();
  }

 private:
  void skip() {
    while (at_ < field_.size() && field_[at_] == ' ') ++at_;
  }
  std::string_view field_;
  std::size_t at_ = 0;
};

bool take_sign(Blankless& in, bool& negative) {
  const char c = in.peek();
  if (in.done() || (c != '+' && c != '-')) return false;
  negative = c == '-';
  in.advance();
  return true;
}

bool take_mantissa(Blankless& in, RealText& real) {
  bool point = false;
  for (; !in.done(); in.advance()) {
    const char c = in.peek();
    if (c == '.') {
      if (point) return false;
      point = true;
    } else if (is_digit(c)) {
      real.has_digits = true;
    } else {
      break;
    }
    if (real.length >= widest_number_field) return false;
    real.text[real.length++] = c;
  }
  return real.has_digits;
}

bool take_exponent(Blankless& in, RealText& real) {
  if (in.done()) return true;
  const char c = in.peek();
  const bool letter = c == 'E' || c == 'e' || c == 'D' || c == 'd';
  if (letter) in.advance();
  bool negative = false;
  if (!take_sign(in, negative) && !letter) return false;
  if (in.done()) return false;
  constexpr std::int64_t beyond_any = 100000;  // digits of a field cannot bring such an exponent back into range
  for (; !in.done(); in.advance()) {
    if (!is_digit(in.peek())) return false;
    real.exponent = std::min(real.exponent * 10 + (in.peek() - '0'), beyond_any);
  }
  if (negative) real.exponent = -real.exponent;
  real.has_exponent = true;
  return true;
}

/// The power of ten of the first digit that is not zero; of a zero, the lowest there is.
std::int64_t decimal_magnitude(const RealText& real) {
  const std::string_view text(real.text.data(), real.length);
  const std::size_t first = text.find_first_of("123456789");
  if (first == std::string_view::npos) return std::numeric_limits<std::int64_t>::min();
  const std::size_t point = std::min(text.find('.'), text.size());
  return real.exponent + static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
}

bool convert(RealText& real, double& value) {
  // Far outside the range the answer is known; std::from_chars would only tell that it is outside.
  const std::int64_t power = decimal_magnitude(real);
  value = 0.0;
  if (power > 400) return false;
  if (power >= -400) {
    char* end = real.text.data() + real.length;
    if (real.exponent != 0) {
      *end++ = 'E';
      end = std::to_chars(end, real.text.data() + real.text.size(), real.exponent).ptr;
    }
    const auto result = std::from_chars(real.text.data(), end, value);
    if (result.ec == std::errc::result_out_of_range) {
      if (power > 0) return false;
      value = 0.0;
    }
    if (value > std::numeric_limits<double>::max()) return false;
  }
  if (real.negative) value = -value;
  return true;
}

}  // namespace

bool get_integer(std::string_view field, int& value) {
  value = 0;
  Blankless in(field);
  if (in.done()) return true;
  bool negative = false;
  take_sign(in, negative);
  if (in.done()) return false;
  std::int64_t sum = 0;
  for (; !in.done(); in.advance()) {
    if (!is_digit(in.peek())) return false;
    sum = sum * 10 + (in.peek() - '0');
    if (sum > std::int64_t{1} << 31) return false;
  }
  if (negative) sum = -sum;
  if (sum > std::numeric_limits<int>::max()) return false;
  value = static_cast<int>(sum);
  return true;
}

bool get_real(std::string_view field, int scale, double& value) {
  value = 0.0;
  Blankless in(field);
  if (in.done()) return true;
  RealText real;
  take_sign(in, real.negative);
  if (!take_mantissa(in, real) || !take_exponent(in, real)) return false;
  if (!real.has_exponent) real.exponent -= scale;
  return convert(real, value);
}

}  // namespace tidearc
