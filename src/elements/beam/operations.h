// The operations of the beam elements for the table of types: 3 linear, 7 its loads of the sea alone, 2 large
// displacement, 27 vortex shedding.
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
void SEAL03(double time, bool lines);

/// Type 7 has no stiffness and no result print.
void INEL07();
void SDET07();
void RESP07();
void ENVO07();
void RENV07();
void SEAL07(double time, bool lines);

void INEL02();
void SDET02();
void RESP02();
void DYNF02(double c1, double c2);
MatrixForm STIF02(int KFORM, double c1, double c2, bool reset);
void ENVO02();
void PRNT02();
void RENV02();
void SEAL02(double time, bool lines);

/// Type 27 differs in its input, in the title of its envelope and in its wave loads.
void INEL27();
void ENVO27();
void SEAL27(double time, bool lines);

}  // namespace tidearc
