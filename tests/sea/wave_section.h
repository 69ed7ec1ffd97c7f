// The wave section of a deck for tests: cards in, `wave` and the report out.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../support/scratch.h"
#include "model/control.h"
#include "model/gravity.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/workpool.h"
#include "sea/field.h"
#include "sea/wave_state.h"
#include "sea/wavein.h"

namespace tidearc::test {

/// Texts in fields of a width, right-justified.
inline std::string fields(std::size_t width, const std::vector<std::string>& texts) {
  std::string card;
  for (const std::string& text : texts) card += std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
  return card;
}

/// The wave control card.
struct WaveControl {
  std::string IWTY = "1";
  std::string current = "";
  std::string large_displacement = "";
  std::string relative_velocity = "";
  std::string ramp_time = "";
  std::string added_mass = "";
  std::string kinematic_factor = "";
  std::string cutoff = "";
  std::string NORAMP = "";
  std::string debug = "";

  std::string card() const {
    return fields(5, {IWTY, current, large_displacement, relative_velocity}) + fields(10, {ramp_time}) +
           fields(5, {added_mass}) + fields(10, {kinematic_factor, cutoff}) + fields(5, {NORAMP, debug}) + "\n";
  }
};

/// The two cards of a regular wave: 12 m, 12 s in 50 m of water, unless told.
struct RegularWave {
  std::string H = "12.";
  std::string T = "12.";
  std::vector<std::string> direction = {"1.", "0.", "0."};
  std::string crest_distance = "";
  std::string d = "50.";
  std::string g = "";
  std::string peak_time = "";
  std::string upper = "";
  std::string lower = "";
  std::string tolerance = "";
  std::string iterations = "";
  std::string ISTRCH = "";
  std::string order = "";
  std::string NPTS = "";
  std::string force_all = "";
  std::string coefficient_iterations = "";
  std::string current_stretching = "";

  std::string cards() const {
    return fields(10, {H, T, direction[0], direction[1], direction[2], crest_distance, d, g, peak_time}) + "\n" +
           fields(10, {upper, lower, tolerance}) +
           fields(5, {iterations, ISTRCH, order, NPTS, force_all, coefficient_iterations, current_stretching}) + "\n";
  }
};

/// The current header card: times, levels, period code, tolerance, print code.
inline std::string current_header(const std::string& NTIME, const std::string& NLEVEL, const std::string& period = "",
                                  const std::string& tolerance = "", const std::string& print = "") {
  return fields(5, {NTIME, NLEVEL, period}) + fields(10, {tolerance}) + std::string(50, ' ') + fields(5, {print}) +
         "\n";
}
inline std::string tens(const std::vector<std::string>& texts) { return fields(10, texts) + "\n"; }

/// A deck at its wave section, behind a gravity and water card (metres, seconds, tonnes unless changed).
class WaveSection {
 public:
  explicit WaveSection(const std::string& deck) : scratch(deck) {
    units = {};
    run = {};
    output = {};
    wave = {};
    force_scale.index = 99;
    current_now = {};
    storage = {};
    sizes = {};
    sizes.IGRAV = 1;
    reset_gravity();
    gravity.GRAV = 9.81;
    gravity.water_mass = 1.025;
    gravity.water_weight = 1.025 * 9.81;
    pool.allocate(2000000);
  }
  ~WaveSection() {
    pool.release();
    sizes = {};
    run = {};
    wave = {};
    storage = {};
    reset_gravity();
  }
  WaveSection(const WaveSection&) = delete;
  WaveSection& operator=(const WaveSection&) = delete;

  std::string report() const { return trimmed(scratch.report()); }
  bool reports(const std::string& text) const { return report().find(text) != std::string::npos; }
  bool complains(const std::string& text) const { return scratch.errors().find(text) != std::string::npos; }
  /// How often a text stands in the report.
  int times_reported(const std::string& text) const {
    const std::string where = report();
    int count = 0;
    for (auto at = where.find(text); at != std::string::npos; at = where.find(text, at + 1)) ++count;
    return count;
  }

  Scratch scratch;
};

/// Words in an error or warning box, as they stand on the report.
inline std::string framed(char mark, const std::string& line) {
  const std::string row = " " + std::string(130, mark) + "\n";
  return row + line + "\n" + row;
}
inline std::string error_box(const std::string& words) { return framed('F', "     ERROR -----" + words); }
inline std::string warning_text(const std::string& words) { return framed('W', "     WARNING -----" + words); }

}  // namespace tidearc::test
