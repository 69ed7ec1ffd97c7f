// TapeFiles: sequential files of records of 4-byte words, in memory or on disk, named by their unit.
//
// On disk a record is its length in bytes (signed 32-bit, little-endian), its words, and the length again; a record of
// more than 2147483639 bytes is written in pieces whose length words are negative but for the last. A file that no
// other program reads lives in memory while the storage scheme is core; its name, when it has one, stands in the
// folder, empty.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "run/words.h"

namespace tidearc {

/// The one operation on TapeFiles.
/// @param unit       unit variable, such as units.NT10; a unit without a file gets fort.<unit> at its first use
/// @param operation  READ, WRIT, REWI, SKIP or BACK, compared as four characters; any other prints a line on the report
///                   and has no effect
/// @param count      words (READ, WRIT; negative counts as zero) or records (SKIP, BACK; none when not positive)
/// @param buffer     destination of READ, source of WRIT
/// A READ past the end, or of more words than the record holds, ends the process in the I/O layer. A READ of fewer
/// words takes the first ones and moves on to the next record. WRIT cuts what follows. SKIP past the end ends the
/// process too; BACK stops at the start.
void FILE(int unit, std::string_view operation, int count, void* buffer);
void FILE(int unit, std::string_view operation, int count, const void* buffer);  ///< WRIT
void FILE(int unit, std::string_view operation, int count);                      ///< SKIP, BACK
void FILE(int unit, std::string_view operation);                                 ///< REWI

/// Long records in chunks of 2449 words, one record each, behind a word that tells the number of chunks. READ reads
/// over the chunks that were not asked for; there is no BACK.
void FILEX(int unit, std::string_view operation, int count, void* buffer);

void FOPEN(int unit);  ///< no effect: the hook before a file is used
/// Closes units 17, 23, 24 and 25; no effect on others. The next operation opens the file again, at its start; a
/// scratch file that lives in memory keeps its records.
void FCLOS(int unit);

/// READ without a copy: the next record's words, valid until the next call for this unit. Ends the process as READ
/// does.
std::span<const Word> next_record(int unit);

/// Opens a named record file (status UNKNOWN: made when missing, not cut). `scratch`: no other program reads it, so it
/// may live in memory, and what an earlier run left in it is never read.
void open_tape(int unit, const std::string& file, bool scratch);
/// Closes; with `remove` the file is deleted from the folder.
void close_tape(int unit, bool remove = false);
bool is_open_tape(int unit);

/// Where scratch files live from now on: in memory (core jobs, and at the start) or on disk. Their contents are
/// dropped.
void keep_scratch_in_memory(bool in_memory);

/// Name of the record file on a unit, empty when the unit has none.
std::string file_of_tape(int unit);
/// Writes what record files still hold in their buffers; a failure ends the process in the I/O layer.
void flush_all_tapes();
/// Flushes and closes every record file and forgets the units' names; nothing is deleted. Back to the state of a start.
void close_all_tapes();

}  // namespace tidearc
