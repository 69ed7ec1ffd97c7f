// Constraints, identical displacements and equation numbers.
//
// While the commands are read, ID holds 0 (free), FIXED_CODE (constrained) or FIXED_CODE + m (moves with node m).
#include <algorithm>
#include <span>
#include <string_view>
#include <vector>

#include "model/nodes.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/words.h"

namespace tidearc {
namespace {

struct ConstraintCard {
  int first = 0;
  std::array<int, 6> code{};
  int last = 0;
  int difference = 0;
  std::array<int, 11> list{};
};

struct TieCard {
  std::array<int, 6> code{};
  std::array<int, 14> list{};
};

/// The leading positive entries of a card's list.
std::span<const int> leading(std::span<const int> list) {
  const auto end = std::find_if(list.begin(), list.end(), [](int node) { return node < 1; });
  return list.first(static_cast<std::size_t>(end - list.begin()));
}

/// True when the row of nodes of a card without a list can be followed; false with the data error reported. A row that
/// ends below its first node is sound: it is the first node alone.
bool row_is_sound(const ConstraintCard& card) {
  if (card.last == 0) return true;
  if (!node_in_range(card.last, sizes.NUMNP, {16, 20})) return false;
  if (card.difference >= 0) return true;
  data_error(whole_line, "'BAD LOOP'");
  return false;
}

/// Nodes behind the first one: the card's list, or else the row from first to last. A row that cannot be followed, and
/// one that begins outside the model, is empty.
std::vector<int> nodes_of(const ConstraintCard& card) {
  const std::span<const int> given = leading(card.list);
  std::vector<int> list(given.begin(), given.end());
  const bool in_model = card.first >= 1 && card.last <= sizes.NUMNP && card.difference >= 0;
  if (!list.empty() || !in_model) return list;
  const int step = card.difference == 0 ? 1 : card.difference;
  for (int node = card.first + step; node <= card.last; node += step) list.push_back(node);
  return list;
}

void set_row(int node, const std::array<int, 6>& code) {
  const IntegerTable ID = node_ID();
  for (int c = 1; c <= 6; ++c) ID(node, c) = code[static_cast<std::size_t>(c - 1)] != 0 ? FIXED_CODE : FREE_CODE;
}

void follow(const ConstraintCard& card, const std::vector<int>& list) {
  if (!node_in_range(card.first, sizes.NUMNP, {1, 5})) return;
  if (card.list[0] < 1 && !row_is_sound(card)) return;
  set_row(card.first, card.code);
  Columns where{26, 30};
  for (const int node : list) {
    if (node_in_range(node, sizes.NUMNP, where)) set_row(node, card.code);
    where = {where.first + 5, where.last + 5};
  }
}

void read_constraints() {
  write(units.NDOUT, "'1',/,' CONSTRAINED DISPLACEMENT COMMANDS'");
  if (sizes.NZERO < 1) {
    write(units.NDOUT, "/,' (NONE)'");
    return;
  }
  write(units.NDOUT,
        "/,5X,'FIRST',7X,'DISPLACEMENTS',9X,'ROTATIONS',8X,'LAST',6X,'NODE',5X,'LIST OF NODES',/,5X,' NODE',7X,"
        "'X    Y    Z',9X,'X    Y    Z',8X,'NODE',6X,'DIFF',/");
  for (int i = 1; i <= sizes.NZERO; ++i) {
    ConstraintCard card;
    read(units.NDIN, "I5,4X,6I1,2I5,11I5", card.first, card.code, card.last, card.difference, card.list);
    const std::vector<int> list = nodes_of(card);
    write(units.NDOUT, "I10,3X,3I5,5X,3I5,2X,2I10,5X,11I5,/,1(75X,11I5)", card.first, card.code, card.last,
          card.difference, std::span<const int>(list));
    follow(card, list);
  }
}

/// Ties the slaves of a command to its first node.
void tie_nodes(const TieCard& card, std::span<const int> list) {
  if (list.empty()) return;
  const int master = list[0];
  Columns where{11, 15};
  if (!node_in_range(master, sizes.NUMNP, where)) return;
  const IntegerTable ID = node_ID();
  for (const int node : list.subspan(1)) {
    where = {where.first + 5, where.last + 5};
    if (!node_in_range(node, sizes.NUMNP, where) || node == master) continue;
    for (int c = 1; c <= 6; ++c) {
      if (card.code[static_cast<std::size_t>(c - 1)] > 0) ID(node, c) = FIXED_CODE + master;
    }
  }
}

void read_ties() {
  write(units.NDOUT, "/,/,' IDENTICAL DISPLACEMENT COMMANDS'");
  if (sizes.NEQUAL < 1) {
    write(units.NDOUT, "/,' (NONE)'");
    return;
  }
  write(units.NDOUT, "/,5X,' DISPLACEMENT CODE',8X,' LIST OF NODES',/");
  for (int i = 1; i <= sizes.NEQUAL; ++i) {
    TieCard card;
    read(units.NDIN, "6I1,4X,14I5", card.code, card.list);
    const std::span<const int> list = leading(card.list);
    write(units.NDOUT, "5X,6I3,8X,14I5", card.code, list);
    tie_nodes(card, list);
  }
}

/// Every free component gets the next equation, node by node.
void number_free_components() {
  const IntegerTable ID = node_ID();
  int equations = 0;
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    for (int c = 1; c <= 6; ++c) {
      if (ID(node, c) == FREE_CODE) ID(node, c) = ++equations;
    }
  }
  sizes.NEQ = equations;
}

/// A tied component takes what its master holds when its turn comes. One pass in node order: a chain of ties is
/// followed only where the master's own tie has been resolved before.
void resolve_ties() {
  const IntegerTable ID = node_ID();
  for (int c = 1; c <= 6; ++c) {
    for (int node = 1; node <= sizes.NUMNP; ++node) {
      if (ID(node, c) > FIXED_CODE) ID(node, c) = ID(ID(node, c) - FIXED_CODE, c);
    }
  }
}

/// Constrained components point at the sink, and so do ties that lead nowhere.
void point_at_sink() {
  const IntegerTable ID = node_ID();
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    for (int c = 1; c <= 6; ++c) {
      if (ID(node, c) > FIXED_CODE) {
        data_error(not_on_deck, "' NODE',I6,'  IDENTICAL DISPLACEMENT NOT RESOLVED, ENTERING CHEC MODE'", node);
      }
      if (ID(node, c) >= FIXED_CODE) ID(node, c) = NEQ1();
    }
  }
}

}  // namespace

void print_displacement_codes(const char* heading) {
  write(units.NDOUT,
        "/,/,A60,/,/,6X,'NODE',5X,'NUMBERS OF DEGREES OF FREEDOM',/,22X,'X',7X,'Y',7X,'Z',7X,'X',7X,'Y',7X,'Z',/",
        std::string_view(heading));
  const IntegerTable ID = node_ID();
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    std::array<int, 6> code{};
    for (int c = 1; c <= 6; ++c) {
      if (ID(node, c) <= sizes.NEQ) code[static_cast<std::size_t>(c - 1)] = ID(node, c);
    }
    write(units.NDOUT, "I10,5X,6I8", node, code);
  }
}

void DOFIN() {
  for (int& code : pool.integers(nodes.ID, 6 * sizes.NUMNP)) code = FREE_CODE;
  read_constraints();
  read_ties();
  number_free_components();
  resolve_ties();
  point_at_sink();
  if (sizes.NEQ == 0) data_error(not_on_deck, "'NO FREE DEGREES OF FREEDOM, ENTERING CHEC MODE'");
  if (sizes.IBANDW == 0) print_displacement_codes(" DISPLACEMENT CODES");
}

}  // namespace tidearc
