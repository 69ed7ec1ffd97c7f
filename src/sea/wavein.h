// The wave section of the deck: cards, checks, report, and the solution of the regular wave.
#pragma once

namespace tidearc {

/// Reads, checks and echoes the wave section, in the order of the deck, and leaves a solved wave in `wave`: control
/// card, current table (which it lays into the work pool), cards of the wave type, magnification table. Solves in a
/// data check too.
void WAVEIN();

/// Solves an Airy wave (also for components) or a Stokes wave for H, T_water, d, g of `wave`: sets k, C, L and, for
/// Stokes, F, G, Q. Prints the failure box when the iteration does not come to its end; the last iterate is kept.
void WAVSOL(double tolerance, int iterations);

/// Up to `wave.period_code` rounds of the period in the water: T_water = |(U/C + 1) T_structure|, solved anew.
void solve_period_with_current(double U, double tolerance, int iterations);

/// Warns when the lowest level of the current table lies deeper than d; solve_period_with_current does so for a regular
/// wave, IRRSEA once for its components.
void tell_current_below_bed();

/// Tells a solved wave that is none: without a finite k, C and L no load of it can be formed, and the problem is only
/// checked from now on; with one of them not positive the wave is out of the range of its theory, and the run goes on.
void check_wave_solution();

/// Solves the stream function wave of `order` for H, T_structure, d, g, U of `wave`: NN, NPTS points, X, theta, eta, k,
/// C, L, Q. A height beyond breaking and an iteration that cannot converge end the run.
void SFSOLVE(double tolerance, int iterations, int coefficient_iterations, int order, int force_all);

/// Irregular sea cards (types 4 and 8), components and their table; also at a later DYN2 with time block code 1.
/// @param period_code, period_tolerance  of the period computation with current, for every component
/// @param start_time                     analysis time of the read [s]: phases of user components count from it
/// False when the direction of the sea does not lie on the horizontal plane, which is told; the caller ends the run.
bool IRRSEA(int period_code, double period_tolerance, double start_time = 0.0);

/// Cards of the two-dimensional grid wave (type 6), its file and header; magnification cards follow in the deck.
void read_grid_wave();

}  // namespace tidearc
