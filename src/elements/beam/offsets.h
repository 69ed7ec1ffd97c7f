// Rigid offsets between the nodes of a member and its ends.
//
// A node's rotation moves the end of its offset: u_end = u + r x e, and a force at the end gives the node the moment
// e x F (small rotations; offsets in master components, fixed during an analysis). Freedoms are those of both ends:
// three translations and three rotations of I, then of J.
#pragma once

#include <span>

#include "elements/beam/local_axes.h"

namespace tidearc {

/// Displacements of the nodes become those of the member's ends, in place.
void move_to_ends(EndOffsets ECC, std::span<double, 12> u);
/// Forces on the ends become forces on the nodes, in place.
void move_to_nodes(EndOffsets ECC, std::span<double, 12> f);
/// A matrix of the ends (12 by 12, symmetric, column by column) becomes one of the nodes, in place.
void move_matrix_to_nodes(EndOffsets ECC, std::span<double, 144> K);

}  // namespace tidearc
