// One group of beams on five nodes: the deck of the input tests, and what its run must tell.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "frame_deck.h"
#include "run/stops.h"

namespace tidearc::test {

/// Three nodes in a row along x, 0, 2 and 4, the first held; node 4 on their line, node 5 above it.
FrameDeck five_nodes(const std::string& group);
/// The group on them, to the STOP card, or with the state kept behind the last macro.
RunResult run_group(const std::string& group);
RunResult run_kept(const std::string& group);

/// The upper row of a message box and the line below it.
std::string boxed(char mark, const std::string& words);
bool has(const std::string& text, const std::string& words);
/// The report tells these words, the error stream this place, and the run ends with the status of its kind.
void expect_stop(const std::string& group, const std::string& words, const std::string& place = "");
void expect_data_error(const std::string& group, const std::string& words, const std::string& place);
void expect_good(const std::string& group, const std::string& words = "");

/// Groups with one section of unit values and no elements yet.
LinearGroup linear();
LargeGroup large(int type = 2);
/// The group with its two usual elements.
template <class Group>
std::string with_elements(Group group) {
  group.element({.I = 1, .J = 2});
  group.element({.I = 2, .J = 3});
  return group.text();
}
std::string replaced(std::string text, const std::string& part, const std::string& by);

/// The lines from the first that contains `words` on.
std::vector<std::string> lines_from(const std::string& report, const std::string& words, std::size_t count);
void expect_lines(const std::vector<std::string>& found, const std::vector<std::string>& expected);

}  // namespace tidearc::test
