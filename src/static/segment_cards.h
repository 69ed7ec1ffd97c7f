// The parts of SEGIN: echo blocks, vector cards, participation cards. Nobody but SEGIN calls them.
#pragma once

#include <string_view>

#include "run/stops.h"

namespace tidearc {

/// The four echo blocks of a segment, of the values in force after the rules of their card.
void echo_solution_card();
void echo_control_card();
void echo_convergence_card();
void echo_restep_card();

/// Stepping, direction and iteration vectors, as far as the segment has them. False when one of them is wrong.
bool read_vectors();

/// Participation cards: the factors of force patterns by their running number on NT10, and of prescribed displacement
/// patterns; warnings for loads that were not generated; the summary table.
void read_participation();

/// A fatal condition in the cards of a segment: a box with the text, a line on the error stream about the deck line
/// read last, and the fatal flag.
void segment_error(Columns where, std::string_view text);

}  // namespace tidearc
