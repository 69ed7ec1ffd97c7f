// What the whole run shares: its mode, its titles, its times, and what its exit status will tell.
#pragma once

#include <array>
#include <type_traits>

namespace tidearc {

/// Written by the entry, by DRIVER and by the first card of a problem; everybody else reads.
struct RunBlock {
  int MTOT = 1500000000;              ///< words of the work array                                        [-]
  int RUNMOD = 0;                     ///< 0 execution, 1 data check only, 3 stop requested                [-]
  bool check_run = false;             ///< the problem was opened by a CHECK card
  double DATVER = 0.0;                ///< number in the deck's version tag                                [-]
  std::array<char, 4> MACTXT{};       ///< keyword of the current macro card
  std::array<char, 72> MACTTL{};      ///< title of the current macro card
  std::array<char, 4> LASTMA{};       ///< keyword of the macro last completed
  std::array<char, 72> TITLE{};       ///< title of the problem, version tag blanked
  std::array<double, 13> TIMTAB{};    ///< disk and CPU seconds of six activities, clock base in hours     [s, h]
  int NRESPR = 0;                     ///< response reports of the current macro                           [-]
  int NWAVNO = 0;                     ///< wave numbers found                                              [-]
  bool had_data_error = false;        ///< some problem of the run had a data error
  bool had_terminated_macro = false;  ///< some macro of an execution run ended as TERMINATED
};
inline RunBlock run;
static_assert(std::is_trivially_copyable_v<RunBlock>);

/// Sets the job's fatal flag: later macros of the problem only read and echo their cards.
inline void set_fatal_flag() { run.RUNMOD = run.RUNMOD == 3 ? 3 : 1; }
inline bool executing() { return run.RUNMOD == 0; }

}  // namespace tidearc
