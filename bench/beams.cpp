// State determination and assembly of beams, for models beyond the caches: elements a second beside what is expected.
//
// The model is a tower of four legs that DATAIN reads from a deck: 60,000 members, 160 to 200 MB of records in each
// generation. Every figure is the best of several runs by processor time.
#include <cstdio>
#include <fstream>
#include <string>

#include "assembly/assembly.h"
#include "elements/contract/group.h"
#include "elements/contract/pass.h"
#include "folder.h"
#include "machine.h"
#include "model/control.h"
#include "roof/datain.h"
#include "roof/startup.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc::bench {
namespace {

constexpr int levels = 5000;                                    // 20,000 nodes
constexpr int members = 12 * (levels - 1);                      // four legs, four chords and four braces to a level
constexpr double state_bar[] = {0.0, 0.0, 400000.0, 700000.0};  // by type [1/s]
constexpr double assembly_bar = 300000.0;                       // either type [1/s]
constexpr int tries = 5;

/// What makes the member cards of one type.
struct BeamKind {
  int ITYPE;
  int SD;  ///< S.D. code of type 2
};

std::string group_cards(const BeamKind& kind) {
  const std::string E = "   2.1E11       0.3";
  const auto group_card = [&](const char* types) {
    return format("3I5", kind.ITYPE, members, 1) + "\n" + types + "\n";
  };
  if (kind.ITYPE == 3) return group_card("    1    1") + "    1     " + E + "\n    1    0       0.5      0.02\n\n\n";
  return group_card("    1    1    1") + "    1     " + E + "\n\n" + "    1     " +
         "      0.03      0.02      0.46    8.7E-4    8.7E-4   17.4E-4\n\n\n";
}

std::string member_card(const BeamKind& kind, int number, int I, int J) {
  std::string card = format("3I5,2I5,2I5", number, I, J, 0, 0, 1, 1);
  if (kind.ITYPE == 2) card += format("4I5", 0, 0, 0, kind.SD);
  return card + "\n";
}

std::string member_cards(const BeamKind& kind) {
  std::string cards;
  int number = 0;
  for (int level = 1; level < levels; ++level) {
    const int below = 4 * (level - 1), above = 4 * level;
    for (int k = 0; k < 4; ++k) {
      const int next = (k + 1) % 4;
      cards += member_card(kind, ++number, below + k + 1, above + k + 1);
      cards += member_card(kind, ++number, above + k + 1, above + next + 1);
      cards += member_card(kind, ++number, below + k + 1, above + next + 1);
    }
  }
  return cards;
}

std::string deck(const BeamKind& kind) {
  const int count = 4 * levels;
  std::string text =
      " STAR   P4.314  TOWER\n\n\n CORE SYMM\n" + format("10I5", count, count, 0, 0, 0, 0, 1, 0, 0, 1) + "\n";
  for (int node = 0; node < count; ++node) {
    const int corner = node % 4;
    const double x = corner == 1 || corner == 2 ? 10.0 : 0.0, y = corner >= 2 ? 10.0 : 0.0;
    text += format("I5,3F10.1", node + 1, x, y, 8.0 * (node / 4)) + "\n";
  }
  text += "    1    111111    4    1\n" + group_cards(kind) + member_cards(kind);
  return text + "\n\n    0    0    0\nNONE\n STOP\n";
}

/// The model in the work array, with small displacements of its nodes.
class Model {
 public:
  explicit Model(const BeamKind& kind) {
    std::ofstream("TAModel.inp") << deck(kind);
    start_process("200M");
    pool.allocate(run.MTOT);
    DATAIN();
    const Reals U = equation_vector(arrays.U);
    for (int e = 1; e <= sizes.NEQ; ++e) U(e) = 1.0E-6 * (e % 17);
  }
  ~Model() { reset_process(); }
  Model(const Model&) = delete;
  Model& operator=(const Model&) = delete;

 private:
  Folder folder_;
};

void tell(const std::string& name, double seconds, double bar) {
  const double rate = members / seconds;
  std::printf("%-58s %9.0f elements/s  bar %7.0f  %s\n", name.c_str(), rate, bar, rate >= bar ? "met" : "MISSED");
  std::fflush(stdout);
}

void assemble(bool reset) {
  solver.KRESET = reset ? 1 : 0;
  solver.KFORM = 0;
  ASMSTA();
}

void measure(const BeamKind& kind) {
  const Model model(kind);
  if (element_counts.NELTOT != members) {
    std::printf("the deck of type %d was not read\n", kind.ITYPE);
    return;
  }
  const std::string type = "type " + std::to_string(kind.ITYPE) +
                           (kind.ITYPE == 2 ? " (S.D. code " + std::to_string(kind.SD) + ")" : std::string());
  const auto determine = [] { determine_states(); };
  determine();
  tell("state determination, " + type, best_of(tries, nothing, determine), state_bar[kind.ITYPE]);
  tell("assembly into a cleared matrix, " + type, best_of(tries, nothing, [] { assemble(true); }), assembly_bar);
  if (kind.ITYPE == 3) return;  // a linear beam never changes its matrix again
  tell("assembly of changes, " + type, best_of(tries, determine, [] { assemble(false); }), assembly_bar);
}

}  // namespace
}  // namespace tidearc::bench

int main() {
  using tidearc::bench::measure;
  for (const int SD : {1, 2, 3}) measure({2, SD});
  measure({3, 0});
}
