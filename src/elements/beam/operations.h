// The operations of the beam elements for the table of types: 3 linear, 2 large displacement, 27 vortex shedding.
#pragma once

#include "elements/contract/types.h"

namespace tidearc {

void INEL03();
void SDET03();
void RESP03();
void DYNF03(double c1, double c2);
MatrixForm STIF03(int KFORM, double c1, double c2, bool reset);
void ENVO03();
void PRNT03();
void RENV03();

void INEL02();
void SDET02();
void RESP02();
void DYNF02(double c1, double c2);
MatrixForm STIF02(int KFORM, double c1, double c2, bool reset);
void ENVO02();
void PRNT02();
void RENV02();

/// Type 27 differs in its input and in the title of its envelope.
void INEL27();
void ENVO27();

}  // namespace tidearc
