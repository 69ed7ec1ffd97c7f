// Runs the whole process on a deck in a scratch folder and looks at what it leaves there.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>

#include "../support/scratch.h"
#include "../support/truss_deck.h"
#include "roof/driver.h"
#include "roof/startup.h"
#include "run/stops.h"

namespace tidearc::test {

/// A folder with a deck; run() may be called more than once.
class ProcessRun {
 public:
  explicit ProcessRun(const std::string& deck) : scratch_(deck) {
    flush_all_units();
    for (const char* made : {"TAP.err", "TAModel.out"}) std::filesystem::remove(made);
  }
  ~ProcessRun() { reset_process(); }
  ProcessRun(const ProcessRun&) = delete;
  ProcessRun& operator=(const ProcessRun&) = delete;

  /// Exit status of the process.
  int run(const std::string& argument = "1M") {
    return stop_of([&] {
             start_process(argument);
             DRIVER();
             CLOSUP();
           })
        .value_or(-1);
  }
  std::string report() const { return trimmed(scratch_.report()); }
  std::string errors() const { return scratch_.errors(); }
  std::string contents(const std::string& file) const { return scratch_.contents(file); }
  static bool exists(const std::string& file) { return std::filesystem::exists(file); }
  static void put(const std::string& file, const std::string& bytes) { std::ofstream(file, std::ios::binary) << bytes; }

 private:
  Scratch scratch_;
};

/// Two nodes, one elastic bar, one load of 1 along X; macros are to be added.
inline TrussDeck bar_without_macros() { return loaded_bar(1); }

inline bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
inline int count(const std::string& text, const std::string& part) {
  int found = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
  return found;
}

}  // namespace tidearc::test
