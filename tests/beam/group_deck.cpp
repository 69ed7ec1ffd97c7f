#include "group_deck.h"

#include <algorithm>
#include <cstddef>

#include "support/scratch.h"

namespace tidearc::test {

FrameDeck five_nodes(const std::string& group) {
  FrameDeck deck;
  for (const double x : {0.0, 2.0, 4.0, 10.0}) deck.node(x, 0, 0);
  deck.node(1, 0, 3);
  deck.fix(1, "111111");
  deck.fix(4, "111111");
  deck.fix(5, "111111");
  deck.group(group);
  deck.load(2, {0, 0, 0, 0, 0, 0});
  deck.stat({one_step()});
  return deck;
}

RunResult run_group(const std::string& group) { return run_deck(five_nodes(group).text()); }
RunResult run_kept(const std::string& group) { return run_static(five_nodes(group).text()); }
std::string boxed(char mark, const std::string& words) {
  std::string rows(130, mark);
  rows += '\n';
  rows += words;
  return rows;
}
bool has(const std::string& text, const std::string& words) { return text.find(words) != std::string::npos; }
void expect_stop(const std::string& group, const std::string& words, const std::string& place) {
  const RunResult run = run_group(group);
  EXPECT_EQ(run.status, status_fatal) << words;
  EXPECT_TRUE(has(run.report, words)) << run.report;
  EXPECT_TRUE(has(run.errors, place)) << run.errors;
}

void expect_data_error(const std::string& group, const std::string& words, const std::string& place) {
  const RunResult run = run_group(group);
  EXPECT_EQ(run.status, status_data_error) << words;
  EXPECT_TRUE(has(run.report, words)) << run.report;
  EXPECT_TRUE(has(run.errors, place)) << run.errors;
}

void expect_good(const std::string& group, const std::string& words) {
  const RunResult run = run_group(group);
  EXPECT_EQ(run.status, status_good) << run.errors;
  EXPECT_TRUE(has(run.report, words)) << words;
}

LinearGroup linear() {
  LinearGroup group;
  group.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1});
  return group;
}

LargeGroup large(int type) {
  LargeGroup group;
  group.ITYPE = type;
  group.section({.A = 1, .IY = 1, .IZ = 1, .J = 1});
  return group;
}

std::string replaced(std::string text, const std::string& part, const std::string& by) {
  const std::size_t at = text.find(part);
  EXPECT_NE(at, std::string::npos) << part;
  return text.replace(at, part.size(), by);
}

std::vector<std::string> lines_from(const std::string& report, const std::string& words, std::size_t count) {
  const std::vector<std::string> all = lines_of(report);
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (all[i].find(words) == std::string::npos) continue;
    return {all.begin() + static_cast<std::ptrdiff_t>(i),
            all.begin() + static_cast<std::ptrdiff_t>(std::min(i + count, all.size()))};
  }
  return {};
}

void expect_lines(const std::vector<std::string>& found, const std::vector<std::string>& expected) {
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t i = 0; i < found.size(); ++i) EXPECT_EQ(found[i], expected[i]);
}

}  // namespace tidearc::test
