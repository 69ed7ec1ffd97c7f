// Dynamic load records: ground acceleration, dynamic force, imposed displacement.
// The readers of records land with the dynamic analyses; until then a deck with records stops with a clear message, and
// a deck without them gets the headings.
#pragma once

namespace tidearc {

/// Dynamic load control card with its echo.
void DYNCTL();
/// The three record sections (storage phase 7).
void RECRIN();

}  // namespace tidearc
