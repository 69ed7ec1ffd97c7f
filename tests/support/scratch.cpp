#include "scratch.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "run/stops.h"
#include "run/units.h"

namespace tidearc::test {
namespace fs = std::filesystem;

namespace {
std::string new_folder() {
  std::string pattern = (fs::temp_directory_path() / "tidearc-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  return pattern;
}
[[noreturn]] void throw_stopped(int status) { throw Stopped{status}; }
}  // namespace

Scratch::Scratch(const std::string& deck) : folder_(new_folder()), back_(fs::current_path().string()) {
  fs::current_path(folder_);
  std::ofstream("TAModel.inp", std::ios::binary) << deck;
  stop_process = throw_stopped;
  open_formatted(UNIT_ERROR, "TAP.err", OpenMode::fresh);
  open_formatted(units.NDIN, "TAModel.inp", OpenMode::existing);
  open_formatted(units.NDOUT, "TAModel.out", OpenMode::fresh);
}

Scratch::~Scratch() {
  flush_all_units();
  fs::current_path(back_);
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

std::string Scratch::contents(const std::string& file) const {
  flush_formatted_units();
  std::ifstream in(folder_ + "/" + file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}
std::string Scratch::report() const { return contents("TAModel.out"); }
std::string Scratch::errors() const { return contents("TAP.err"); }

std::optional<int> stop_of(const std::function<void()>& action) {
  stop_process = throw_stopped;
  try {
    action();
  } catch (const Stopped& stopped) {
    return stopped.status;
  }
  return std::nullopt;
}

std::string trimmed(const std::string& text) {
  std::istringstream in(text);
  std::string result;
  std::string line;
  while (std::getline(in, line)) {
    line.erase(line.find_last_not_of(' ') + 1);
    result += line + "\n";
  }
  return result;
}

std::vector<std::string> lines_of(const std::string& text) {
  std::istringstream in(trimmed(text));
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

}  // namespace tidearc::test
