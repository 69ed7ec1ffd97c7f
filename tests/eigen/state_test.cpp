// What the eigenvalue analysis shares with the rest of a job: storage schemes, element records, other macros.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "../roof/process_fixture.h"
#include "elements/contract/group.h"
#include "roof/datain.h"
#include "run/run_block.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "spring_deck.h"
#include "support/run_deck.h"

namespace tidearc {
namespace {

using namespace test;

RunResult run_of(const SpringDeck& deck) {
  RunResult run = run_deck(deck.text());
  run.report = trimmed(run.report);
  return run;
}

TEST(StorageSchemes, GiveTheSameModes) {
  SpringDeck deck = spring_chain(12, 7.0, 2.0);
  deck.want(4);
  deck.eign(1, 30);
  const auto core = run_of(deck);
  const auto tail = [](const std::string& report) { return report.substr(report.find("STIFFNESS FORMED")); };
  const auto modes = [&](const std::string& report) {
    const std::string t = tail(report);
    return t.substr(0, t.find("T I M E"));
  };
  ASSERT_EQ(core.status, 0);
  for (const char* storage : {" DISK SYMM         0", " CORE USYM         0", " DISK USYM         0"}) {
    deck.storage = storage;
    const auto other = run_of(deck);
    EXPECT_EQ(other.status, 0) << storage << other.errors;
    EXPECT_EQ(modes(other.report), modes(core.report)) << storage;
  }
}

TEST(StorageSchemes, OfRenumberedNodesGiveTheSameModes) {
  SpringDeck deck;  // a chain whose points are numbered odd ones first
  constexpr int n = 9;
  std::vector<int> node(n + 2);
  for (const int parity : {1, 0})
    for (int i = 0; i <= n + 1; ++i) {
      if (i % 2 != parity) continue;
      const bool wall = i == 0 || i == n + 1;
      node[static_cast<std::size_t>(i)] = deck.point(i, 0, 0, wall ? "111111" : "011111");
      if (!wall) deck.mass(node[static_cast<std::size_t>(i)], 1.0 + i);
    }
  for (std::size_t i = 0; i <= n; ++i) deck.spring(node[i], node[i + 1], 5.0);
  deck.want(3);
  deck.eign(1, 40);
  const auto plain = printed_modes(run_of(deck).report);
  deck.IBANDW = 5;
  const RunResult renumbered = run_of(deck);
  ASSERT_EQ(renumbered.status, 0) << renumbered.errors;
  EXPECT_TRUE(contains(renumbered.report, " DISPLACEMENT CODES (RENUMBERED)"));
  const auto modes = printed_modes(renumbered.report);
  ASSERT_EQ(modes.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(modes[i].circular / plain[i].circular, 1.0, 1e-3);
    for (std::size_t k = 0; k < n + 2; ++k) EXPECT_NEAR(modes[i].shape[k][0], plain[i].shape[k][0], 1e-3);
  }
}

TEST(ElementRecords, GoOntoTheEigenvalueFile) {
  SpringDeck deck = spring_chain(3, 1.0, 1.0);
  deck.storage = " DISK SYMM         0";
  ProcessRun process(deck.text());
  ASSERT_EQ(process.run("4M"), 0) << process.errors();
  EXPECT_TRUE(contains(process.report(), " SUBROUTINE RSAOUT, KEDAT,LSOFAR,NELGR= "));
  EXPECT_TRUE(contains(process.report(), "   GROUP 1     NUMBER OF ELEMENTS= 4\n"));
  const std::string file = process.contents("TAP24");
  const std::size_t header = 4 * 2022 + 8, element = 4 * 358 + 8;
  ASSERT_EQ(file.size(), header + 4 * element);
  for (int i = 0; i < 4; ++i)
    EXPECT_EQ(file[header + static_cast<std::size_t>(i) * element + 4], i + 1) << "each record begins with its number";
  EXPECT_EQ(file[4], 1) << "the header begins with the type";
}

/// Data input of a deck with four elements leaves their records on the eigenvalue file, one behind the other.
void expect_four_records(const SpringDeck& deck) {
  ProcessRun process(deck.text());
  ASSERT_FALSE(stop_of([] {
    start_process("4M");
    pool.allocate(run.MTOT);
    DATAIN();
  }));
  FILE(UNIT_EIGEN, "REWI");
  GroupRecord header;
  FILE(UNIT_EIGEN, "READ", group_words, &header);
  EXPECT_EQ(header.NUMEL, 4);
  for (int element = 1; element <= header.NUMEL; ++element) {
    std::vector<Word> record(static_cast<std::size_t>(header.LEI));
    FILE(UNIT_EIGEN, "READ", header.LEI, record.data());
    EXPECT_EQ(record[0], element);
  }
}

TEST(ElementRecords, OfACoreJobAreTheSame) {
  SpringDeck deck = spring_chain(3, 1.0, 1.0);
  expect_four_records(deck);
}

std::string eigen_file_of(const SpringDeck& deck, int status = 0) {
  ProcessRun process(deck.text());
  EXPECT_EQ(process.run("4M"), status) << process.errors();
  EXPECT_EQ(contains(process.report(), " SUBROUTINE RSAOUT"), deck.IEIGN == 1);
  return process.contents("TAP24");
}

TEST(ElementRecords, OfADataCheckAreThoseOfTheRun) {
  SpringDeck deck = spring_chain(3, 1.0, 1.0);
  deck.storage = " DISK SYMM         0";
  const std::string executed = eigen_file_of(deck);
  deck.command = "CHEC";
  const std::string checked = eigen_file_of(deck);
  EXPECT_FALSE(checked.empty());
  EXPECT_TRUE(checked == executed);
}

TEST(ElementRecords, OfACoreDataCheckAreThere) {
  SpringDeck deck = spring_chain(3, 1.0, 1.0);
  deck.command = "CHEC";
  expect_four_records(deck);
}

TEST(ElementRecords, AreNotWrittenBehindADataErrorOrWithoutTheCode) {
  SpringDeck deck = spring_chain(3, 1.0, 1.0);
  deck.storage = " DISK SYMM         0";
  SpringDeck faulty = deck;
  faulty.spring(1, 9, 1.0);  // there is no node 9
  EXPECT_EQ(eigen_file_of(faulty, 3), "");
  faulty.command = "CHEC";
  EXPECT_EQ(eigen_file_of(faulty, 3), "");
  deck.IEIGN = 0;
  deck.macros = "";
  EXPECT_EQ(eigen_file_of(deck), "");
}

/// A string of two bars of length 1 along X with a mass in its middle that moves across, and tension from supports that
/// are pulled apart.
SpringDeck taut_string() {
  SpringDeck deck;
  const int left = deck.point(0, 0, 0, "111111"), middle = deck.point(1, 0, 0, "001111"),
            right = deck.point(2, 0, 0, "011111");
  deck.spring(left, middle, 1000.0);
  deck.spring(middle, right, 1000.0);
  deck.mass(middle, {0.0, 2.0, 0.0});
  deck.patterns = "    1PULL\n    3" + ten(10.0) + "\n";
  deck.NFPAT = 1;
  return deck;
}

TEST(OtherMacros, LeaveTheStateWhoseTangentCounts) {
  SpringDeck deck = taut_string();
  std::string segment = segment_text(SegmentCards{});
  deck.macros = "STAT\n    1\n" + segment + "EIGN\n\n";
  std::string text = deck.text();
  for (const char* bar : {"    1    1    2    1    1\n", "    2    2    3    1    1\n"}) {
    const std::string with_geometry = std::string(bar).substr(0, 25) + std::string(10, ' ') + "    1\n";
    ASSERT_NE(text.find(bar), std::string::npos);
    text.replace(text.find(bar), std::string(bar).size(), with_geometry);
  }
  const RunResult run = run_deck(text);
  ASSERT_EQ(run.status, 0) << run.errors;
  const auto modes = printed_modes(run.report);
  ASSERT_EQ(modes.size(), 1U);
  // N/L on both sides, N = 10, L = 1 stretched by N/k = 0.01
  EXPECT_NEAR(modes[0].circular / std::sqrt(2.0 * 10.0 / 1.01 / 2.0), 1.0, 2e-3);
}

TEST(OtherMacros, GoOnFromTheStateAfterwards) {
  SpringDeck deck = spring_chain(3, 10.0, 1.0);
  deck.patterns = "    1PULL\n    2" + ten(1.0) + "\n";
  deck.NFPAT = 1;
  SegmentCards segment;
  const std::string stat = "STAT\n    1\n" + segment_text(segment);
  deck.macros = stat + stat;
  const RunResult plain = run_deck(deck.text());
  ASSERT_EQ(plain.status, 0) << plain.errors;
  deck.macros = stat + "EIGN\n\n" + stat + "EIGN\n\n";
  const RunResult mixed = run_deck(deck.text());
  ASSERT_EQ(mixed.status, 0) << mixed.errors;
  EXPECT_EQ(displacement(mixed.report, " X", 2), displacement(plain.report, " X", 2));
  EXPECT_NE(displacement(mixed.report, " X", 2), 0.0);
}

TEST(OtherMacros, PrescribedEquationsAreFreeInTheModes) {
  SpringDeck deck = spring_chain(1, 8.0, 1.0);
  deck.NZDISP = 1;
  deck.patterns = "    1   HELD\n    2    1" + ten(0.5) + "\n";
  SegmentCards segment;
  segment.factors = {};
  segment.pfactors = {1.0};
  deck.macros = "STAT\n    1\n" + segment_text(segment) + "EIGN\n\n";
  const RunResult run = run_deck(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  const auto modes = printed_modes(run.report);
  ASSERT_EQ(modes.size(), 1U);
  EXPECT_EQ(modes[0].circular, 4.0);
}

TEST(OtherMacros, AProblemDoesNotSeeTheCardOfTheOneBefore) {
  SpringDeck first = oscillator(), second = oscillator();
  first.want(1, 7.0);
  second.IEIGN = 0;
  second.macros = "";
  EXPECT_EQ(run_deck(first.problem() + second.text()).status, 0);
}

}  // namespace
}  // namespace tidearc
