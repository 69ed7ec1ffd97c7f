// All wave loads of a jacket at a time, gather and scatter included: seconds a step beside what is expected, and the
// share of it that the water motion alone takes.
//
// The model is that of decks/jacket_wave (112 tubes), with three points a member; each step has a new time. Every
// figure is the best of several runs by processor time.
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include "elements/contract/group.h"
#include "elements/contract/pass.h"
#include "folder.h"
#include "machine.h"
#include "roof/datain.h"
#include "roof/startup.h"
#include "run/run_block.h"
#include "run/workpool.h"
#include "sea/field.h"
#include "solve/arrays.h"

namespace tidearc::bench {
namespace {

constexpr double bar = 150.0E-6;  // a step, stream function [s]
constexpr int points = 3;
constexpr int steps = 200;
constexpr int tries = 20;
constexpr std::string_view stream_problem = " START  P4.314  JACKET IN A STREAM FUNCTION WAVE";
constexpr std::string_view group_card = "    1    6    4    1    4";
constexpr std::string_view wave_card = "    5    0    0    0        0.    0";

void put(std::string& text, std::string_view card, std::size_t column, char digit) {
  const std::size_t at = text.find(card);
  if (at != std::string::npos) text[at + column] = digit;
}

/// The problem with the stream function, with another wave type and number of points; empty when the deck has changed.
std::string jacket_deck(char IWTY) {
  std::stringstream all;
  all << std::ifstream(TIDEARC_DECKS "/jacket_wave/TAModel.inp").rdbuf();
  const std::string text = all.str();
  const std::size_t first = text.find(stream_problem);
  if (first == std::string::npos) return {};
  std::string problem = text.substr(first);
  if (problem.find(group_card) == std::string::npos || problem.find(wave_card) == std::string::npos) return {};
  put(problem, group_card, 14, '0' + points);
  put(problem, wave_card, 4, IWTY);
  return problem;
}

/// Water motion at as many points as the members have.
void ask_water(int members) {
  const auto kinematics = wave_family(wave.IWTY).kinematics;
  for (int step = 0; step < steps; ++step) {
    for (int i = 0; i < points * members; ++i) {
      WaterMotion motion;
      kinematics({0.1 * i, -0.05 * i, -0.14 * i}, 0.05 * step, wave.lower_current, {}, motion);
      sink += motion.velocity[0];
    }
  }
}

void measure(const char* name, char IWTY) {
  const Folder folder;
  std::ofstream("TAModel.inp") << jacket_deck(IWTY);
  start_process("20M");
  pool.allocate(run.MTOT);
  DATAIN();
  const auto form = [] {
    for (int step = 0; step < steps; ++step) form_wave_loads(0.05 * step, false, arrays.WAVE);
  };
  const double loads = best_of(tries, nothing, form) / steps;
  const double water = best_of(tries, nothing, [] { ask_water(112); }) / steps;
  std::printf("wave loads of a jacket, %-16s %3d elements  %6.1f us a step (water motion %5.1f)  bar %5.1f  %s\n", name,
              element_counts.NELTOT, 1.0E6 * loads, 1.0E6 * water, 1.0E6 * bar, loads <= bar ? "met" : "MISSED");
  std::fflush(stdout);
  reset_process();
}

}  // namespace
}  // namespace tidearc::bench

int main() {
  using tidearc::bench::measure;
  if (tidearc::bench::jacket_deck('5').empty()) {
    std::printf("wave loads of a jacket: decks/jacket_wave is not as expected\n");
    return 0;
  }
  measure("Airy", '1');
  measure("Stokes", '2');
  measure("stream function", '5');
}
