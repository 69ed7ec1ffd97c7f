// Prescribed displacement patterns.
#include "load_model.h"
#include "model/pattern_records.h"

namespace tidearc::test {
namespace {

/// The next pattern of NT10: its header, and its vector.
PatternHeader next_prescribed(std::vector<double>& vector) {
  PatternHeader header{};
  FILE(units.NT10, "READ", 12, &header);
  vector.assign(static_cast<std::size_t>(header.length / 2), 0.0);
  FILE(units.NT10, "READ", header.length, vector.data());
  return header;
}

std::string title_of(const PatternHeader& header) { return {header.title.data(), header.title.size()}; }

TEST(PrescribedDisplacements, NoneAtAllPrintNone) {
  LoadModel model("", row_of_nodes(2));
  model.number();
  PDISIN();
  EXPECT_EQ(trimmed(model.scratch.report()), "1\n PRESCRIBED DISPLACEMENT PATTERN SPECIFICATION COMMANDS\n\n (NONE)\n");
}

TEST(PrescribedDisplacements, MarkTheEquationsThatAPatternLeavesFree) {
  LoadModel model(
      "    2   SETTLEMENT OF THE LEFT SUPPORT AND MORE THAN FORTY COLUMNS\n"
      "    1    3    -0.05    2    1       0.0\n",
      row_of_nodes(2));
  model.number();
  static_loads.NZDISP = 1;
  PDISIN();
  FILE(units.NT10, "REWI");
  std::vector<double> vector;
  const PatternHeader header = next_prescribed(vector);
  EXPECT_EQ(header.kind, 1);
  EXPECT_EQ(header.length, 2 * 13);
  EXPECT_EQ(title_of(header), "SETTLEMENT OF THE LEFT SUPPORT AND MORE ");
  for (std::size_t e = 0; e < 13; ++e) {
    const double wanted = e == 2 ? -0.05 : e == 6 ? 0.0 : 1.0E10;
    EXPECT_EQ(vector[e], wanted) << e + 1;
  }
}

TEST(PrescribedDisplacements, AreEchoedFourToACard) {
  LoadModel model(
      "    5   T\n"
      "    1    1       0.1    1    2       0.2    1    3       0.3    2    1       0.4\n"
      "    2    2      -0.5\n",
      row_of_nodes(2));
  model.number();
  static_loads.NZDISP = 1;
  PDISIN();
  const std::string report = model.scratch.report();
  EXPECT_TRUE(has_line(report, " PRESCRIBED DISPLACEMENT PATTERN    1 - T")) << report;
  EXPECT_TRUE(has_line(report,
                       "         1     1      0.1000E+00    1     2      0.2000E+00    1     3      0.3000E+00"
                       "    2     1      0.4000E+00"))
      << report;
  EXPECT_TRUE(has_line(report, "         2     2     -0.5000E+00"));
}

TEST(PrescribedDisplacements, ReadNoCardForNoEntriesAndOneForFour) {
  LoadModel model(
      "    0   EMPTY\n"
      "    4   FULL\n"
      "    1    1       0.1    1    2       0.2    1    3       0.3    2    1       0.4\n"
      "   -3   NEGATIVE\n",
      row_of_nodes(2));
  model.number();
  static_loads.NZDISP = 3;
  PDISIN();
  EXPECT_EQ(deck_line(), 4);
  FILE(units.NT10, "REWI");
  std::vector<double> vector;
  EXPECT_EQ(next_prescribed(vector).kind, 1);
  EXPECT_EQ(vector[0], unprescribed);
  EXPECT_EQ(next_prescribed(vector).kind, 2);
  EXPECT_EQ(vector[6], 0.4);
  EXPECT_EQ(next_prescribed(vector).kind, 3);
  EXPECT_EQ(vector[6], unprescribed);
}

TEST(PrescribedDisplacements, LaterEntryOnAnEquationHolds) {
  LoadModel model("    2   T\n    1    1       0.1    2    1       0.7\n", row_of_nodes(2));
  model.tie(2, 1, 1).number();
  static_loads.NZDISP = 1;
  PDISIN();
  FILE(units.NT10, "REWI");
  std::vector<double> vector;
  next_prescribed(vector);
  EXPECT_EQ(vector[0], 0.7);
}

TEST(PrescribedDisplacements, OnAConstrainedComponentAreIgnored) {
  LoadModel model("    1   T\n    1    1       0.1\n", row_of_nodes(2));
  model.fix(1, {1}).number();
  static_loads.NZDISP = 1;
  PDISIN();
  EXPECT_EQ(run.RUNMOD, 0);
  FILE(units.NT10, "REWI");
  std::vector<double> vector;
  next_prescribed(vector);
  for (const double value : vector) EXPECT_EQ(value, unprescribed);
}

TEST(PrescribedDisplacements, OfAWrongNodeOrComponentAreSkippedAsDataErrors) {
  LoadModel model("    4   T\n    3    1       0.1    1    7       0.2    0    1       0.3    1    2       0.4\n",
                  row_of_nodes(2));
  model.number();
  static_loads.NZDISP = 1;
  PDISIN();
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_TRUE(
      has_line(model.scratch.report(), " ***** DATA ERROR *****      NODE     3  OUT OF RANGE, ENTERING CHEC MODE"));
  EXPECT_TRUE(
      has_line(model.scratch.report(), " ***** DATA ERROR *****      DOF     7  OUT OF RANGE, ENTERING CHEC MODE"));
  EXPECT_EQ(count_of_text(model.scratch.errors(), "line 2, columns 1-5:"), 1);
  EXPECT_EQ(count_of_text(model.scratch.errors(), "line 2, columns 26-30:"), 1);
  EXPECT_EQ(count_of_text(model.scratch.errors(), "line 2, columns 41-45:"), 1);
  FILE(units.NT10, "REWI");
  std::vector<double> vector;
  next_prescribed(vector);
  EXPECT_EQ(vector[1], 0.4);
}

TEST(PrescribedDisplacements, FieldsBehindTheLastEntryAreNotRead) {
  LoadModel model("    1   T\n    1    1       0.1  REMARK\n", row_of_nodes(1));
  model.number();
  static_loads.NZDISP = 1;
  EXPECT_EQ(stop_of(PDISIN), std::nullopt);
}

TEST(PrescribedDisplacements, FollowTheForcePatternsWithoutARewind) {
  LoadModel model("    0FORCE\n    0   DISPLACEMENT\n", row_of_nodes(1));
  model.number();
  static_loads.NFPAT = static_loads.NPAT = 1;
  static_loads.NZDISP = 1;
  PATTIN();
  PDISIN();
  FILE(units.NT10, "REWI");
  std::vector<double> vector;
  EXPECT_EQ(title_of(next_prescribed(vector)).substr(0, 5), "FORCE");
  EXPECT_EQ(title_of(next_prescribed(vector)).substr(0, 12), "DISPLACEMENT");
}

TEST(PrescribedDisplacements, ThatDoNotFitStopInPhaseSix) {
  LoadModel model("", row_of_nodes(2));
  model.number();
  storage.NEXT = storage.MSTOR + 1 - 26;  // 13 reals end at word MSTOR
  EXPECT_EQ(stop_of(PDISIN), std::nullopt);
  storage.NEXT = storage.MSTOR + 2 - 26;
  EXPECT_EQ(stop_of(PDISIN), status_fatal);
  EXPECT_EQ(count_of_text(model.scratch.report(), "INPUT PHASE - STATIC SUPPORT DISP. PATTERNS"), 1);
}

}  // namespace
}  // namespace tidearc::test
