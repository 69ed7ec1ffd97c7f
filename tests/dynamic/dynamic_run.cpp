#include "dynamic_run.h"

#include <filesystem>
#include <stdexcept>

#include "dynamic/dynamic.h"
#include "eigen/eigen.h"
#include "roof/datain.h"
#include "roof/startup.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/solve.h"
#include "solve/solver.h"
#include "static/segment.h"

namespace tidearc::test {

namespace {

std::vector<double> values_of(int vector) {
  const Reals values = pool.reals(vector, sizes.NEQ);
  return {values.begin(), values.end()};
}

void keep_state(DynamicResult& result) {
  result.U = values_of(arrays.U);
  result.VEL = values_of(arrays.VEL);
  result.ACC = values_of(arrays.ACC);
  result.R = values_of(arrays.R);
  result.energy = dynamics.energy;
  result.TIME = response.TIME;
  result.diagonal = assembled_diagonal(1);
  result.formations = solver.NSTUPD;
  result.NLSTEP = response.NLSTEP;
}

void run_macros() {
  std::string card;
  while (next_line(units.NDIN, card) && card.rfind("NONE", 0) != 0) {
    if (card.rfind("STAT", 0) == 0) {
      STAT();
    } else if (card.rfind("DYN1", 0) == 0) {
      DYN1();
    } else if (card.rfind("DYN2", 0) == 0) {
      DYN2();
    } else if (card.rfind("EIGN", 0) == 0) {
      EIGN();
    } else {
      throw std::runtime_error("no macro card: " + card);
    }
  }
}

}  // namespace

DynamicResult run_dynamic(const std::string& deck, const std::string& pool_size) {
  Scratch scratch(deck);
  DynamicResult result;
  const std::optional<int> stopped = stop_of([&] {
    start_process(pool_size);
    pool.allocate(run.MTOT);
    DATAIN();
    run_macros();
    keep_state(result);
  });
  result.files.status = stopped.value_or(run.had_terminated_macro ? status_terminated : status_good);
  flush_all_tapes();
  result.files.report = scratch.report();
  result.files.errors = scratch.errors();
  result.files.progress = scratch.contents("TAP53");
  result.files.levels = scratch.contents("TAP.ULTFAC");
  result.files.top = scratch.contents("TAP32");
  for (int unit = 41; unit <= 46; ++unit) result.files.energy.push_back(scratch.contents("TAP" + std::to_string(unit)));
  return result;
}

std::vector<Dyn2Row> dyn2_rows(const std::string& progress) {
  std::vector<Dyn2Row> rows;
  for (const std::string& line : lines_of(progress)) {
    if (line.size() != 94 || line[6] < '0' || line[6] > '9') continue;
    const auto number = [&](std::size_t from, std::size_t width) { return std::stod(line.substr(from, width)); };
    rows.push_back({static_cast<int>(number(0, 7)), static_cast<int>(number(7, 3)), static_cast<int>(number(10, 5)),
                    static_cast<int>(number(15, 5)), number(21, 9), number(31, 8), number(40, 8), number(49, 9),
                    number(59, 8), number(68, 8), number(77, 8), number(86, 8)});
  }
  return rows;
}

OpenProblem::OpenProblem(const std::string& deck) : scratch(deck) {
  start_process("4M");
  pool.allocate(run.MTOT);
  DATAIN();
}

OpenProblem::~OpenProblem() { reset_process(); }

}  // namespace tidearc::test
