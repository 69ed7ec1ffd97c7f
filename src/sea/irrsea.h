// Cards of the irregular sea, as IRRSEA's own files share them.
#pragma once

#include <array>

namespace tidearc {

enum ComponentCode : int {
  components_generated = 0,
  components_one_direction = 1,  ///< user defined
  components_directions = 2,     ///< user defined, each with its direction
};

/// What the first card says beside what it leaves in `wave`.
struct SeaCard {
  double limit = 0.0;            ///< depth of the lower force limit under mean water level             [length]
  double peak_period = 0.0;      ///< fixed observer: printed                                                [s]
  double apparent_period = 0.0;  ///< moving observer: positive, the wave is solved for it at the end        [s]
  bool shift_phases = true;      ///< phases of user components count from the start of the time block
};

/// How components are made and solved.
struct ComponentCard {
  int generation = components_generated;  ///< a ComponentCode; any other value generates
  int spectrum = 0;                       ///< 1 user defined, else Pierson-Moskowitz
  int iterations = 0;                     ///< of the wave solution                                          [-]
  double tolerance = 0.0;                 ///< of it                                                         [-]
};

/// Reads, checks and echoes the first card; sets depth, stretching and time block of `wave`.
SeaCard read_sea_card();
/// Reads, checks and echoes the second card.
ComponentCard read_component_card();

/// What the components amount to.
struct SeaSum {
  double square = 0.0;     ///< of the significant height                                             [length2]
  double amplitude = 0.0;  ///< sum of all amplitudes                                                  [length]
  bool on_plane = true;    ///< the direction of the sea is horizontal
};

/// Reads the cards behind the second one and fills `components`, wave.NCOMP and the direction of `wave`; prints the
/// table. @param start_time  time from which phases of user components count [s]
SeaSum read_components(const ComponentCard& card, double start_time);

/// A component on its way into the table.
struct ComponentData {
  double f = 0.0;                     ///< frequency related to the structure                              [1/s]
  double T = 0.0;                     ///< its period                                                        [s]
  double height = 0.0;                ///< twice the amplitude                                          [length]
  double phase = 0.0;                 ///< [degrees]
  std::array<double, 3> direction{};  ///< unit or zero
};
/// Solves a component for its wave number, adds it to the table and prints its line.
void add_component(const ComponentData& data, const ComponentCard& card);
/// Heading of the lines of add_component.
void print_component_heading();

}  // namespace tidearc
