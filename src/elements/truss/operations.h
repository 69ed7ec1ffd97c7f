// The operations of the truss element, type 1, for the table of types.
#pragma once

#include "elements/contract/types.h"

namespace tidearc {

void INEL01();
void SDET01();
void RESP01();
void DYNF01(double c1, double c2);
MatrixForm STIF01(int KFORM, double c1, double c2, bool reset);
ElementEvent EVNT01();
void ENVO01();
void PRNT01();
void RENV01();
void SEAL01(double time, bool lines);

}  // namespace tidearc
