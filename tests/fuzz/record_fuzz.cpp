// Fuzz target: read layouts of records. The input is a layout, a line end, and the lines that are read under it. Any
// layout must be taken or refused in bounded time, any reading must end, and a layout that is taken must read alike
// whatever its case and its blanks.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "model/record_layout.h"

namespace {

constexpr int most_numbers = 2000;

struct Reading {
  std::vector<double> numbers;
  tidearc::RecordReader::Outcome outcome = tidearc::RecordReader::Outcome::number;
  bool missed_point = false;
  std::size_t rest = 0;  ///< characters that the reading has left
};

Reading read_all(const tidearc::RecordLayout& layout, std::string_view text, int numbers) {
  const auto next_line = [&text](std::string_view& line) {
    if (text.empty()) return false;
    const std::size_t end = std::min(text.find('\n'), text.size());
    line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return true;
  };
  tidearc::RecordReader reader(layout, next_line);
  Reading reading;
  for (int i = 0; i < numbers; ++i) {
    double value = std::nan("");
    reading.outcome = reader.next(value);
    if (reading.outcome != tidearc::RecordReader::Outcome::number) break;
    if (!std::isfinite(value)) std::abort();
    reading.numbers.push_back(value);
  }
  reader.finish();
  reading.missed_point = reader.missed_point();
  reading.rest = text.size();
  return reading;
}

/// The same layout to the eye of the interpreter: other case, a blank behind every character.
std::string disguised(std::string_view layout) {
  std::string other;
  for (const char c : layout) {
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    other += letter ? static_cast<char>(c ^ 0x20) : c;
    other += ' ';
  }
  return other;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::size_t end = std::min(input.find('\n'), input.size());
  const std::string_view text = input.substr(std::min(end + 1, input.size()));
  const tidearc::RecordLayout layout(input.substr(0, end));
  const tidearc::RecordLayout other(disguised(input.substr(0, end)));
  if (layout.error() != other.error()) std::abort();
  if (!layout.error().empty()) return 0;
  const Reading whole = read_all(layout, text, most_numbers);
  const Reading again = read_all(other, text, most_numbers);
  if (whole.numbers != again.numbers || whole.outcome != again.outcome || whole.rest != again.rest) std::abort();
  // Fewer numbers are the front of more, and take no more of the lines.
  const int half = static_cast<int>(whole.numbers.size() / 2);
  const Reading front = read_all(layout, text, half);
  if (front.outcome != tidearc::RecordReader::Outcome::number && half > 0) std::abort();
  for (std::size_t i = 0; i < front.numbers.size(); ++i) {
    if (front.numbers[i] != whole.numbers[i]) std::abort();
  }
  return 0;
}
