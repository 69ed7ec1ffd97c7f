// Fuzz target: number fields and layouts. The input is a layout, a line end, and the text of a record. Under any layout
// the reading and the writing must end; a real that was read must survive being written with 17 digits and read again.
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "run/layout.h"
#include "run/layout_numbers.h"
#include "run/stops.h"

namespace {

struct Stopped {};
[[noreturn]] void throw_stopped(int) { throw Stopped{}; }

void check_round_trip(std::string_view field) {
  double value = 0.0;
  if (!tidearc::get_real(field, 0, value)) return;
  if (!std::isfinite(value)) std::abort();
  std::array<char, 40> text{};
  tidearc::Edit edit{tidearc::Edit::Type::exponent};
  edit.width = static_cast<int>(text.size());
  edit.decimals = 17;
  tidearc::put_real(text, edit, 0, value);
  double again = 0.0;
  if (!tidearc::get_real({text.data(), text.size()}, 0, again)) std::abort();
  if (std::memcmp(&value, &again, sizeof(value)) != 0 && !(value == 0.0 && again == 0.0)) std::abort();
}

void check_integer(std::string_view field) {
  int value = 0;
  if (!tidearc::get_integer(field, value)) return;
  std::array<char, 12> text{};
  tidearc::put_integer(text, value);
  int again = 0;
  if (!tidearc::get_integer({text.data(), text.size()}, again) || again != value) std::abort();
}

void check_layout(std::string_view layout, std::string_view record) {
  if (!tidearc::layout_error(layout).empty()) return;  // what stands in a deck is checked before it is used
  std::array<double, 7> reals{};
  std::array<int, 5> integers{};
  std::array<char, 12> text{};
  try {
    const std::array<tidearc::InItem, 1> real_items{tidearc::InItem(reals)};
    if (tidearc::scan_items(record, layout, real_items)) {
      const std::array<tidearc::OutItem, 1> out{tidearc::OutItem(reals)};
      (void)tidearc::format_items(layout, out);
    }
    const std::array<tidearc::InItem, 2> mixed{tidearc::InItem(integers), tidearc::InItem(text)};
    (void)tidearc::scan_items(record, layout, mixed);
  } catch (const Stopped&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tidearc::stop_process = throw_stopped;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::size_t end = std::min(input.find('\n'), input.size());
  const std::string_view layout = input.substr(0, end);
  const std::string_view record = input.substr(std::min(end + 1, input.size()));
  check_layout(layout, record);
  check_round_trip(record.substr(0, 40));
  check_integer(record.substr(0, 20));
  return 0;
}
