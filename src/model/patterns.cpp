// The static load pattern section: its storage, the order of its readers, the limit on the number of patterns.
#include "model/patterns.h"

#include "model/masses.h"
#include "model/pattern_records.h"
#include "run/layout.h"
#include "run/vectors.h"
#include "run/workpool.h"

namespace tidearc {

namespace {

/// Room for the node vectors while patterns are read, and the integers that stand behind them in the storage plan.
void carve_node_vectors() {
  patterns.KTEMP = carve_reals(sizes.NUMNP);
  patterns.KPRES = carve_reals(sizes.NUMNP);
  carve_integers(NEQ1());
  check_storage(5);
}

/// Node vectors back to zero: the analyses fill them. Without a temperature pattern only the first keeps its room.
void settle_node_vectors() {
  RZERO(pattern_temperatures().data(), sizes.NUMNP);
  RZERO(pattern_pressures().data(), sizes.NUMNP);
  if (!patterns.have_temperatures) storage.NEXT = patterns.KPRES;
}

void read_patterns() {
  for (int i = 1; i <= static_loads.NFPAT; ++i) read_nodal_pattern();
  for (int i = 1; i <= static_loads.NFOLL; ++i) read_follower_pattern();
  for (int i = 1; i <= static_loads.NTPAT; ++i) read_temperature_pattern();
  for (int i = 1; i <= static_loads.NPPAT; ++i) read_surface_pattern();
  if (static_loads.ISELFW != 0) write_generated_pattern(pattern_self_weight);
  if (static_loads.IBUOY != 0) BUOYPAT();
  if (static_loads.ICURR != 0) CURRPAT();
}

void write_none() { write(units.NDOUT, "/,' (NONE)'"); }

/// This limit ends the process at once, without the close-down.
void check_number_of_patterns() {
  if (static_loads.NMADE <= MAXPAT) return;
  write(units.NDOUT,
        "/,5X,'ERROR! PROGRAM STOPS BECAUSE NUMBER OF STATIC LOADS ',I3,' EXCEEDING NUMBER OF ALLOWABLES ',I3,'.'",
        static_loads.NMADE, MAXPAT);
  complain(not_on_deck, format("I8,' static load patterns, at most',I4,' are allowed'", static_loads.NMADE, MAXPAT));
  flush_all_units();
  end_process(status_fatal);
}

}  // namespace

void count_pattern(PatternType type, const NodeValues& resultant) {
  ++static_loads.NMADE;
  if (static_loads.NMADE > MAXPAT) return;
  const auto p = static_cast<std::size_t>(static_loads.NMADE - 1);
  patterns.type[p] = type;
  patterns.resultant[p] = resultant;
}

// The element-stage vector is free once the groups have been read.
Reals pattern_vector() { return pool.reals(masses.KEDATP, NEQ1()); }
Reals pattern_temperatures() { return pool.reals(patterns.KTEMP, sizes.NUMNP); }
Reals pattern_pressures() { return pool.reals(patterns.KPRES, sizes.NUMNP); }

void stop_on_load_command(Columns where, std::string_view words) {
  complain(where, words);
  CLOSUP();
}

void PATTIN() {
  static_loads.NMADE = 0;
  patterns.have_temperatures = false;
  patterns.type = {};
  patterns.resultant = {};
  carve_node_vectors();
  FILE(units.NT10, "REWI");

  write(units.NDOUT, "'1',/,' STATIC FORCE PATTERN SPECIFICATION COMMANDS'");
  if (static_loads.NPAT == 0) {
    write_none();
  } else {
    read_patterns();
    if (static_loads.NMADE == 0) write_none();
    check_number_of_patterns();
  }
  settle_node_vectors();
}

}  // namespace tidearc
