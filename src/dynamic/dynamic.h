// The dynamic macros.
#pragma once

namespace tidearc {

/// Constant steps with equilibrium iteration.
void DYN2();
/// Variable steps, cut at events or judged by an error measure, with the load level of capacity searches.
void DYN1();

}  // namespace tidearc
