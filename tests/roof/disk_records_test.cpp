// Whole jobs whose element records stream through files give the digits of the core job.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "run_deck.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

/// The problem with another storage card, the third behind its first card.
std::string with_storage(const std::string& problem, const std::string& storage) {
  std::size_t at = 0;
  for (int line = 0; line < 3; ++line) at = problem.find('\n', at) + 1;
  return problem.substr(0, at) + storage + problem.substr(problem.find('\n', at));
}

/// What the analyses have printed, problem by problem: from the head of the macro to the time log.
std::string analyses(const std::string& report) {
  std::string found;
  std::size_t at = 0;
  while ((at = report.find(" STATIC ANALYSIS CONTROL INFORMATION", at)) != std::string::npos) {
    const std::size_t end = report.find(" E X E C U T I O N", at);
    found += report.substr(at, end - at);
    at = end;
  }
  return found;
}

/// The progress file without the lines that tell the date.
std::string progress(const std::string& text) {
  std::string found;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at) + 1;
    const std::string line = text.substr(at, end - at);
    if (line.find("TIDEARC Version") == std::string::npos) found += line;
    at = end;
  }
  return found;
}

/// Two bars in line that yield one after the other and harden, the second at its own pace.
TrussDeck two_bars(const SegmentCards& segment) {
  TrussDeck deck = nodes_in_a_row(20.0);
  deck.material(1000, 0.1, 1.0, 1.0);
  deck.material(1000, 0.05, 1.25, 1.25);
  deck.section(1);
  deck.bar(1, 2, 1);
  deck.bar(2, 3, 2);
  deck.bar(1, 3, 2, 1, 1);
  deck.pattern(2, 0.5, 0, 0);
  deck.pattern(3, 2.0, 0, 0);
  SegmentCards back = segment;
  back.factors = {-2.5, -1.5};
  SegmentCards first = segment;
  first.factors = {1.0, 1.0};
  deck.stat({first, back});
  return deck;
}

const std::string restep_card = "       0.5     0.001    2    3       1.5       1.0    0                          0.15";

/// Segments that walk every road of the element states: iterations, state updates within a step, resteps, events.
std::vector<SegmentCards> roads() {
  std::vector<SegmentCards> all(5);
  for (SegmentCards& s : all) {
    s.STEP0 = 0.25;
    s.NSTEPS = 30;
    s.MAXIT = 12;
    s.KPRINT = 3;
  }
  all[1].KISTA = 2;
  all[2].KTERM = 0;
  all[2].card4 = restep_card;
  all[2].KISTA = 1;
  all[3].KEVENT = 1;
  all[3].KTERM = 0;
  all[3].card4 = restep_card;
  all[4].KTERM = 0;
  all[4].card4 = restep_card;
  all[4].KISTF = 0;
  all[4].KSSTF = 3;
  return all;
}

TEST(DiskRecords, GiveTheDigitsOfTheCoreJobOnEveryRoad) {
  int resteps = 0, events = 0, updates = 0;
  for (const SegmentCards& road : roads()) {
    const std::string problem = two_bars(road).problem();
    const RunResult core = run_deck(problem + " STOP\n");
    const RunResult disk = run_deck(with_storage(problem, " DISK") + " STOP\n");
    EXPECT_EQ(core.status, disk.status) << disk.errors;
    EXPECT_NE(disk.report.find("OVERALL STORAGE SCHEME ......................... = DISK"), std::string::npos);
    EXPECT_EQ(analyses(core.report), analyses(disk.report));
    EXPECT_FALSE(analyses(disk.report).empty());
    EXPECT_EQ(progress(core.progress), progress(disk.progress));
    resteps += count_of(disk.report, "STATE AT BEGINNING OF STEP RECOVERED");
    events += count_of(disk.report, "EVENT PREDICTED");
    updates += count_of(disk.report, "STATE UPDATED");
  }
  EXPECT_GT(resteps, 2) << "the decks must walk the roads they are here for";
  EXPECT_GT(events, 2);
  EXPECT_GT(updates, 20);
}

TEST(DiskRecords, ProblemsOfOneDeckMayChangeTheScheme) {
  const std::vector<SegmentCards> all = roads();
  const std::string first = two_bars(all[2]).problem();
  TrussDeck bar = loaded_bar(1.5, 0.1, 1.0);
  bar.stat({all[1]});
  const std::string second = bar.problem();
  const RunResult core = run_deck(first + second + first + " STOP\n");
  for (const auto& [one, two, three] : {std::array{" DISK", " DISK", " DISK"}, std::array{" DISK", " CORE", " DISK"},
                                        std::array{" CORE", " DISK", " CORE"}}) {
    const RunResult mixed =
        run_deck(with_storage(first, one) + with_storage(second, two) + with_storage(first, three) + " STOP\n");
    EXPECT_EQ(mixed.status, 0) << mixed.errors;
    EXPECT_EQ(analyses(core.report), analyses(mixed.report)) << one << two << three;
  }
}

}  // namespace
}  // namespace tidearc::test
