// Vortex-induced vibration of type 27: the cards of a group, kept in its property area.
#pragma once

#include <array>
#include <type_traits>

#include "elements/contract/group.h"
#include "sea/members/wake.h"

namespace tidearc {

inline constexpr int vortex_algorithm = 2;  ///< the only value of kviv
inline constexpr int most_vortex_arguments = 100;
inline constexpr int most_vortex_coefficients = 800;  ///< arguments times columns

/// Property area of a type 27 group.
struct VortexControl {
  int KMOTN;                                     ///< in-plane motion: 0 steady, 1 oscillatory
  int nnc;                                       ///< number of correlated Gauss points
  int iseed;                                     ///< seed of the random shedding
  int nbuf;                                      ///< size of the buffer of past values
  int arguments;                                 ///< of the coefficient table
  int columns;                                   ///< of the coefficient table
  double strouhal;                               ///< Strouhal number; 0: by the Reynolds number           [-]
  double cl0;                                    ///< base lift coefficient                                [-]
  double cd0;                                    ///< base drag coefficient                                [-]
  double trampb;                                 ///< begin of the lift ramp                               [s]
  double trampl;                                 ///< length of the lift ramp                              [s]
  double timrwl;                                 ///< start of the tracking of shedding                    [s]
  double alpha;                                  ///< distribution of the shedding frequency               [-]
  double cutoff;                                 ///< lock-in cutoff                                       [-]
  double blokfac;                                ///< block factor; 0 on the card is 1                     [-]
  char name[2][60];                              ///< names of the coefficient table
  double argument[most_vortex_arguments];        ///< of the coefficients
  double coefficient[most_vortex_coefficients];  ///< row by row: the columns of the first argument, of the second, ..
};
static_assert(std::is_trivially_copyable_v<VortexControl> && std::is_standard_layout_v<VortexControl>);
static_assert(words(sizeof(VortexControl)) <= group_property_words);

inline VortexControl& vortex_control() { return *reinterpret_cast<VortexControl*>(group.properties.data()); }

/// Reads, checks and echoes the vortex card and the coefficient table. An algorithm other than 2, or a table that does
/// not fit, ends the run.
void read_vortex_cards(int KVIV);

/// The cards as the wake takes them; refers to the table in `control`.
WakeLaw wake_law(const VortexControl& control);

}  // namespace tidearc
