// Load vectors of a segment: every pattern of NT10 at its factor, in the order of the deck.
#include <algorithm>
#include <cstddef>

#include "model/control.h"
#include "model/patterns.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/vectors.h"
#include "sea/sea_factors.h"
#include "solve/arrays.h"
#include "static/segment.h"

namespace tidearc {
namespace {

/// The scratch row of pattern p, into which its record is read.
Reals pattern_row(int p) { return pool.reals(arrays.PATTERN + ITWO * NEQ1() * (p - 1), NEQ1()); }

std::size_t place_of(int p) { return static_cast<std::size_t>(p - 1); }

/// Reported forces of members leave out what acts along them.
void keep_sea_factor(int type, double factor) {
  if (type == pattern_buoyancy) sea_factors.buoyancy = factor;
  if (type == pattern_current) sea_factors.current = factor;
}

}  // namespace

void LODSEG() {
  const Reals increment = equation_vector(arrays.RINC);
  const ConstReals U = equation_vector(arrays.U);
  clear_vector(arrays.RINC);
  statics.moving_loads = false;
  FILE(units.NT10, "REWI");
  for (int p = 1; p <= static_loads.NMADE; ++p) {
    const PatternType type = add_next_pattern(segment.factor[place_of(p)], U, pattern_row(p), increment);
    if (type == pattern_follower || type == pattern_surface) statics.moving_loads = true;
  }
}

void LODLVL(double level) {
  const Reals load = equation_vector(arrays.P);
  const ConstReals U = equation_vector(arrays.U);
  clear_vector(arrays.P);
  if (patterns.have_temperatures) {
    for (const int values : {patterns.KTEMP, patterns.KPRES})
      RZERO(pool.reals(values, sizes.NUMNP).data(), sizes.NUMNP);
  }
  FILE(units.NT10, "REWI");
  for (int p = 1; p <= static_loads.NMADE; ++p) {
    const double factor = level * segment.factor[place_of(p)] + statics.accumulated[place_of(p)];
    keep_sea_factor(patterns.type[place_of(p)], factor);
    if (patterns.type[place_of(p)] == pattern_temperature) {
      add_next_temperature(factor);
    } else {
      add_next_pattern(factor, U, pattern_row(p), load);
    }
  }
}

}  // namespace tidearc
