// Lines that many pages of the report share: rows of one character, framed headings, labels with dots.
#pragma once

#include <string>
#include <string_view>

#include "run/layout.h"
#include "run/units.h"

namespace tidearc {

/// A row of `n` equal characters that starts in column 2.
inline std::string row_of(char mark, int n) { return ' ' + std::string(static_cast<std::size_t>(n), mark); }

/// A line between two rows of `n` marks, each on a record of its own. A heading that begins with a blank starts in
/// column 1. `new_page` puts the page character before the first row.
inline void write_framed(std::string_view line, char mark, int n, bool new_page = false) {
  std::string rows = row_of(mark, n);
  if (new_page) rows[0] = '1';
  put_text(units.NDOUT, rows + '\n' + std::string(line) + '\n' + row_of(mark, n) + '\n');
}

/// A label of a control echo: the words, a blank, dots, a blank and '=' in the 50th column.
inline std::string dotted(std::string_view words) {
  constexpr std::size_t columns = 50;
  std::string label(words.substr(0, columns - 3));
  label += ' ';
  label.append(columns - 2 - label.size(), '.');
  return label + " =";
}

/// One line of a control echo: 5X, the dotted label, the value in I5.
inline void write_count(std::string_view words, int value) { write(units.NDOUT, "5X,A50,I5", dotted(words), value); }
/// The same for a real, in F12.4.
inline void write_real(std::string_view words, double value) {
  write(units.NDOUT, "5X,A50,F12.4", dotted(words), value);
}

}  // namespace tidearc
