// The analysis vectors: their order, their sizes, the clearing before them, the storage check.
#include "solve/arrays.h"

#include <gtest/gtest.h>

#include <string>

#include "model/control.h"
#include "run/workpool.h"
#include "solve/solver.h"
#include "solver_fixture.h"

namespace tidearc {
namespace {

class AnalysisArrays : public test::SolverProblem {};

TEST_F(AnalysisArrays, StandInTheirOrderWithTheirSizes) {
  number_nodes(4, 20);
  static_loads.NPAT = 3;
  static_loads.NZDISP = 2;
  output.NPR = {-1, 0, 7};
  storage.NEXT = 101;
  carve_analysis_arrays();
  const int v = 2 * 21;
  int next = 101;
  const auto stands = [&next](int index, int words, const char* name) {
    EXPECT_EQ(index, next) << name;
    next += words;
  };
  stands(arrays.U, v, "U");
  stands(arrays.VEL, v, "VEL");
  stands(arrays.ACC, v, "ACC");
  stands(arrays.R, v, "R");
  stands(arrays.RU, v, "RU");
  stands(arrays.RA, v, "RA");
  stands(arrays.RINC, v, "RINC");
  stands(arrays.U0, v, "U0");
  stands(arrays.MSTAT, 22, "MSTAT");  // 21 integers and a pad word
  stands(arrays.XP, v, "XP");
  stands(arrays.PATTERN, 3 * v, "PATTERN");
  stands(arrays.DDIS, v, "DDIS");
  stands(arrays.P, v, "P");
  stands(arrays.ENVMAX, v, "ENVMAX");
  stands(arrays.TMAX, v, "TMAX");
  stands(arrays.ENVMIN, v, "ENVMIN");
  stands(arrays.TMIN, v, "TMIN");
  stands(arrays.WORK, v, "WORK");
  stands(arrays.ZDISP, 2 * v, "ZDISP");
  stands(arrays.DSTEP, v, "DSTEP");
  stands(arrays.WAVE, v, "WAVE");
  stands(arrays.BFGS1, v, "BFGS1");
  stands(arrays.BFGS2, v, "BFGS2");
  stands(arrays.STATUS, 22, "STATUS");
  stands(arrays.PIVOT, v, "PIVOT");
  stands(arrays.DIAG, v, "DIAG");
  stands(arrays.UN, v, "UN");
  stands(arrays.UTS, v, "UTS");
  stands(arrays.VT, v, "VT");
  stands(arrays.AT, v, "AT");
  stands(arrays.VD, v, "VD");
  stands(arrays.PS, v, "PS");
  stands(arrays.PN, v, "PN");
  stands(arrays.RN, v, "RN");
  stands(arrays.D, v, "D");
  stands(arrays.DN, v, "DN");
  stands(arrays.DAMP, v, "DAMP");
  stands(arrays.XI, v, "XI");
  stands(arrays.XIN, v, "XIN");
  stands(arrays.HISTORY[0], 8, "history of all four nodes");
  stands(arrays.HISTORY[1], 0, "no history");
  stands(arrays.HISTORY[2], 14, "history of seven listed nodes");
  EXPECT_EQ(storage.NEXT, next);
}

TEST_F(AnalysisArrays, OfDynamicAnalysesTakeNoRoomWhereNoneIsToCome) {
  number_nodes(4, 20);
  output.NPR = {-1, 0, 7};
  storage.NEXT = 101;
  carve_analysis_arrays();
  EXPECT_TRUE(dynamic_arrays_stand());
  const int before = arrays.UN, end = storage.NEXT;
  storage.NEXT = 101;
  carve_analysis_arrays(Analyses::all_but_dynamic);
  EXPECT_FALSE(dynamic_arrays_stand());
  EXPECT_EQ(arrays.DIAG + 2 * 21, before) << "what stands before them stands where it did";
  for (const int index : {arrays.UN, arrays.UTS, arrays.VT, arrays.AT, arrays.VD, arrays.PS, arrays.PN, arrays.RN,
                          arrays.D, arrays.DN, arrays.DAMP, arrays.XI, arrays.XIN, arrays.HISTORY[0]})
    EXPECT_EQ(index, before);
  EXPECT_EQ(storage.NEXT, end - 13 * 2 * 21);
}

TEST_F(AnalysisArrays, BeginAtAnOddWord) {
  number_nodes(1, 6);
  storage.NEXT = 100;
  carve_analysis_arrays();
  EXPECT_EQ(storage.KSTART, 101);
  EXPECT_EQ(arrays.U, 101);
}

TEST_F(AnalysisArrays, FindThePoolClearedToItsEnd) {
  number_nodes(1, 6);
  storage.NEXT = 51;
  for (int i = 40; i <= 5000; ++i) pool.words(i, 1)[0] = 7;
  carve_analysis_arrays();
  EXPECT_EQ(pool.words(50, 1)[0], 7) << "what stands before is kept";
  EXPECT_EQ(equation_vector(arrays.U)(1), 0.0);
  EXPECT_EQ(pool.words(5000, 1)[0], 0);
  EXPECT_EQ(pool.integers(arrays.MSTAT, 6)(1), -6) << "all equations are free";
}

TEST_F(AnalysisArrays, ThatFillThePoolToItsLastWordPass) {
  number_nodes(1, 6);
  carve_analysis_arrays();
  const int need = storage.NEXT - storage.KSTART;
  storage.NEXT = storage.MSTOR - need + 1;
  ASSERT_EQ(storage.NEXT % 2, 1);
  EXPECT_EQ(test::stop_of([] { carve_analysis_arrays(); }), std::nullopt);
  EXPECT_EQ(storage.NEXT, storage.MSTOR + 1);
  storage.NEXT = storage.MSTOR - need + 2;
  EXPECT_EQ(test::stop_of([] { carve_analysis_arrays(); }), 1);
  EXPECT_NE(scratch.report().find("INPUT PHASE - STORAGE FOR ANALYSIS ARRAYS"), std::string::npos);
}

TEST_F(AnalysisArrays, OfHugeCountsStopInTheStorageCheck) {
  number_nodes(1, 6);
  static_loads.NPAT = 2000000000;
  static_loads.NZDISP = 2000000000;
  EXPECT_EQ(test::stop_of([] { carve_analysis_arrays(); }), 1);
}

}  // namespace
}  // namespace tidearc
