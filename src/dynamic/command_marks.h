// The marks of wrong values in the commands of a dynamic macro, and the table that tells what they mean.
#pragma once

#include <string>
#include <string_view>

#include "run/stops.h"

namespace tidearc {

inline constexpr std::string_view no_mark = "  ";
inline constexpr std::string_view node_mark = " *";
inline constexpr std::string_view record_mark = "**";
inline constexpr std::string_view component_mark = "**";  ///< `***` of the table, as far as its field goes
inline constexpr std::string_view constrained_mark = " C";

inline constexpr int no_component = 7;  ///< stands for a wrong one
/// " X ", "XR ", .. of a component 1 to 6, three blanks for no_component.
std::string_view direction_of(int component);

/// Enters data check mode for a wrong value on the card read last; `words` go to the error stream.
void note_mark(Columns where, const std::string& words);
/// What the marks mean; printed behind a list in which there was one.
void print_mark_table();

}  // namespace tidearc
