// Time steps of linear frames: what a step costs beside one solution and one pass of state determination, what it
// allocates, and a long run of a small frame.
//
// The frames are read from decks by DATAIN. Every figure is the best of several runs by processor time; what is
// compared is measured in the same process.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "dynamic/commands.h"
#include "dynamic/dyn2.h"
#include "elements/contract/pass.h"
#include "folder.h"
#include "machine.h"
#include "roof/datain.h"
#include "roof/driver.h"
#include "roof/startup.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/units.h"
#include "run/vectors.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/integration.h"
#include "solve/solve.h"

namespace tidearc::bench {
namespace {

constexpr double step_bar = 1.3;      // of one solution and one determination
constexpr double long_run_bar = 2.0;  // [s]
constexpr int long_run_steps = 100000;
constexpr int tries = 7;

long allocations = 0;

/// Nodes on a grid of columns and floors, beams along both ways of each floor.
struct Grid {
  int nx, ny, storeys;  ///< bays along X and Y; floors above the ground
  int on_floor() const { return (nx + 1) * (ny + 1); }
  int nodes() const { return on_floor() * (storeys + 1); }
  int node(int x, int y, int z) const { return (z * (ny + 1) + y) * (nx + 1) + x + 1; }
};

std::vector<std::pair<int, int>> members(const Grid& grid) {
  std::vector<std::pair<int, int>> list;
  for (int z = 1; z <= grid.storeys; ++z) {
    for (int y = 0; y <= grid.ny; ++y) {
      for (int x = 0; x <= grid.nx; ++x) {
        list.emplace_back(grid.node(x, y, z - 1), grid.node(x, y, z));
        if (x > 0) list.emplace_back(grid.node(x - 1, y, z), grid.node(x, y, z));
        if (y > 0) list.emplace_back(grid.node(x, y - 1, z), grid.node(x, y, z));
      }
    }
  }
  return list;
}

/// Stiffness-proportional damping of the members, and mass-proportional damping.
struct Damping {
  double BETAO = 0.0;
  double DMASS = 0.0;
};

std::string model_cards(const Grid& grid, const Damping& damping) {
  const int n = grid.nodes();
  std::string text = " STAR   P4.314  FRAME\n\n\n CORE SYMM\n" + format("10I5", n, n, 0, 0, 0, 0, 1, 0, 1, 1) + "\n";
  for (int z = 0; z <= grid.storeys; ++z)
    for (int y = 0; y <= grid.ny; ++y)
      for (int x = 0; x <= grid.nx; ++x)
        text += format("I5,3F10.1", grid.node(x, y, z), 6.0 * x, 6.0 * y, 4.0 * z) + "\n";
  text += "    1    111111" + format("2I5", grid.on_floor(), 1) + "\n";
  text += format("I5,6F10.1,2I5", grid.on_floor() + 1, 1.0E3, 1.0E3, 1.0E3, 1.0E2, 1.0E2, 1.0E2, n, 1) + "\n";
  const auto list = members(grid);
  text += format("3I5,2F10.6", 3, static_cast<int>(list.size()), 1, damping.BETAO, 0.0) + "\n    1    1\n";
  text += "    1        2.1E11       0.3\n    1    0       0.5      0.02\n\n\n";
  int number = 0;
  for (const auto& [I, J] : list) text += format("3I5,2I5,2I5", ++number, I, J, 0, 0, 1, 1) + "\n";
  return text + "\n\n    0    0    0\n";
}

std::string dyn2_cards(const Damping& damping, int NSTEP, int thrown_node) {
  std::string text = "DYN2    CONSTANT STEPS\n" + format("4F10.4", 0.005, 0.0, 0.0, damping.DMASS) + "\n";
  text += format("I6,I4", NSTEP, 1) + "\n" + format("5I5,F10.4", 1, 1, 0, 1, 0, 1.0) + "\n";
  return text + format("I5,2F10.1,I5", 1, 1.0, 0.0, thrown_node) + "\n";
}

/// A frame in the work array, thrown at its top and in motion.
class Model {
 public:
  Model(const Grid& grid, const Damping& damping) {
    std::ofstream("TAModel.inp") << model_cards(grid, damping) + dyn2_cards(damping, 999999, grid.nodes());
    start_process("400M");
    pool.allocate(run.MTOT);
    DATAIN();
    std::array<char, 4> keyword{};
    read(units.NDIN, "A4", keyword);
    job = read_constant_steps();
    INTCON(Constants::computed);
    read_initial_conditions(job.NINIT);
    DYNCMD(0, 0, 0);
    TIMSUB("", timer_clear, timers);
    start_dynamics(false);
    for (int i = 0; i < 3; ++i) take_step();
  }
  ~Model() { reset_process(); }
  Model(const Model&) = delete;
  Model& operator=(const Model&) = delete;

  void take_step() {
    ++dynamics.NS;
    take_constant_step(job);
    report_constant_step(job);
  }

 private:
  Folder folder_;
  ConstantSteps job;
};

bool measure(const char* name, const Grid& grid, const Damping& damping, bool has_bar) {
  Model model(grid, damping);
  std::vector<double> load(static_cast<std::size_t>(NEQ1()), 1.0);
  const double solving = best_of(
      tries, [&] { RCOPY(equation_vector(arrays.RA).data(), load.data(), NEQ1()); }, [] { SOLVE(arrays.RA); });
  const double determining = best_of(tries, nothing, [] { determine_states(); });
  const double stepping = best_of(tries, nothing, [&] { model.take_step(); });
  allocations = 0;
  for (int i = 0; i < 10; ++i) model.take_step();
  const long allocated = allocations;
  const double ratio = stepping / (solving + determining);
  const bool met = (!has_bar || ratio <= step_bar) && allocated == 0;
  std::printf("%-44s %6d eq. solve %7.2f determine %7.2f step %7.2f ms, ratio %5.3f", name, sizes.NEQ, 1E3 * solving,
              1E3 * determining, 1E3 * stepping, ratio);
  if (has_bar) std::printf("  bar %.1f", step_bar);
  std::printf(", %ld allocations  bar 0  %s\n", allocated, met ? "met" : "MISSED");
  std::fflush(stdout);
  return met;
}

/// The whole program on a plane frame of three storeys.
bool run_long(const char* name, const Damping& damping) {
  const Grid grid{1, 0, 3};
  const Folder folder;
  std::ofstream("TAModel.inp") << model_cards(grid, damping) + dyn2_cards(damping, long_run_steps, grid.nodes()) +
                                      "NONE\n STOP\n";
  const double seconds = timed([] {
    start_process("1M");
    DRIVER();
  });
  reset_process();
  const bool met = seconds <= long_run_bar;
  std::printf("%-44s %6d steps %6.2f s  bar %.1f  %s\n", name, long_run_steps, seconds, long_run_bar,
              met ? "met" : "MISSED");
  std::fflush(stdout);
  return met;
}

}  // namespace
}  // namespace tidearc::bench

// Every allocation of the program is counted.
void* operator new(std::size_t size) {
  ++tidearc::bench::allocations;
  if (void* const memory = std::malloc(size)) return memory;
  std::abort();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

int main() {
  using namespace tidearc::bench;
  const Grid tower{1, 1, 1250}, block{9, 9, 50};
  const Damping none{}, masses{0.0, 0.1}, members{0.001, 0.1};
  bool met = measure("block of 9 by 9 bays, no damping", block, none, true);
  met &= measure("block, mass-proportional damping", block, masses, true);
  met &= measure("block, damping of masses and members", block, members, false);
  met &= measure("tower of four legs, no damping", tower, none, true);
  met &= measure("tower, mass-proportional damping", tower, masses, true);
  met &= measure("tower, damping of masses and members", tower, members, false);
  met &= run_long("plane frame of three storeys, no damping", none);
  met &= run_long("plane frame, damping of masses and members", members);
  return met ? 0 : 1;
}
