// Where a beam stands and what the model gets from it: axes with their messages, location vector, mass, self weight.
#pragma once

#include <cstdint>

#include "elements/beam/local_axes.h"
#include "run/stops.h"

namespace tidearc {

/// An element on its way from the card to its record.
struct BeamPlace {
  int number;
  int NODEI, NODEJ;
  int K;  ///< third node of the card; 0 or below: none
  AxisConvention convention;
  EndOffsets ECC;
  double angle;    ///< of axes 2 and 3 about x  [rad]
  DeckPlace card;  ///< the whole card
};

struct PlacedBeam {
  LocalAxes local;
  int KNODE;  ///< third node, or the AxisConvention that was taken
};

/// Distance between the nodes of a card for its echo, 0 where a node is outside the model.
double node_distance(int NODEI, int NODEJ);

/// Reports nodes I, J and K (when positive) outside the model; true when all are inside.
bool beam_nodes_in_range(const BeamPlace& place, const DeckPlace& I, const DeckPlace& J, const DeckPlace& K);

/// Local axes. A third node on the member's line is told and the SACS axes are taken; a member without length ends the
/// run. The nodes are inside the model.
PlacedBeam place_beam(const BeamPlace& place);

/// Location vector of all six components of both nodes; and with the column heights of an element with stiffness.
void locate_beam(int NODEI, int NODEJ, int* LM);
void connect_beam(int NODEI, int NODEJ, int* LM);

/// What a length of member weighs: half the mass on the translations of both nodes, half the weight on both nodes along
/// gravity; with `end_moments` also the fixed-end moments of the weight and those of the end forces about the nodes.
struct BeamWeight {
  int NODEI, NODEJ;
  double length;
  double mass;      ///< per unit length   [mass/length]
  double weight;    ///< per unit length   [force/length]
  const double* x;  ///< member axis
  EndOffsets ECC;
  bool end_moments;
};
void add_mass_and_weight(const BeamWeight& beam);

}  // namespace tidearc
