// Element matrices into the profile, by difference, and the one entry for a current factor.
#pragma once

namespace tidearc {

/// Loops of an analysis over the elements, as STIFUP is asked for them. At TIME 0 it is the static one in any case.
enum AssemblyLoop : int {
  loop_static = -1,    ///< ASMSTA
  loop_dynamic = 0,    ///< ASMDYN
  loop_alternate = 1,  ///< ASMDY2; any other code too
};

/// Asks for a current factor: assembles when elements are due (NELCHK, KRESET), counting that in NSTUPD, and factorises
/// what changed; returns at once when there is nothing to do. A pending status change (KSTCHG) factorises from its
/// first equation on. A zero pivot stops the run. In a dynamic analysis a matrix that was formed with another step size
/// (integration.DTK), or by another analysis, is built anew: KRESET is set, KFORM becomes 1 and NEWCON 0.
void STIFUP(int code = loop_dynamic);

/// The element loop of a static analysis: adds what changed (everything into a cleared matrix when KRESET is set), in
/// core at once, with blocks over the file of element matrices; sets KFIRST to the lowest equation touched, gives
/// diagonals of exactly zero a stand-in in the first step of a macro and after a clearing (told on the report in core
/// alone). Prints "STIFFNESS FORMED". An entry outside the profile stops the run.
void ASMSTA();

/// The element loop of a dynamic analysis: elements deliver the matrix that the integration constants ask for, damping
/// included. A matrix that does not hold the masses yet (after a clearing, or at KFORM up to 1 with NEWCON 0) gets
/// AMASS times mass_coefficient() on its diagonal; there an equation without mass gets the stand-in of a zero diagonal,
/// without a word. NEWCON and DTK then tell that the matrix is that of the constants.
void ASMDYN();
/// The same loop, for an analysis that keeps an alternate state of the elements; none does.
inline void ASMDY2() { ASMDYN(); }

}  // namespace tidearc
