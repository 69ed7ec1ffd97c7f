// Local coordinate systems: their axes, and the nodes that use them.
#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "model/nodes.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/vectors.h"

namespace tidearc {
namespace {

constexpr double zero_length = 1.0E-8;

struct SystemCard {
  int a = 0;
  std::array<double, 3> V1{};
  int b = 0;
  std::array<double, 3> V2{};
};

struct AssignmentCard {
  int first = 0;
  int system = 0;
  int last = 0;
  int difference = 0;
  std::array<int, 12> list{};
};

std::array<double, 3> cross(const std::array<double, 3>& p, const std::array<double, 3>& q, double factor) {
  return {factor * (p[1] * q[2] - p[2] * q[1]), factor * (p[2] * q[0] - p[0] * q[2]),
          factor * (p[0] * q[1] - p[1] * q[0])};
}

/// Scales a vector to unit length; false, with the data error reported, when it has none.
bool normalise(std::array<double, 3>& v, int number) {
  const double length = std::sqrt(DOT3(v.data(), v.data()));
  if (!(length > zero_length)) {
    data_error(whole_line, "'ZERO VECTOR',I2", number);
    return false;
  }
  for (double& component : v) component /= length;
  return true;
}

/// Sign that makes (sign) Va x Vb the third direction of a right-handed system; a and b differ and stand in 1..3.
double cyclic_sign(int a, int b) {
  const int step = b - a;
  if (step > 1) return -1.0;
  if (step < -1) return 1.0;
  return step;
}

/// Fills the axes of a system: direction a as given, b made normal to it. False when the card is in error.
bool form_axes(SystemCard card, RealTable AXES) {
  const auto in_range = [](int direction) { return direction >= 1 && direction <= 3; };
  if (!in_range(card.a) || !in_range(card.b) || card.a == card.b) {
    data_error(whole_line, "'LOCAL DIRECTIONS MUST BE 1, 2 OR 3 AND DIFFERENT'");
    return false;
  }
  const bool first = normalise(card.V1, 1);
  const bool second = normalise(card.V2, 2);
  if (!first || !second) return false;
  const double sign = cyclic_sign(card.a, card.b);
  std::array<double, 3> V3 = cross(card.V1, card.V2, sign);
  if (!normalise(V3, 3)) return false;
  card.V2 = cross(V3, card.V1, sign);
  const int c = 6 - (card.a + card.b);
  for (int i = 1; i <= 3; ++i) {
    const auto at = static_cast<std::size_t>(i - 1);
    AXES(i, card.a) = card.V1[at];
    AXES(i, card.b) = card.V2[at];
    AXES(i, c) = V3[at];
  }
  return true;
}

void master_axes(RealTable AXES) {
  for (int k = 1; k <= 3; ++k) {
    for (int i = 1; i <= 3; ++i) AXES(i, k) = i == k ? 1.0 : 0.0;
  }
}

void read_systems() {
  write(units.NDOUT,
        "/,' INPUT DEFINITION OF COORDINATE SYSTEMS',/,/,6X,'SYSTEM',4X,'LOCAL',6X,'COMPONENTS IN MASTER SYSTEM',/,9X,"
        "'NO.',2X,'DIRECTION',8X,'X',10X,'Y',10X,'Z'");
  for (int n = 1; n <= sizes.NCSYS; ++n) {
    SystemCard card;
    read(units.NDIN, "2(I5,3F10.0,5X)", card.a, card.V1, card.b, card.V2);
    write(units.NDOUT, "/,7X,I5,8X,I1,6X,F10.4,1X,F10.4,1X,F10.4,/,1(20X,I1,6X,F10.4,1X,F10.4,1X,F10.4)", n, card.a,
          card.V1, card.b, card.V2);
    master_axes(axes_of(n));
    form_axes(card, axes_of(n));
  }
}

void print_systems() {
  write(units.NDOUT,
        "/,/,' COMPUTED LOCAL COORDINATE AXES - ORTHONORMALIZED',/,/,6X,'SYSTEM',4X,'LOCAL',6X,"
        "'COMPONENTS IN MASTER SYSTEM',/,9X,'NO.',2X,'DIRECTION',8X,'X',10X,'Y',10X,'Z'");
  for (int n = 1; n <= sizes.NCSYS; ++n) {
    const RealTable AXES = axes_of(n);
    write(units.NDOUT, "/,7X,I5,8X,I1,6X,F10.4,1X,F10.4,1X,F10.4", n, 1, AXES.column(1));
    for (int k = 2; k <= 3; ++k) write(units.NDOUT, "20X,I1,6X,F10.4,1X,F10.4,1X,F10.4", k, AXES.column(k));
  }
}

/// Nodes behind the first one: the card's list up to its zero entry, or the row from first to last. A row that cannot
/// be followed leaves the list empty.
std::vector<int> nodes_of(const AssignmentCard& card, bool row_is_sound) {
  std::vector<int> list;
  if (card.list[0] > 0) {
    const auto end = std::find(card.list.begin(), card.list.end(), 0);
    list.assign(card.list.begin(), end);
  } else if (card.last != 0 && row_is_sound) {
    const int step = card.difference == 0 ? 1 : card.difference;
    for (int node = card.first + step; node <= card.last; node += step) list.push_back(node);
  }
  return list;
}

bool is_sound_row(const AssignmentCard& card) {
  return card.first >= 1 && card.last >= card.first && card.last <= sizes.NUMNP && card.difference >= 0;
}

void assign(const AssignmentCard& card, const std::vector<int>& list, bool row_is_sound) {
  if (card.system < 1 || card.system > sizes.NCSYS) {
    data_error({6, 10}, "'BAD COORD SYSTEM'");
    return;
  }
  const bool has_list = card.list[0] > 0;
  if (!has_list && card.last != 0 && !row_is_sound) {
    data_error(whole_line, "'BAD LOOP'");
    return;
  }
  if (!node_in_range(card.first, sizes.NUMNP, {1, 5})) return;
  const Integers ICS = pool.integers(nodes.ICS, sizes.NUMNP);
  ICS(card.first) = card.system;
  Columns where{21, 25};
  for (const int node : list) {
    if (node >= 1 && node <= sizes.NUMNP) {
      ICS(node) = card.system;
    } else {
      data_error(where, "'BAD LIST'");
    }
    where = {where.first + 5, where.last + 5};
  }
}

void read_assignments() {
  for (int& system : pool.integers(nodes.ICS, sizes.NUMNP)) system = 0;
  write(units.NDOUT,
        "/,/,' INPUT NODAL COORDINATE SYSTEM ASSIGNMENT',/,/,5X,'FIRST',5X,'SYSTEM',6X,'LAST',6X,'NODE',5X,"
        "'LIST OF NODES',/,5X,' NODE',8X,'NO.',6X,'NODE',6X,'DIFF'");
  for (int i = 1; i <= sizes.NDSYS; ++i) {
    AssignmentCard card;
    read(units.NDIN, "16I5", card.first, card.system, card.last, card.difference, card.list);
    const bool row_is_sound = is_sound_row(card);
    const std::vector<int> list = nodes_of(card, row_is_sound);
    write(units.NDOUT, "/,I10,I11,2I10,5X,12I5,/,1(46X,12I5)", card.first, card.system, card.last, card.difference,
          std::span<const int>(list));
    assign(card, list, row_is_sound);
  }
}

void print_assignments() {
  write(units.NDOUT,
        "/,/,' GENERATED NODAL COORDINATE SYSTEM ASSIGNMENT',/,/,5X,'NOTE - ALL NODES NOT LISTED ARE',/,5X,"
        "'IN MASTER COORDINATE SYSTEM',/,/,6X,'NODE',4X,'SYSTEM'");
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    if (system_of(node) != 0) write(units.NDOUT, "2I10", node, system_of(node));
  }
  write(units.NDOUT,
        "/,' NOTE - ALL FURTHER DEFINITION OF NODAL QUANTITIES (CONSTRAINED DOF, MASSES,',/,8X,"
        "'PRESCRIBED FORCES AND DISPLACEMENTS) FOR THE ABOVE LISTED NODES',/,8X,"
        "'MUST BE GIVEN IN THE SPECIFIED LOCAL COORDINATE SYSTEM.',/,8X,"
        "'ALL OUTPUT NODAL QUANTITIES WILL BE GIVEN IN NODAL LOCAL COORDINATES.'");
}

}  // namespace

void AXESIN() {
  write(units.NDOUT, "'1',/,' NODAL LOCAL COORDINATE SYSTEMS'");
  if (sizes.NCSYS < 1) {
    write(units.NDOUT, "/,' ALL NODES IN MASTER COORDINATE SYSTEM'");
    if (sizes.NCSYS != 0 || sizes.NDSYS != 0) {
      data_error(not_on_deck, "'NCSYS = ',I5,5X,'NDSYS = ',I5", sizes.NCSYS, sizes.NDSYS);
    }
    return;
  }
  read_systems();
  print_systems();
  read_assignments();
  print_assignments();
}

}  // namespace tidearc
