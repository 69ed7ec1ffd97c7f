// Catenary commands: cards, checks, the nodes they place, and the table of catenaries. The curves come from catenary.h.
#include <cmath>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "model/catenary.h"
#include "model/gravity.h"
#include "model/nodes.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/stops.h"

namespace tidearc {
namespace {

struct CatenaryCard {
  int number = 0;
  int node_a = 0;
  int node_b = 0;
  int count = 0;  ///< nodes to generate, negative after turn_buoyant
  int increment = 0;
  int IOPT = 0;
  int shape = 0;  ///< 0 sagging, 1 straight
  double weight = 0.0;
  double parameter = 0.0;
};

/// The vertical plane of a line: A, the horizontal direction toward B, the direction against gravity, and the spans.
struct LinePlane {
  std::array<double, 3> origin{};
  std::array<double, 3> along{};
  std::array<double, 3> up{};
  double h = 0.0;
  double v = 0.0;
};

constexpr std::string_view option_words(CatenaryOption option) {
  switch (option) {
    case CatenaryOption::tension_b:
      return "TENSION AT END B (TOP NODE)";
    case CatenaryOption::horizontal:
      return "HORIZONTAL LOAD";
    case CatenaryOption::length:
      return "CATENARY LENGTH";
    case CatenaryOption::angle_a:
      return "ANGLE AT END A IN DEGREES";
    case CatenaryOption::angle_b:
      return "ANGLE AT END B IN DEGREES";
    case CatenaryOption::mooring:
      return "MOORING LINE LENGTH WITH BOTTOM INTERACTION";
  }
  return {};
}

CatenaryCard read_catenary() {
  CatenaryCard card;
  read(units.NDIN, "7I5,2F10.0", card.number, card.node_a, card.node_b, card.count, card.increment, card.IOPT,
       card.shape, card.weight, card.parameter);
  if (card.IOPT < 2 || card.IOPT > 6) card.IOPT = 1;
  if (card.IOPT == 6) card.shape = 1;
  if (card.count < 0) card.count = 0;
  if (card.increment == 0) card.increment = 1;
  return card;
}

void echo(const CatenaryCard& card) {
  write(units.NDOUT, "/,/,A50,I5", dotted(" CATENARY N0"), card.number);
  write(units.NDOUT, "A50,I5", dotted(" NODE AT THE BEGINNING OF THE CATENARY(NODE A)"), card.node_a);
  write(units.NDOUT, "A50,I5", dotted(" NODE AT THE END OF THE CATENARY(NODE B)"), card.node_b);
  write(units.NDOUT, "A50,I5", dotted(" NUMBER OF NODES TO BE GENERATED"), card.count);
  write(units.NDOUT, "A50,I5", dotted(" NODE NUMBER INCREMENT"), card.increment);
  write(units.NDOUT, "A50,I5", dotted(" CATENARY GENERATION OPTION (IOPT)"), card.IOPT);
  for (int option = 1; option <= 6; ++option) {
    write(units.NDOUT, "8X,I1,':  ',A44", option, option_words(static_cast<CatenaryOption>(option)));
  }
  write(units.NDOUT, "A50,I5", dotted(" CATENARY SHAPE"), card.shape);
  write(units.NDOUT, "8X,'0 OR BLANK: SAGGING',/,8X,'1: STRAIGHT'");
  write(units.NDOUT, "A50,1P,E13.5", dotted(" WEIGHT OF CATENARY IN WATER PER UNIT LENGTH"), card.weight);
  write(units.NDOUT, "' CATENARY GENERATION PARAMETER  X:'");
  write(units.NDOUT, "8X,'X = ',A44,1P,E13.5", option_words(static_cast<CatenaryOption>(card.IOPT)), card.parameter);
}

bool end_is_usable(int node, Columns where) {
  if (!node_in_range(node, sizes.NUMNP, where)) return false;
  if (is_specified(node)) return true;
  data_error(where, "' NODE',I6,'  COORDINATES NOT YET DEFINED'", node);
  return false;
}

/// Both ends are looked at, so that one run tells about both.
bool ends_are_usable(const CatenaryCard& card) {
  const bool a = end_is_usable(card.node_a, {6, 10});
  const bool b = end_is_usable(card.node_b, {11, 15});
  return a && b;
}

/// A buoyant line hangs upward: seen from its other end, with gravity turned round, it is a heavy one.
void turn_buoyant(CatenaryCard& card, int& axis) {
  std::swap(card.node_a, card.node_b);
  card.count = -card.count;
  card.increment = -card.increment;
  card.weight = -card.weight;
  axis = -axis;
}

LinePlane plane_of(const CatenaryCard& card, int axis) {
  LinePlane plane;
  plane.origin = coordinates(card.node_a);
  const std::array<double, 3> end = coordinates(card.node_b);
  const auto vertical = static_cast<std::size_t>(std::abs(axis) - 1);
  plane.up[vertical] = axis < 0 ? 1.0 : -1.0;
  for (std::size_t i = 0; i < 3; ++i) {
    if (i != vertical) plane.along[i] = end[i] - plane.origin[i];
  }
  plane.h = std::hypot(plane.along[0], plane.along[1], plane.along[2]);
  plane.v = (end[vertical] - plane.origin[vertical]) * plane.up[vertical];
  if (plane.h > 0.0) {
    for (double& component : plane.along) component /= plane.h;
  }
  return plane;
}

/// Conditions without which there is no curve to look for. False when the command is dropped.
bool can_be_solved(const CatenaryCard& card, const LinePlane& plane) {
  if (!(plane.h > 0.0) || !std::isfinite(plane.h) || !std::isfinite(plane.v)) {
    data_error({6, 15}, "' CATENARY',I6,'  HAS NO HORIZONTAL SPAN, ENTERING CHEC MODE'", card.number);
    return false;
  }
  if (card.IOPT == 2 && !(card.parameter > 0.0)) {
    data_error({46, 55}, "' CATENARY',I6,'  HORIZONTAL LOAD IS NOT POSITIVE, ENTERING CHEC MODE'", card.number);
    return false;
  }
  if (card.IOPT == 6 && !(plane.v > 0.0)) {
    data_error({6, 15}, "' CATENARY',I6,'  END B IS NOT ABOVE END A WITH IOPT=6, ENTERING CHEC MODE'", card.number);
    return false;
  }
  return true;
}

CatenarySolution solve(const CatenaryCard& card, const LinePlane& plane) {
  CatenaryCase line;
  line.option = static_cast<CatenaryOption>(card.IOPT);
  line.straight = card.shape == 1;
  line.h = plane.h;
  line.v = plane.v;
  line.w = card.weight;
  line.parameter = card.parameter;
  const CatenarySolution solution = solve_catenary(line);
  if (!solution.solved) {
    const std::string row(72, 'W');
    write(units.NDOUT, "1X,A72,/,A72,/,1X,A72", row,
          " WARNING - THE ITERATIVE PROCESS HAS NOT ACHIEVED A CATENARY SOLUTION.", row);
    complain(whole_line, "warning: no catenary meets the condition of this card");
  }
  return solution;
}

/// Lower and upper end are told as gravity really acts, also of a buoyant line.
void print_properties(const CatenarySolution& solution, const LinePlane& plane, double weight, bool buoyant) {
  const CatenaryCurve& curve = solution.curve;
  const bool a_is_lower = (plane.v >= 0.0) != buoyant;
  write(units.NDOUT, "/,' CATENARY PROPERTIES',/");
  write_count("NUMBER OF ITERATIONS TAKEN", solution.rounds);
  write(units.NDOUT, "5X,A50,F15.3", dotted("HORIZONTAL DISTANCE BETWEEN END POINTS"), plane.h);
  write(units.NDOUT, "5X,A50,F15.3", dotted("VERTICAL DISTANCE BETWEEN END POINTS"), std::abs(plane.v));
  write(units.NDOUT, "5X,A50,1P,E15.5", dotted("WEIGHT PER UNIT LENGTH OF CATENARY"), weight);
  write(units.NDOUT, "5X,A50,1P,E15.5", dotted("TENSION AT THE LOWER END"),
        a_is_lower ? curve.tension_a : curve.tension_b);
  write(units.NDOUT, "5X,A50,1P,E15.5", dotted("TENSION AT THE UPPER END"),
        a_is_lower ? curve.tension_b : curve.tension_a);
  write(units.NDOUT, "5X,A50,1P,E15.5", dotted("HORIZONTAL LOAD"), curve.H);
}

/// Places the interior nodes and prints the table from A to B. Numbers run one way, so those behind the first one
/// outside the model are outside too: that one is reported, and B is printed next.
void place_nodes(const CatenaryCard& card, const CatenarySolution& solution, const LinePlane& plane) {
  write(units.NDOUT,
        "/,' CATENARY GENERATED GLOBAL COORDINATES',/,/,75X,' RADIUS OF',/,5X,' NODE',8X,'X-COORD',8X,'Y-COORD',8X,"
        "'Z-COORD',8X,'TENSION',5X,' CURVATURE',/");
  const int count = std::abs(card.count);
  for (int k = 0; k <= count + 1; ++k) {
    const bool interior = k >= 1 && k <= count;
    const long long number = k > count ? card.node_b : card.node_a + static_cast<long long>(k) * card.increment;
    const int node = static_cast<int>(number);
    if (interior && !node_in_range(node, sizes.NUMNP, {16, 25})) {
      k = count;
      continue;
    }
    const CatenaryPoint point = catenary_node(solution, count, k);
    std::array<double, 3> at = coordinates(k > count ? card.node_b : card.node_a);
    if (interior) {
      for (std::size_t i = 0; i < 3; ++i) at[i] = plane.origin[i] + point.x * plane.along[i] + point.y * plane.up[i];
      place_node(node, at, node_generated);
    }
    write(units.NDOUT, "5X,I5,5(5X,F10.3)", node, at, point.tension, point.radius);
  }
}

void keep(const CatenaryCard& card, const CatenarySolution& solution, const LinePlane& plane) {
  if (catenaries.count >= most_catenaries) {
    data_error(whole_line, "' CATENARY',I6,'  EXCEEDS THE TABLE OF',I4,' CATENARIES, ENTERING CHEC MODE'", card.number,
               most_catenaries);
    return;
  }
  CatenaryRow& row = catenaries.rows[static_cast<std::size_t>(catenaries.count++)];
  row.number = card.number;
  row.node_a = card.node_a;
  row.node_b = card.node_b;
  row.count = card.count;
  row.increment = card.increment;
  row.IOPT = card.IOPT;
  row.weight = card.weight;
  row.horizontal = solution.curve.H;
  row.span = plane.h;
  row.length = solution.grounded + solution.curve.length;
  row.tension_a = solution.curve.tension_a;
  row.tension_b = solution.curve.tension_b;
}

void one_catenary(int axis) {
  CatenaryCard card = read_catenary();
  echo(card);
  if (!ends_are_usable(card)) return;
  if (axis == 0) {
    data_error(not_on_deck, "' CATENARY',I6,'  GRAVITY HAS NO DIRECTION, ENTERING CHEC MODE'", card.number);
    return;
  }
  const bool buoyant = card.weight < 0.0;
  if (buoyant && card.IOPT == 6) {
    data_error({26, 45}, "'BUOYANT CATENARY NOT ALLOWED WITH IOPT=6'");
    return;
  }
  if (buoyant) turn_buoyant(card, axis);
  const LinePlane plane = plane_of(card, axis);
  if (!can_be_solved(card, plane)) return;
  const CatenarySolution solution = solve(card, plane);
  print_properties(solution, plane, card.weight, buoyant);
  place_nodes(card, solution, plane);
  keep(card, solution, plane);
}

}  // namespace

void CATIN() {
  write(units.NDOUT, "'1',/,' CATENARY GENERATION'");
  if (sizes.NCATEN < 1) {
    write(units.NDOUT, "/,' (NONE)'");
    return;
  }
  const int axis = gravity_axis();
  for (int i = 1; i <= sizes.NCATEN; ++i) one_catenary(axis);
}

}  // namespace tidearc
