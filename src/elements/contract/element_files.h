// Element records of a disk job: they stream through files, one at a time through the first words of element data.
//
//   NT1    reference generation: one record of LFIX words for each element
//   NT12   current generation, likewise, once a determination has come since the last state update
//   NT13   what belongs to the element and to neither generation: one record with the two words of the stiffness pass,
//          when the type has loads of the sea, one with them, and when it has a tail, one with the tail
//   NT2    the next version of NT13 while a pass changes it
//   NT15, NT16   partners of NT1 and NT12 while the start of a load step is kept
//
// Nothing is ever copied from one of these files to another to change its meaning: the unit variables exchange the
// files that they name. Four files are enough for the first portions: two generations of a step start, the reference
// and the one that a determination writes.
#pragma once

#include <type_traits>

#include "run/words.h"

namespace tidearc {

struct ElementType;

/// What a pass over the elements takes and leaves.
enum class Pass {
  reading,        ///< takes the states at hand; changes nothing
  kept,           ///< disk jobs: takes the current generation of the kept step start; changes nothing
  determination,  ///< goes from the reference generation to the current one; changes KSTIF
  rewriting,      ///< takes the states at hand, which are the reference too, and leaves both with other first portions
  stiffness,      ///< takes the states at hand; changes the tail and the words of the stiffness pass
  sea,            ///< takes the states at hand; changes the words of the sea
};

/// Files of first portions in a disk job, as unit numbers, and the marks of a core job. Set by LODELM, advanced by
/// determinations, state updates and the keeping of a step start.
struct GenerationBlock {
  int current = 0;          ///< current generation; that of NT1 when nothing has been determined since the last update
  int kept_reference = 0;   ///< reference generation of the step start that is kept, 0 none
  int kept_current = 0;     ///< current generation of it
  int kept_vectors = 0;     ///< where the vectors of it stand, behind the records of kept_current when that is the file
  bool kept_alike = false;  ///< core: both generations of the step start that is kept are the same, and stand once
  bool reference_due = false;  ///< core: the records in the pool are the reference too, which is not on NT12 yet
};
inline GenerationBlock generations;
static_assert(std::is_trivially_copyable_v<GenerationBlock>);

/// Puts the files of a pass at their start, but for the reference of a determination, which is read by whoever
/// determines.
void begin_streams(Pass pass);
/// The current element's record into its place in the pool: words of the stiffness pass and of the sea, tail and, but
/// for a determination, the first portion of the current generation.
void fetch_record(Pass pass, const ElementType& type, Word* record);
/// What the pass has changed of it onto the next files.
void store_record(Pass pass, const ElementType& type, const Word* record);
/// The files that the pass has written are those to read from now on.
void end_streams(Pass pass);

/// Divides the records as they were read in (first portions on NT1, tails on NT13) into the files above; both
/// generations are the state at the start.
void begin_streaming();
/// The current generation becomes the reference.
void exchange_generations();
/// Keeps both generations as they stand from being written over; NT15 then stands where further records of the step
/// start are to be written.
void keep_generations();
/// Both generations as they were kept; NT15 stands where the further records begin.
void return_to_kept_generations();

}  // namespace tidearc
