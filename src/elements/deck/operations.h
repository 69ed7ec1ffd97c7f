// The operations of the deck inundation element for the table of types.
#pragma once

namespace tidearc {

void INEL20();
/// Nothing of the element deforms.
void SDET20();
void RESP20();
void PRNT20();
/// Nodal loads of the sea, ramped, a quarter of force and moment to each node.
void SEAL20(double time, bool lines);

}  // namespace tidearc
