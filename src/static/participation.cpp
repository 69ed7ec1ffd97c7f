// Participation cards of a segment: the factor of each load pattern.
#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "model/control.h"
#include "run/layout.h"
#include "run/stops.h"
#include "static/segment.h"
#include "static/segment_cards.h"

namespace tidearc {
namespace {

void print_heading(std::string_view heading) { put_text(units.NDOUT, "\n" + std::string(heading) + "\n"); }

/// Eight factors to a card; a group without patterns still has one card.
void read_factors(std::span<double> factors) {
  if (factors.empty()) {
    std::array<char, 80> card{};
    read(units.NDIN, "20A4", card);
  } else {
    read(units.NDIN, "8F10.0", factors);
  }
}

void read_group(std::string_view heading, std::span<double> factors) {
  read_factors(factors);
  print_heading(heading);
  print_factor_rows(factors);
}

/// The next `count` factors of the segment by running number; advances `made`. Pattern input stops long before the
/// table is full; the limit here only keeps a wrong count from reaching past it.
std::span<double> next_factors(int count, std::size_t& made) {
  const std::span<double> rest = std::span<double>(segment.factor).subspan(made);
  const std::size_t taken = std::min(static_cast<std::size_t>(std::max(count, 0)), rest.size());
  made += taken;
  return rest.first(taken);
}

/// Self weight, buoyancy and static current stand on one card. Only a generated load has a place among the patterns.
void read_generated_group(std::size_t& made) {
  struct Load {
    int generated;
    const char* warning;
  };
  const std::array<Load, 3> loads{{
      {static_loads.ISELFW, " WARNING - SELF WEIGHT HAS NOT BEEN GENERATED, FACTOR IGNORED."},
      {static_loads.IBUOY, " WARNING - BUOYANCY HAS NOT BEEN GENERATED, FACTOR IGNORED."},
      {static_loads.ICURR, " WARNING - STATIC CURRENT HAS NOT BEEN GENERATED, FACTOR IGNORED."},
  }};
  std::array<double, 3> factors{};
  read(units.NDIN, "3F10.0", factors);
  print_heading(" STATIC FORCE PATTERN PARTICIPATION FACTORS");
  print_factor_rows(factors);
  for (std::size_t k = 0; k < loads.size(); ++k) {
    statics.running_total[k] += factors[k];
    if (loads[k].generated != 0) {
      for (double& place : next_factors(1, made)) place = factors[k];
    } else if (factors[k] != 0.0) {
      warning_box(loads[k].warning);
    }
  }
}

}  // namespace

void print_factor_rows(std::span<const double> factors) {
  constexpr std::size_t columns = 6;
  if (factors.empty()) return;
  std::string heads;
  for (std::size_t k = 0; k < std::min(columns, factors.size()); ++k) heads += "  NO.      FACTOR";
  put_text(units.NDOUT, heads + "\n");
  for (std::size_t first = 0; first < factors.size(); first += columns) {
    std::string row;
    for (std::size_t k = first; k < std::min(first + columns, factors.size()); ++k) {
      row += format("I5,F12.5", static_cast<int>(k + 1), factors[k]);
    }
    put_text(units.NDOUT, row + "\n");
  }
}

void read_participation() {
  const StaticLoadBlock& counts = static_loads;
  std::size_t made = 0;
  read_group(" STATIC NODAL FORCE PATTERN PARTICIPATION FACTORS", next_factors(counts.NFPAT, made));
  read_group(" STATIC FOLLOWER FORCE PATTERN PARTICIPATION FACTORS", next_factors(counts.NFOLL, made));
  read_group(" NODAL TEMPERATURE PATTERN PARTICIPATION FACTORS", next_factors(counts.NTPAT, made));
  read_group(" 4-NODE SURFACE PRESSURE PATTERN PARTICIPATION FACTORS", next_factors(counts.NPPAT, made));
  read_generated_group(made);
  const std::span<double> prescribed =
      std::span<double>(prescribed_factors.value).first(prescribed_participation().size());
  read_group(" PRESCRIBED DISPLACEMENT PATTERN PARTICIPATION FACTORS", prescribed);
  print_heading(" STATIC FORCE PATTERN PARTICIPATION FACTORS");
  print_factor_rows(std::span<const double>(segment.factor).first(made));
}

}  // namespace tidearc
