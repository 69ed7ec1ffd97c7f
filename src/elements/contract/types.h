// What a type of element supplies: one row of constants and one table of operations.
//
// Every operation works on the current group (group.h) and the current element (work.h). The table itself, which knows
// every family, stands in elements/table.cpp.
#pragma once

namespace tidearc {

/// Result of an event operation: the part of the increment up to the next change of the element's stiffness.
struct ElementEvent {
  double factor = 1.0;  ///< 0..1; 1.0: no change on the way
  int code = 0;         ///< kind of the change, 0 none
};

/// How an element matrix stands in EMAT.
enum class MatrixForm : int {
  full = 0,    ///< NDOF by NDOF, column by column
  packed = 1,  ///< upper triangle by rows, NDOF (NDOF + 1) / 2
};

struct ElementOperations {
  /// Reads and echoes the group's cards and writes every record (INEL). Element data errors end in the close-down.
  void (*input)() = nullptr;
  /// Adds EDISP to the element's state, updates forces, envelope values and KSTIF (SDET).
  void (*state)() = nullptr;
  /// ERES and EDAMP of the state as it stands; changes nothing else (RESP).
  void (*resist)() = nullptr;
  /// EDYNF: (BETAO K0 + BETAT Kt) applied to (1+c1) v + c2 a (DYNF).
  void (*dynamic)(double c1, double c2) = nullptr;
  /// EMAT, symmetric, in global directions: the change since the last delivery, or the whole matrix when `reset`; keeps
  /// what was delivered in the tail and clears KSTIF (STIF). With KFORM of at least 1 (a dynamic analysis) the matrix
  /// is c1 K0 + (1+c2) Kt, else Kt. Returns the form in which EMAT stands. Null: the type has no stiffness; it then
  /// leaves KSTIF at 0 and connects no equations.
  MatrixForm (*stiffness)(int KFORM, double c1, double c2, bool reset) = nullptr;
  /// Factor of EDISP up to the next change of stiffness (EVNT); null: the type has no events.
  ElementEvent (*event)() = nullptr;
  /// Lines of the envelope report (ENVO).
  void (*envelope)() = nullptr;
  /// Lines of the results report (PRNT).
  void (*print)() = nullptr;
  /// The extremes of the envelope become the values of the state as it stands, their times TIME of the work block;
  /// null: the type keeps no extremes.
  void (*restart_envelope)() = nullptr;
  /// Nodal loads of waves and dynamic current at `time` (with load lines when asked for): ERES, in global directions,
  /// of the motion in EDISP (total displacements), EVEL, EACC; keeps them in its words of the sea. Null: water does not
  /// act on the type.
  void (*sea)(double time, bool lines) = nullptr;
};

struct ElementType {
  int ITYPE;          ///< type number
  const char* title;  ///< as printed in the group's echo
  int NDOF;           ///< the counts of the group record; 0: the type's input sets them
  int LFIX;
  int LTAN;
  int LAUX;
  /// Word (from 1) of the first portion that belongs to the stiffness pass beside KSTIF, 0 none: neither a state update
  /// nor a determination from the reference takes it back.
  int stiffness_word;
  /// Nodes that an element enters into the graph of node renumbering: the first different ones of its LM, so many at
  /// most; 0: its nodes count as unconnected there.
  int graph_nodes;
  /// Words (first, from 1, and count) of the first portion that belong to the pass of the sea: the loads of the present
  /// time. Neither a state update nor a determination from the reference takes them back. Count 0: none.
  int sea_word;
  int sea_words;
  ElementOperations operations;

  bool available() const { return operations.input != nullptr; }
};

/// The row of a type number. Any number outside 2..28 selects the truss.
const ElementType& element_type(int ITYPE);

}  // namespace tidearc
