// Nodes, local coordinate systems, constraints and equation numbers.
//
// Layout of ID: component c (1..6: X, Y, Z, rotations X, Y, Z) of node n stands at slot (c-1)*NUMNP + n, that is in
// column c of a NUMNP by 6 table. After numbering an entry is an equation 1..NEQ or NEQ + 1 (constrained).
#pragma once

#include <array>
#include <type_traits>

#include "model/control.h"
#include "run/views.h"
#include "run/workpool.h"

namespace tidearc {

enum NodeCode : int { node_control = 1, node_generated = 2, node_unspecified = 3 };

/// Pool indices of the node arrays. Written by DATAIN while it carves.
struct NodeBlock {
  int ID = 1;  ///< equation numbers, integers, NUMNP by 6
  int X = 1;   ///< coordinates in the master system, reals, NUMNP each  [length]
  int Y = 1;
  int Z = 1;
  int NCODE = 1;  ///< specification codes (NodeCode), integers, NUMNP
  int ICS = 1;    ///< local system of each node, 0 master, integers, NUMNP (no room when NCSYS is below 1)
  int AXES = 1;   ///< 9 reals per system: column k holds the cosines of local direction k in the master system
};
inline NodeBlock nodes;
static_assert(std::is_trivially_copyable_v<NodeBlock>);

inline IntegerTable node_ID() { return pool.integers(nodes.ID, sizes.NUMNP, 6); }
/// Equation of component c of a node.
inline int equation_of(int node, int component) { return node_ID()(node, component); }
/// Equation at a slot of the ID table, slot = (component - 1) * NUMNP + node.
inline int equation_at(int slot) { return pool.integers(nodes.ID, 6 * sizes.NUMNP)(slot); }
inline std::array<double, 3> coordinates(int node) {
  return {pool.reals(nodes.X, sizes.NUMNP)(node), pool.reals(nodes.Y, sizes.NUMNP)(node),
          pool.reals(nodes.Z, sizes.NUMNP)(node)};
}

/// Local system of a node, 0 for the master system.
inline int system_of(int node) { return sizes.NCSYS < 1 ? 0 : pool.integers(nodes.ICS, sizes.NUMNP)(node); }
/// Axes of a system: a(i, k) is the cosine of local direction k on master axis i.
inline RealTable axes_of(int system) { return pool.reals(nodes.AXES + 18 * (system - 1), 3, 3); }
/// v_global = AXES v_local for a node's three translations (or rotations, or forces); in place, a copy when the node
/// stands in the master system.
void to_global(int node, double* v);
/// v_local = AXES^T v_global, in place.
void to_local(int node, double* v);

/// Gives a node its coordinates and its specification code.
void place_node(int node, const std::array<double, 3>& at, NodeCode code);
inline bool is_specified(int node) { return pool.integers(nodes.NCODE, sizes.NUMNP)(node) != node_unspecified; }

/// The node section of the deck up to the coordinate table: control nodes, generation, interpolation, catenaries,
/// table.
void NODEIN();
/// Parts of NODEIN: generation commands; gaps between specified nodes; catenary commands.
void GENIN();
void fill_gaps();
void CATIN();
/// Local coordinate systems and their assignment.
void AXESIN();
/// Constraint commands, identical displacements, equation numbers (NEQ), and, when IBANDW is 0, the table of codes.
void DOFIN();
/// The table of displacement codes under a heading (" DISPLACEMENT CODES" or " DISPLACEMENT CODES (RENUMBERED)").
void print_displacement_codes(const char* heading);

/// One row per catenary, for cable elements. Of a buoyant line the ends are exchanged, and count and increment have the
/// opposite sign; its weight is the magnitude.
struct CatenaryRow {
  int number, node_a, node_b;
  int count;      ///< nodes generated between the ends                [-]
  int increment;  ///< of their numbers, from A                        [-]
  int IOPT;
  double weight;                ///< per unit length in water                        [force/length]
  double horizontal;            ///< horizontal load                                 [force]
  double span;                  ///< horizontal distance between the ends            [length]
  double length;                ///< of the line, its part on the bed included       [length]
  double tension_a, tension_b;  ///< [force]
};
inline constexpr int most_catenaries = 500;
/// Written by NODEIN, which begins with an empty table.
struct CatenaryBlock {
  int count = 0;  ///< rows in use                                                    [-]
  std::array<CatenaryRow, most_catenaries> rows{};
};
inline CatenaryBlock catenaries;
static_assert(std::is_trivially_copyable_v<CatenaryBlock>);

}  // namespace tidearc
