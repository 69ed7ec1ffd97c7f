// Number fields of record layouts: one value to exactly `width` columns and back. No record, no unit, no allocation;
// digits are those of the exact binary value, whatever the floating-point mode of the process.
#pragma once

#include <span>
#include <string_view>

#include "run/layout_parse.h"

namespace tidearc {

/// Writes an integer right-justified over the whole field; asterisks when it does not fit.
void put_integer(std::span<char> field, int value);

/// Writes a real over the whole field under an F, E, D or G edit (its width is the field's size).
/// @param scale  the scale factor P in force
/// A value that does not fit, or an edit that leaves no digits to print, fills the field with asterisks.
void put_real(std::span<char> field, const Edit& edit, int scale, double value);

/// Room for the longest text of list_real.
inline constexpr int list_real_columns = 32;
/// A real as 1P,E23.15 without its leading blanks. Returns the part of `room` that was used.
std::string_view list_real(std::span<char, list_real_columns> room, double value);

/// Reads an integer field: blanks anywhere are ignored, an empty field is zero. False for anything but an optional
/// sign and digits, and for a value outside 32 bits.
bool get_integer(std::string_view field, int& value);

/// Reads a real field: blanks anywhere are ignored, an empty field is zero, there is no implied decimal point. The
/// exponent is led in by E, D (either case) or its sign alone. False for anything else, or a value beyond the largest
/// real; one below the smallest reads as zero.
/// @param scale  the scale factor P in force: a field without an exponent is divided by ten to this power
bool get_real(std::string_view field, int scale, double& value);

}  // namespace tidearc
