// Runs a whole deck in-process, as the program does, and reads its results back from the files it leaves.
#pragma once

#include <string>
#include <vector>

namespace tidearc::test {

struct RunResult {
  int status = -1;
  std::string report;               ///< TAModel.out
  std::string progress;             ///< TAP53
  std::string levels;               ///< TAP.ULTFAC
  std::string errors;               ///< TAP.err
  std::string top;                  ///< TAP32
  std::string member;               ///< MEMBER.FRC
  std::vector<std::string> energy;  ///< TAP41 .. TAP45
  bool ended = false;               ///< TAP.OK stands in the folder
  std::vector<double> U,
      DSTEP;                 ///< displacements at the STOP card, and the increment of the last step, with all digits
  double accumulated = 0.0;  ///< accumulated factor of the first force pattern there
};

/// One row of the progress table.
struct ProgressRow {
  int step, iteration, sequence;
  double level, increment, applied, unbalance;
  std::string state, stiffness;
  int formations;
  double arc, parameter;
  int negative;
};

RunResult run_deck(const std::string& deck, const std::string& pool = "4M");
/// Runs a deck of one problem with STAT macros alone, up to its NONE card, and keeps the state behind the last macro.
/// The status is that of a run to its STOP card.
RunResult run_static(const std::string& deck, const std::string& pool = "4M");
std::vector<ProgressRow> progress_rows(const std::string& progress);

/// Displacement of a node in the k-th (from 0; -1 the last) print of a direction (" X", "XR", ..) on the report.
double displacement(const std::string& report, const std::string& direction, int node, int print = -1);
/// Rows of the k-th truss result print: element, nodes, code, force, extension, plastic extensions.
struct TrussRow {
  int element, I, J, code;
  double force, extension, positive, negative;
};
std::vector<TrussRow> truss_rows(const std::string& report, int print = -1);
/// Number of times a text stands in another.
int count_of(const std::string& text, const std::string& part);

}  // namespace tidearc::test
