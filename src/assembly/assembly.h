// Element matrices into the profile, by difference, and the one entry for a current factor.
#pragma once

namespace tidearc {

/// Asks for a current factor: assembles when elements are due (NELCHK, KRESET), counting that in NSTUPD, and factorises
/// what changed; returns at once when there is nothing to do. A pending status change (KSTCHG) factorises from its
/// first equation on. A zero pivot stops the run.
void STIFUP();

/// The element loop of a static analysis: adds what changed (everything into a cleared matrix when KRESET is set), in
/// core at once, with blocks over the file of element matrices; sets KFIRST to the lowest equation touched, gives
/// diagonals of exactly zero a stand-in in the first step of a macro and after a clearing (told on the report in core
/// alone). Prints "STIFFNESS FORMED". An entry outside the profile stops the run.
void ASMSTA();

}  // namespace tidearc
