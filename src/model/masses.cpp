// Mass commands and the lumped mass summary.
// Element masses are no concern of this file: element input adds them to AMASS between the two procedures.
#include "model/masses.h"

#include "model/node_values.h"
#include "model/patterns.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/vectors.h"

namespace tidearc {

namespace {

struct MassCommand {
  int first = 0;
  NodeValues mass{};
  int last = 0;
  int difference = 0;
};

/// False, with the data error reported, when the command cannot be followed.
bool can_be_followed(const MassCommand& command) {
  if (!node_in_range(command.first, sizes.NUMNP, {1, 5})) return false;
  if (command.last == 0) return true;
  if (!node_in_range(command.last, sizes.NUMNP, {66, 70})) return false;
  if (command.difference >= 0) return true;
  data_error({71, 75}, "' NODE DIFFERENCE',I6,'  OF A MASS COMMAND IS NEGATIVE, ENTERING CHEC MODE'",
             command.difference);
  return false;
}

/// Adds the masses of a command at one node: also at the sink, where nobody reads them.
void add_masses(int node, const NodeValues& mass, Reals AMASS, Integers MARKS) {
  for (int c = 1; c <= 6; ++c) {
    const double value = mass[static_cast<std::size_t>(c - 1)];
    const int e = equation_of(node, c);
    if (value == 0.0 || e < 1) continue;
    AMASS(e) += value;
    MARKS(e) = mark_mass;
  }
}

void follow(const MassCommand& command, Reals AMASS, Integers MARKS) {
  add_masses(command.first, command.mass, AMASS, MARKS);
  if (command.last == 0) return;
  const int step = command.difference == 0 ? 1 : command.difference;
  for (int node = command.first + step; node <= command.last; node += step) {
    add_masses(node, command.mass, AMASS, MARKS);
  }
}

/// One line for each node that has any mass.
void print_masses(ConstReals AMASS) {
  write(units.NDOUT,
        "/,/,' LUMPED MASSES AT NODES',/,/,5X,'NODE',11X,'TRAN-X',6X,'TRAN-Y',6X,'TRAN-Z',11X,'ROTN-X',6X,'ROTN-Y',6X,"
        "'ROTN-Z',/");
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    const NodeValues mass = values_at_node(node, AMASS);
    if (any_nonzero(mass)) write(units.NDOUT, "I9,2(5X,3E12.4)", node, mass);
  }
}

/// Sums of the masses by direction; a mass that several nodes share counts once. Uses the element-stage vector, which
/// is free after the last group.
NodeValues total_masses(ConstReals AMASS) {
  const Reals seen = pool.reals(masses.KEDATP, NEQ1());
  RZERO(seen.data(), seen.size());
  NodeValues total{};
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    add_to(total, not_yet_counted(node, values_at_node(node, AMASS), seen));
  }
  return total;
}

}  // namespace

void carve_mass_vectors() {
  constexpr int phase = 3;
  masses.AMASS = carve_reals(NEQ1());
  masses.MARKS = carve_integers(NEQ1());
  check_storage(phase);
}

void carve_element_vectors() {
  constexpr int phase = 4;
  masses.KEDATP = carve_reals(NEQ1());
  patterns.KSELFW = carve_reals(NEQ1());
  patterns.KBUOYV = carve_reals(NEQ1());
  patterns.KCURRV = carve_reals(NEQ1());
  check_storage(phase);
  for (const int vector : {masses.KEDATP, patterns.KSELFW, patterns.KBUOYV, patterns.KCURRV})
    RZERO(pool.reals(vector, NEQ1()).data(), NEQ1());
}

void MASSIN() {
  const Reals AMASS = pool.reals(masses.AMASS, NEQ1());
  const Integers MARKS = pool.integers(masses.MARKS, NEQ1());
  RZERO(AMASS.data(), AMASS.size());
  for (int& mark : MARKS) mark = 0;

  write(units.NDOUT, "'1',/,' LUMPED MASS GENERATION COMMANDS'");
  if (sizes.NMASS < 1) {
    write(units.NDOUT, "/,' (NONE)'");
    return;
  }
  write(units.NDOUT,
        "/,4X,'FIRST',11X,'TRAN-X',6X,'TRAN-Y',6X,'TRAN-Z',6X,'ROTN-X',6X,'ROTN-Y',6X,'ROTN-Z',5X,'LAST',5X,'NODE',/,"
        "5X,'NODE',81X,'NODE',5X,'DIFF',/");
  for (int i = 1; i <= sizes.NMASS; ++i) {
    MassCommand command;
    read(units.NDIN, "I5,6F10.0,2I5", command.first, command.mass, command.last, command.difference);
    write(units.NDOUT, "I9,5X,6E12.4,2I9", command.first, command.mass, command.last, command.difference);
    if (can_be_followed(command)) follow(command, AMASS, MARKS);
  }
  if (sizes.IBANDW == 0) print_masses(AMASS);
}

void MASSUM() {
  write(units.NDOUT, "'1',/,' LUMPED MASS SUMMARY'");
  const Reals AMASS = pool.reals(masses.AMASS, NEQ1());
  print_masses(AMASS);
  const NodeValues total = total_masses(AMASS);
  write(units.NDOUT, "/,5X,'TOTAL MASS IN DIRECTIONS:',/,/,15X,'X',11X,'Y',11X,'Z',/,10X,3G12.5", total[0], total[1],
        total[2]);
}

}  // namespace tidearc
