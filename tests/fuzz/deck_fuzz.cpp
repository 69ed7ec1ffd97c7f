// Fuzz target: the reader of whole decks, in data check mode. The input is the text of a deck in which every START card
// is turned into a CHECK card, so that all cards are read and echoed and nothing is analysed. The program must end with
// one of its own exit statuses; everything else (a crash, a sanitizer's finding, a hang) is a defect.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "roof/driver.h"
#include "roof/startup.h"
#include "run/stops.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t room);

namespace {

struct Stopped {
  int status;
};
[[noreturn]] void throw_stopped(int status) { throw Stopped{status}; }

/// Enters a folder of its own on a memory file system: a run writes some twenty files.
bool enter_scratch() {
  std::string folder =
      std::filesystem::exists("/dev/shm") ? "/dev/shm/tidearc-fuzz-XXXXXX" : "/tmp/tidearc-fuzz-XXXXXX";
  if (mkdtemp(folder.data()) == nullptr) std::abort();
  std::filesystem::current_path(folder);
  static const std::string kept = folder;
  std::atexit([] { std::filesystem::remove_all(kept); });
  tidearc::stop_process = throw_stopped;
  return true;
}

/// The deck with its START cards as CHECK cards.
std::string checked_deck(const std::uint8_t* data, std::size_t size) {
  std::string deck(reinterpret_cast<const char*>(data), size);
  for (std::size_t at = deck.find("STAR"); at != std::string::npos; at = deck.find("STAR", at + 4))
    deck.replace(at, 4, "CHEC");
  return deck;
}

int run_deck(const std::string& deck) {
  std::ofstream("TAModel.inp", std::ios::binary) << deck;
  try {
    tidearc::start_process("2M");
    tidearc::DRIVER();
    tidearc::CLOSUP();
  } catch (const Stopped& stopped) {
    return stopped.status;
  }
}

constexpr std::string_view field_texts[] = {
    "0",     "1",   "2",     "3",      "-1",    "4",   "5",     "10",   "99999", "-9999", "63000", "63001",
    "32767", "100", "1E308", "-1E-99", "1.0E8", ".5",  "NEWF",  "DISK", "OLDF",  "CORE",  "USYM",  "27",
    "12",    "28",  "",      "1.0",    "16",    "501", "STRUD", "1110", "-2",    "1E200"};

std::vector<std::string> lines_of(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

/// One change that a deck's author could make: another number in a field of 5 or 10 columns, a line more or less.
void change_card(std::vector<std::string>& lines, std::minstd_rand& random) {
  const std::size_t at = random() % lines.size();
  const unsigned kind = random() % 8;
  if (kind == 0) {
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), lines[random() % lines.size()]);
  } else if (kind == 1) {
    lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(at));
  } else {
    const std::size_t width = kind < 6 ? 5 : 10;
    const std::size_t column = width * (random() % 16) + (kind == 7 ? 5 : 0);
    const std::string_view text = field_texts[random() % std::size(field_texts)];
    std::string& line = lines[at];
    if (line.size() < column + width) line.resize(column + width, ' ');
    const std::string field = std::string(width > text.size() ? width - text.size() : 0, ' ') + std::string(text);
    line.replace(column, width, field.substr(0, width));
  }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room, unsigned seed) {
  std::minstd_rand random(seed + 1);
  if (random() % 4 == 0) return LLVMFuzzerMutate(data, size, room);
  std::vector<std::string> lines = lines_of({reinterpret_cast<const char*>(data), size});
  for (unsigned changes = 1 + random() % 3; changes > 0 && !lines.empty(); --changes) change_card(lines, random);
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  text.resize(std::min(text.size(), room));
  std::memcpy(data, text.data(), text.size());
  return text.size();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool ready = enter_scratch();
  const int status = ready ? run_deck(checked_deck(data, size)) : 0;
  if (status < 0 || status > tidearc::status_terminated) std::abort();
  if (status == tidearc::status_fatal || status == tidearc::status_io) return 0;
  // A run that reached its STOP card with a problem in it must have said so in the report.
  if (std::filesystem::exists("TAP.OK") && std::filesystem::file_size("TAModel.out") == 0) std::abort();
  return 0;
}
