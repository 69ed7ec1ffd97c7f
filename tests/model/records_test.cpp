// Dynamic load control card, the tables of the records, and the record sections without records.
#include "model/records.h"

#include "load_model.h"

namespace tidearc::test {
namespace {

TEST(DynamicLoadCard, IsEchoedWithItsLabels) {
  LoadModel model("    1    2    3    4    5  100    1    1\n", row_of_nodes(1));
  DYNCTL();
  EXPECT_EQ(trimmed(model.scratch.report()),
            "1***********************************************\n DYNAMIC LOAD SPECIFICATION CONTROL INFORMATION\n "
            "***********************************************\n\n"
            "     NUMBER OF GROUND ACCELERATION RECORDS .......... =    1\n"
            "     NUMBER OF DYNAMIC FORCE RECORDS ................ =    2\n"
            "     NUMBER OF IMPOSED DISPLACEMENT HISTORY RECORDS . =    3\n"
            "     NUMBER OF NODES WITH DYNAMIC FORCE RECORDS ..... =    4\n"
            "     NUMBER OF NODES WITH IMPOSED DISPLACEMENTS ..... =    5\n"
            "     MAX NUMBER OF INPUT POINTS FOR ANY RECORD ...... =  100\n"
            "     WAVE DATA INPUT CODE ........................... =    1\n"
            "     VESSEL MOTION INPUT CODE ....................... =    1\n");
}

TEST(DynamicLoadCard, NegativeCountsReadAsZeroAndCodesAsTheyStand) {
  LoadModel model("   -1   -2   -3   -4   -5   -6   -7   -8\n", row_of_nodes(1));
  DYNCTL();
  EXPECT_EQ(dynamic_loads.NGACC + dynamic_loads.NDFRC + dynamic_loads.NIDSP, 0);
  EXPECT_EQ(dynamic_loads.NDFND + dynamic_loads.NIDND + dynamic_loads.MXPNT, 0);
  EXPECT_EQ(dynamic_loads.IWAVE, -7);
  EXPECT_EQ(dynamic_loads.IVESSL, -8);
}

TEST(DynamicLoadCard, BlankCardAsksForNothing) {
  LoadModel model("\n", row_of_nodes(1));
  DYNCTL();
  EXPECT_EQ(dynamic_loads.NGACC, 0);
  EXPECT_EQ(dynamic_loads.IVESSL, 0);
}

TEST(DynamicLoadCard, IsNeededEvenWithoutDynamicLoads) {
  LoadModel model("", row_of_nodes(1));
  EXPECT_EQ(stop_of(DYNCTL), status_io);
}

TEST(DynamicLoadCard, FieldsBehindTheEighthAreReadOver) {
  LoadModel model("    0    0    0    0    0    0    0    0    9    9\n", row_of_nodes(1));
  DYNCTL();
  EXPECT_EQ(dynamic_loads.IVESSL, 0);
}

TEST(ControlFields, AreEighteenOfFiveColumns) {
  std::string card;
  for (int i = 1; i <= 19; ++i) card += "  " + std::string(i < 10 ? " " : "") + std::to_string(i) + " ";
  LoadModel model(card + "\n", row_of_nodes(1));
  const ControlFields fields = read_control_fields();
  for (std::size_t i = 0; i < fields.size(); ++i) EXPECT_EQ(fields[i], static_cast<int>(i) + 1);
  EXPECT_EQ(fields.size(), 18U);
}

TEST(ControlFields, AreReadToTheLastWhateverACardListsOfThem) {
  LoadModel model(std::string(85, ' ') + "  JUNK\n", row_of_nodes(1));
  EXPECT_EQ(stop_of(DYNCTL), status_io);
  EXPECT_EQ(count_of_text(model.scratch.errors(), "columns 86-90: ' JUN' is not an integer"), 1)
      << model.scratch.errors();
}

TEST(ControlFields, EndAtColumnNinety) {
  LoadModel model(std::string(90, ' ') + "JUNK\n", row_of_nodes(1));
  EXPECT_EQ(stop_of(DYNCTL), std::nullopt);
}

TEST(RecordSections, WithoutRecordsPrintHeadingsAndNone) {
  LoadModel model("", row_of_nodes(1));
  RECRIN();
  EXPECT_EQ(trimmed(model.scratch.report()),
            "1\n GROUND ACCELERATION RECORDS\n\n (NONE)\n"
            "1\n DYNAMIC FORCE RECORDS\n\n (NONE)\n"
            "1\n IMPOSED DISPLACEMENT HISTORIES\n\n (NONE)\n");
}

TEST(RecordSections, GiveEachRecordTwoEndPointsMore) {
  LoadModel model("", row_of_nodes(1));
  dynamic_loads.MXPNT = 40;
  RECRIN();
  EXPECT_EQ(dynamic_loads.MXPNT, 42);
}

TEST(RecordSections, LayTwoTablesDownForEachKind) {
  const std::array<int DynamicLoadBlock::*, 3> counts{&DynamicLoadBlock::NGACC, &DynamicLoadBlock::NDFRC,
                                                      &DynamicLoadBlock::NIDSP};
  for (std::size_t kind = 0; kind < 3; ++kind) {
    LoadModel model("", row_of_nodes(1));
    dynamic_loads.*counts[kind] = 2;
    dynamic_loads.MXPNT = 10;
    const int before = storage.NEXT;
    EXPECT_EQ(stop_of(RECRIN), status_io) << "the deck has no records";
    // Two reals for each of 2 by 12 entries; then two integers for each record.
    EXPECT_EQ(storage.NEXT - before, 2 * 2 * 12 * 2 + 2 * 2);
  }
}

TEST(RecordSections, AVesselHasSixDisplacementRecordsMore) {
  LoadModel model("", row_of_nodes(1));
  dynamic_loads.IVESSL = 1;
  RECRIN();
  EXPECT_EQ(record_table(RecordKind::displacement).rows, 6);
  EXPECT_TRUE(record_exists(RecordKind::displacement, 6));
  EXPECT_FALSE(record_exists(RecordKind::displacement, 7));
  EXPECT_EQ(record_value(RecordKind::displacement, 6, 1.0), 0.0) << "until the vessel moves";
  EXPECT_TRUE(has_line(model.scratch.report(), " IMPOSED DISPLACEMENT HISTORIES\n\n (NONE)"));
  LoadModel other("", row_of_nodes(1));
  dynamic_loads.IVESSL = 2;
  RECRIN();
  EXPECT_EQ(record_table(RecordKind::displacement).rows, 0);
}

TEST(RecordSections, RecordsOfTheProblemBeforeAreGone) {
  LoadModel model("", row_of_nodes(1));
  load_records.tables[0].rows = 5;
  RECRIN();
  EXPECT_EQ(record_value(RecordKind::ground, 1, 0.0), 0.0);
  EXPECT_FALSE(record_exists(RecordKind::ground, 1));
}

TEST(RecordSections, TablesThatDoNotFitStopInPhaseSeven) {
  for (const int records : {1000, 99999}) {
    LoadModel model("", row_of_nodes(1));
    dynamic_loads.NDFRC = records;
    dynamic_loads.MXPNT = 99999;
    EXPECT_EQ(stop_of(RECRIN), status_fatal);
    EXPECT_EQ(count_of_text(model.scratch.report(), "INPUT PHASE - DYNAMIC FORCE RECORDS"), 1);
  }
}

TEST(RecordSections, KeepRoomForTheCommandsOfDynamicMacros) {
  LoadModel model("", row_of_nodes(1));
  dynamic_loads.NDFND = 3;
  dynamic_loads.NIDND = 2;
  const int before = storage.NEXT;
  RECRIN();
  // Per entry two reals and four integers; then a list of integers, padded to an even length.
  EXPECT_EQ(storage.NEXT - before, 3 * 8 + 4 + 2 * 8 + 2);
}

TEST(RecordSections, ThatDoNotFitStopInPhaseSeven) {
  LoadModel model("", row_of_nodes(1));
  dynamic_loads.NDFND = 4;
  storage.NEXT = storage.MSTOR - 35;  // 4 * 8 + 4 = 36 words: the last one is word MSTOR
  EXPECT_EQ(stop_of(RECRIN), std::nullopt);
  storage.NEXT = storage.MSTOR - 34;
  EXPECT_EQ(stop_of(RECRIN), status_fatal);
  EXPECT_EQ(count_of_text(model.scratch.report(), "INPUT PHASE - DYNAMIC FORCE RECORDS"), 1);
}

}  // namespace
}  // namespace tidearc::test
