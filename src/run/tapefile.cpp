// The operations on TapeFiles: which file and which form stand behind a unit, and what a failure does.
#include "run/tapefile.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <map>
#include <optional>
#include <system_error>
#include <vector>

#include "run/layout.h"
#include "run/stops.h"
#include "run/tape_forms.h"
#include "run/units.h"

namespace tidearc {

namespace {

/// The file behind a unit. It takes its form at its first operation: a scratch file may change between problems.
struct Tape {
  std::string name;
  bool scratch = true;
  bool cut = false;  ///< what an earlier run left in the file has been dropped
  std::optional<MemoryTape> memory;
  std::optional<DiskTape> disk;
};

/// All record files by unit, and where those live that no other program reads.
struct TapeTable {
  std::map<int, Tape> tapes;
  bool scratch_in_memory = true;
};
TapeTable table;

constexpr int chunk_words = 2449;

void stop_on(int unit, std::int64_t record, const std::string& cause) {
  if (!cause.empty()) io_failure(unit, record, cause);
}

std::int64_t record_of(const Tape& tape) { return tape.memory ? tape.memory->at() : tape.disk ? tape.disk->at() : 1; }

/// Empties a file of the folder that an earlier run or problem left behind, when there is one.
void empty_file(int unit, const std::string& name) {
  std::error_code error;
  const auto bytes = std::filesystem::file_size(name, error);
  if (error || bytes == 0) return;
  std::filesystem::resize_file(name, 0, error);
  if (error) io_failure(unit, 0, "the file cannot be emptied: " + error.message());
}

/// The tape of a unit, in its form.
Tape& ready(int unit) {
  auto found = table.tapes.find(unit);
  if (found == table.tapes.end()) {
    found = table.tapes.emplace(unit, Tape{"fort." + std::to_string(unit), true, false, {}, {}}).first;
  }
  Tape& tape = found->second;
  if (tape.memory || tape.disk) return tape;
  if (tape.scratch && table.scratch_in_memory) {
    tape.memory.emplace();
  } else {
    tape.disk.emplace();
    stop_on(unit, 0, tape.disk->open(tape.name, tape.scratch && !tape.cut));
    tape.cut = true;
  }
  return tape;
}

void write_record(int unit, int count, const void* buffer) {
  Tape& tape = ready(unit);
  const Word* from = static_cast<const Word*>(buffer);
  const std::int64_t words = std::max(count, 0);
  if (tape.memory && !tape.cut) {
    empty_file(unit, tape.name);
    tape.cut = true;
  }
  const std::int64_t record = record_of(tape);
  stop_on(unit, record, tape.memory ? tape.memory->write(from, words) : tape.disk->write(from, words));
}

void read_record(int unit, int count, void* buffer) {
  Tape& tape = ready(unit);
  const std::int64_t words = std::max(count, 0);
  const std::int64_t record = record_of(tape);
  if (tape.disk) {
    stop_on(unit, record, tape.disk->read(static_cast<Word*>(buffer), words));
    return;
  }
  std::span<const Word> found;
  stop_on(unit, record, tape.memory->next(found));
  if (static_cast<std::int64_t>(found.size()) < words) {
    io_failure(
        unit, record,
        "the record holds " + std::to_string(found.size()) + " words, " + std::to_string(words) + " were asked for");
  }
  if (words > 0) std::memcpy(buffer, found.data(), static_cast<std::size_t>(words) * sizeof(Word));
}

void rewind_tape(int unit) {
  Tape& tape = ready(unit);
  if (tape.memory) {
    tape.memory->rewind();
  } else {
    tape.disk->rewind();
  }
}

void skip_records(int unit, int count) {
  if (count < 1) return;
  Tape& tape = ready(unit);
  for (int i = 0; i < count; ++i) {
    const std::int64_t record = record_of(tape);
    stop_on(unit, record, tape.memory ? tape.memory->skip() : tape.disk->skip());
  }
}

void back_records(int unit, int count) {
  if (count < 1) return;
  Tape& tape = ready(unit);
  for (int i = 0; i < count && record_of(tape) > 1; ++i) {
    if (tape.memory) {
      tape.memory->back();
    } else {
      stop_on(unit, record_of(tape) - 1, tape.disk->back());
    }
  }
}

void wrong_operation() { put_text(units.NDOUT, " ERROR IN CALL TO FILE; OPERATION SPECIFIED INCORRECTLY\n"); }

int chunks_of(int count) { return count < 1 ? 1 : (count - 1) / chunk_words + 1; }

void write_chunks(int unit, int count, const Word* from) {
  const int chunks = chunks_of(count);
  std::array<Word, chunk_words + 1> chunk{};
  chunk[0] = chunks;
  for (int i = 0; i < chunks; ++i) {
    const int part = std::clamp(count - i * chunk_words, 0, chunk_words);
    std::copy_n(from + static_cast<std::ptrdiff_t>(i) * chunk_words, part, chunk.begin() + 1);
    write_record(unit, part + 1, chunk.data());
  }
}

/// Reads the first chunk's word of a long record and moves over the rest of them.
void skip_chunks(int unit) {
  Word chunks = 0;
  read_record(unit, 1, &chunks);
  skip_records(unit, chunks - 1);
}

void read_chunks(int unit, int count, Word* to) {
  const int asked = chunks_of(count);
  std::array<Word, chunk_words + 1> chunk{};
  int held = asked;
  for (int i = 0; i < asked; ++i) {
    const int part = std::clamp(count - i * chunk_words, 0, chunk_words);
    const std::int64_t record = record_of(ready(unit));
    read_record(unit, part + 1, chunk.data());
    if (i == 0) held = chunk[0];
    if (held < asked) {
      io_failure(unit, record,
                 "the record has " + std::to_string(held) + " chunks, " + std::to_string(asked) + " were asked for");
    }
    std::copy_n(chunk.begin() + 1, part, to + static_cast<std::ptrdiff_t>(i) * chunk_words);
  }
  skip_records(unit, held - asked);
}

/// Gives up a tape's form: records in memory are lost, a file on disk is closed.
void drop_form(int unit, Tape& tape) {
  tape.memory.reset();
  if (!tape.disk) return;
  const std::string cause = tape.disk->close();
  tape.disk.reset();
  stop_on(unit, 0, cause);
}

}  // namespace

void FILE(int unit, std::string_view operation, int count, void* buffer) {
  if (operation == "READ") {
    read_record(unit, count, buffer);
  } else {
    FILE(unit, operation, count, static_cast<const void*>(buffer));
  }
}

void FILE(int unit, std::string_view operation, int count, const void* buffer) {
  if (operation == "WRIT") {
    write_record(unit, count, buffer);
  } else {
    FILE(unit, operation, count);
  }
}

void FILE(int unit, std::string_view operation, int count) {
  if (operation == "SKIP") {
    skip_records(unit, count);
  } else if (operation == "BACK") {
    back_records(unit, count);
  } else {
    FILE(unit, operation);
  }
}

void FILE(int unit, std::string_view operation) {
  if (operation == "REWI") {
    rewind_tape(unit);
  } else {
    wrong_operation();
  }
}

void FILEX(int unit, std::string_view operation, int count, void* buffer) {
  if (operation == "WRIT") {
    write_chunks(unit, count, static_cast<const Word*>(buffer));
  } else if (operation == "READ") {
    read_chunks(unit, count, static_cast<Word*>(buffer));
  } else if (operation == "REWI") {
    rewind_tape(unit);
  } else if (operation == "SKIP") {
    for (int i = 0; i < count; ++i) skip_chunks(unit);
  } else {
    wrong_operation();
  }
}

void FOPEN(int) {}

void FCLOS(int unit) {
  if (unit != 17 && unit != 23 && unit != 24 && unit != 25) return;
  close_formatted(unit);
  const auto found = table.tapes.find(unit);
  if (found == table.tapes.end()) return;
  if (found->second.memory) {
    found->second.memory->rewind();
  } else {
    drop_form(unit, found->second);
  }
}

std::span<const Word> next_record(int unit) {
  Tape& tape = ready(unit);
  std::span<const Word> record;
  const std::int64_t number = record_of(tape);
  stop_on(unit, number, tape.memory ? tape.memory->next(record) : tape.disk->next(record));
  return record;
}

void open_tape(int unit, const std::string& file, bool scratch) {
  close_tape(unit);
  table.tapes.emplace(unit, Tape{file, scratch, false, {}, {}});
  if (!scratch) {
    ready(unit);
    return;
  }
  // The name stands in the folder from now on, whatever form the records take.
  DiskTape name_only;
  stop_on(unit, 0, name_only.open(file, false));
  stop_on(unit, 0, name_only.close());
}

void close_tape(int unit, bool remove) {
  const auto found = table.tapes.find(unit);
  if (found == table.tapes.end()) return;
  drop_form(unit, found->second);
  if (remove) {
    std::error_code error;
    std::filesystem::remove(found->second.name, error);
    if (error) io_failure(unit, 0, "the file cannot be deleted: " + error.message());
  }
  table.tapes.erase(found);
}

bool is_open_tape(int unit) { return table.tapes.contains(unit); }

void keep_scratch_in_memory(bool in_memory) {
  table.scratch_in_memory = in_memory;
  for (auto& [unit, tape] : table.tapes) {
    if (!tape.scratch) continue;
    const bool was_on_disk = tape.disk.has_value();
    drop_form(unit, tape);
    if (was_on_disk) empty_file(unit, tape.name);
  }
}

std::string file_of_tape(int unit) {
  const auto found = table.tapes.find(unit);
  return found == table.tapes.end() ? std::string() : found->second.name;
}

void flush_all_tapes() {
  for (auto& [unit, tape] : table.tapes) {
    if (tape.disk) stop_on(unit, 0, tape.disk->flush());
  }
}

void close_all_tapes() {
  for (auto& [unit, tape] : table.tapes) drop_form(unit, tape);
  table.tapes.clear();
  table.scratch_in_memory = true;
}

}  // namespace tidearc
