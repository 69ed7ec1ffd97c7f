#include "run_deck.h"

#include <filesystem>
#include <sstream>
#include <stdexcept>

#include "model/control.h"
#include "roof/datain.h"
#include "roof/driver.h"
#include "roof/startup.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/workpool.h"
#include "scratch.h"
#include "solve/arrays.h"
#include "static/segment.h"

namespace tidearc::test {

namespace {

/// Indices of the lines that contain a text.
std::vector<std::size_t> places(const std::vector<std::string>& lines, const std::string& part) {
  std::vector<std::size_t> found;
  for (std::size_t i = 0; i < lines.size(); ++i)
    if (lines[i].find(part) != std::string::npos) found.push_back(i);
  return found;
}

std::size_t choose(const std::vector<std::size_t>& found, int print) {
  const int n = static_cast<int>(found.size());
  const int k = print < 0 ? n + print : print;
  if (k < 0 || k >= n) throw std::runtime_error("no such print on the report");
  return found[static_cast<std::size_t>(k)];
}

}  // namespace

namespace {

/// What the run has left in its folder.
void read_files(const Scratch& scratch, RunResult& result) {
  result.report = scratch.report();
  result.progress = scratch.contents("TAP53");
  result.levels = scratch.contents("TAP.ULTFAC");
  result.errors = scratch.errors();
  result.top = scratch.contents("TAP32");
  result.member = scratch.contents("MEMBER.FRC");
  for (int unit = 41; unit <= 45; ++unit) result.energy.push_back(scratch.contents("TAP" + std::to_string(unit)));
  result.ended = std::filesystem::exists("TAP.OK");
}

void keep_state(RunResult& result) {
  const auto copy = [](int vector) {
    const Reals values = pool.reals(vector, sizes.NEQ);
    return std::vector<double>(values.begin(), values.end());
  };
  result.U = copy(arrays.U);
  result.DSTEP = copy(arrays.DSTEP);
  result.accumulated = statics.accumulated[0];
}

void run_static_macros() {
  std::string card;
  while (next_line(units.NDIN, card) && card.rfind("STAT", 0) == 0) STAT();
}

}  // namespace

RunResult run_deck(const std::string& deck, const std::string& pool_size) {
  Scratch scratch(deck);
  RunResult result;
  result.status = stop_of([&] {
                    start_process(pool_size);
                    DRIVER();
                    CLOSUP();
                  }).value_or(-1);
  read_files(scratch, result);
  return result;
}

RunResult run_static(const std::string& deck, const std::string& pool_size) {
  Scratch scratch(deck);
  RunResult result;
  const std::optional<int> stopped = stop_of([&] {
    start_process(pool_size);
    pool.allocate(run.MTOT);
    DATAIN();
    run_static_macros();
    keep_state(result);
  });
  result.status = stopped.value_or(run.had_terminated_macro ? status_terminated : status_good);
  read_files(scratch, result);
  return result;
}

std::vector<ProgressRow> progress_rows(const std::string& progress) {
  std::vector<ProgressRow> rows;
  for (const std::string& line : lines_of(progress)) {
    if (line.size() < 87) continue;
    const auto number = [&](std::size_t from, std::size_t width) {
      try {
        return std::stod(line.substr(from, width));
      } catch (const std::exception&) {
        return -1e300;
      }
    };
    const double first = number(0, 7);
    if (first == -1e300 || line[9] < '0' || line[9] > '9') continue;
    rows.push_back({static_cast<int>(first), static_cast<int>(number(7, 3)), static_cast<int>(number(10, 5)),
                    number(16, 7), number(24, 7), number(32, 8), number(41, 8), line.substr(50, 3), line.substr(54, 3),
                    static_cast<int>(number(57, 5)), number(62, 13), number(75, 13), static_cast<int>(number(88, 5))});
  }
  return rows;
}

double displacement(const std::string& report, const std::string& direction, int node, int print) {
  const std::vector<std::string> lines = lines_of(report);
  const std::string kind = direction[1] == 'R' ? "     ROTATION" : " DISPLACEMENT";
  std::size_t i = choose(places(lines, "     " + direction + kind + " RESPONSE AT NODES"), print) + 1;
  for (; i < lines.size(); ++i) {
    const std::string& heads = lines[i];
    if (heads.find("RESPONSE AT NODES") != std::string::npos) break;
    const std::size_t at = heads.find("NODE NUMBER ");
    if (at == std::string::npos) continue;
    for (std::size_t column = 20; column + 13 <= heads.size(); column += 13)
      if (std::stoi(heads.substr(column, 13)) == node) return std::stod(lines[i + 1].substr(column + 5, 13));
  }
  throw std::runtime_error("the node is not printed");
}

std::vector<TrussRow> truss_rows(const std::string& report, int print) {
  const std::vector<std::string> lines = lines_of(report);
  std::size_t i = choose(places(lines, "AXIAL FORCE        EXTENSION"), print) + 1;
  std::vector<TrussRow> rows;
  for (; i < lines.size(); ++i) {
    std::istringstream in(lines[i]);
    TrussRow row{};
    if (!(in >> row.element >> row.I >> row.J >> row.code >> row.force >> row.extension >> row.positive >>
          row.negative))
      break;
    rows.push_back(row);
  }
  return rows;
}

int count_of(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) ++count;
  return count;
}

}  // namespace tidearc::test
