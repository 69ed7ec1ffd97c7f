// Formatted files on numbered units: opening, lines in, records out, positions. Buffers are our own, so that every
// write is checked when it happens and a long line is read over in bounded memory.
#include "run/units.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include "run/binary_file.h"
#include "run/stops.h"
#include "run/tapefile.h"

namespace tidearc {
namespace {

constexpr std::size_t chunk = 65536;  ///< bytes that are read at a time, and that are held before they are written
constexpr int unit_count = 1000;      ///< units 0 .. 999

/// What was done last on a unit; a change between reading and writing repositions the file.
enum class Doing { nothing, reading, writing };

/// One open formatted file.
struct OpenFile {
  std::string name;             ///< as it was opened, for messages
  std::filesystem::path place;  ///< absolute, for cutting
  std::FILE* stream = nullptr;
  bool read_only = false;
  Doing doing = Doing::nothing;
  std::int64_t records = 0;       ///< records read or written since the start of the file
  std::uintmax_t position = 0;    ///< bytes of the records read
  std::string output;             ///< records not yet written
  std::string line;               ///< the record read last
  std::array<char, chunk> input;  ///< bytes read and not yet used: [used, filled)
  std::size_t used = 0;
  std::size_t filled = 0;

  OpenFile() = default;
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() {
    if (stream != nullptr) std::fclose(stream);
  }
};

/// The table of open formatted files, by unit. The file layer's own state: written by the procedures of this file only.
struct FileTable {
  std::array<std::unique_ptr<OpenFile>, unit_count> files;
};
FileTable table;

/// The table's entry, or null for a number outside it.
std::unique_ptr<OpenFile>* entry(int unit) {
  if (unit < 0 || unit >= unit_count) return nullptr;
  return &table.files[static_cast<std::size_t>(unit)];
}

OpenFile* find(int unit) {
  const auto* const place = entry(unit);
  return place == nullptr ? nullptr : place->get();
}

std::string reason(std::string_view act) { return std::string(act) + ": " + std::strerror(errno); }

/// Ends the process; the unit's buffer is given up first, because the flush on the way out would fail again.
[[noreturn]] void fail(int unit, std::int64_t record, const std::string& cause) {
  if (OpenFile* const file = find(unit)) file->output.clear();
  io_failure(unit, record, cause);
}

void write_out(int unit, OpenFile& file) {
  if (file.output.empty()) return;
  const bool written = std::fwrite(file.output.data(), 1, file.output.size(), file.stream) == file.output.size();
  if (!written) fail(unit, file.records, reason("the file cannot be written"));
  file.output.clear();
}

OpenFile& open_or_implicit(int unit) {
  if (OpenFile* const file = find(unit)) return *file;
  open_formatted(unit, "fort." + std::to_string(unit), OpenMode::position);
  return *find(unit);
}

/// The first write at a position: what follows is cut.
void turn_to_writing(int unit, OpenFile& file) {
  if (file.doing == Doing::writing) return;
  if (file.read_only) fail(unit, file.records + 1, "a file opened for reading cannot be written");
  std::error_code error;
  if (std::filesystem::is_regular_file(file.place, error)) {
    std::filesystem::resize_file(file.place, file.position, error);
    if (error) fail(unit, file.records + 1, "the file cannot be cut: " + error.message());
    if (std::fseek(file.stream, static_cast<long>(file.position), SEEK_SET) != 0) {
      fail(unit, file.records + 1, reason("the file cannot be positioned"));
    }
  }
  file.doing = Doing::writing;
  file.used = file.filled = 0;
}

/// Gets more bytes; false at the end of the file.
bool refill(int unit, OpenFile& file) {
  file.used = 0;
  file.filled = std::fread(file.input.data(), 1, file.input.size(), file.stream);
  if (file.filled == 0 && std::ferror(file.stream) != 0) {
    fail(unit, file.records + 1, reason("the file cannot be read"));
  }
  return file.filled > 0;
}

void read_line(int unit, OpenFile& file, bool& found) {
  file.line.clear();
  found = false;
  bool ended = false;
  bool cut = false;
  while (!ended && (file.used < file.filled || refill(unit, file))) {
    found = true;
    const char* const from = file.input.data() + file.used;
    const std::size_t left = file.filled - file.used;
    const void* const mark = std::memchr(from, '\n', left);
    const std::size_t length = mark == nullptr ? left : static_cast<std::size_t>(static_cast<const char*>(mark) - from);
    ended = mark != nullptr;
    const std::size_t room = static_cast<std::size_t>(longest_line) - file.line.size();
    file.line.append(from, std::min(length, room));
    cut = cut || length > room;
    file.used += length + (ended ? 1 : 0);
    file.position += length + (ended ? 1 : 0);
  }
  if (!cut && !file.line.empty() && file.line.back() == '\r') file.line.pop_back();
  std::ranges::replace(file.line, '\t', ' ');
}

std::FILE* open_stream(const std::string& name, OpenMode mode) {
  switch (mode) {
    case OpenMode::existing:
      return std::fopen(name.c_str(), "rb");
    case OpenMode::fresh:
      return std::fopen(name.c_str(), "w+b");
    case OpenMode::position:
      break;
  }
  std::FILE* const stream = std::fopen(name.c_str(), "r+b");
  return stream != nullptr || errno != ENOENT ? stream : std::fopen(name.c_str(), "w+b");
}

}  // namespace

void open_formatted(int unit, const std::string& name, OpenMode mode) {
  close_formatted(unit);
  auto* const place = entry(unit);
  if (place == nullptr) io_failure(unit, 0, "a unit number outside 0 to " + std::to_string(unit_count - 1));
  auto file = std::make_unique<OpenFile>();
  file->name = name;
  file->stream = open_stream(name, mode);
  file->read_only = mode == OpenMode::existing;
  if (file->stream == nullptr) io_failure(unit, 0, name + " " + reason("cannot be opened"));
  std::setvbuf(file->stream, nullptr, _IONBF, 0);
  std::error_code ignored;
  file->place = std::filesystem::absolute(name, ignored);
  file->output.reserve(chunk + 4096);
  *place = std::move(file);
}

void close_formatted(int unit) {
  OpenFile* const file = find(unit);
  if (file == nullptr) return;
  write_out(unit, *file);
  const bool closed = std::fclose(file->stream) == 0;
  file->stream = nullptr;
  const std::int64_t record = file->records;
  const std::string cause = closed ? std::string() : file->name + " " + reason("cannot be closed");
  entry(unit)->reset();
  if (!closed) io_failure(unit, record, cause);
}

bool is_open_formatted(int unit) { return find(unit) != nullptr; }

void rewind_formatted(int unit) {
  OpenFile* const file = find(unit);
  if (file == nullptr) return;
  write_out(unit, *file);
  std::clearerr(file->stream);
  if (std::fseek(file->stream, 0, SEEK_SET) != 0) fail(unit, 0, reason("the file cannot be rewound"));
  file->doing = Doing::nothing;
  file->records = 0;
  file->position = 0;
  file->used = file->filled = 0;
}

std::string file_of_unit(int unit) {
  if (const OpenFile* const file = find(unit)) return file->name;
  std::string tape = file_of_tape(unit);
  return tape.empty() ? "unit " + std::to_string(unit) : tape;
}

void flush_formatted(int unit) {
  if (OpenFile* const file = find(unit)) write_out(unit, *file);
}

void flush_formatted_units() {
  for (int unit = 0; unit < unit_count; ++unit) flush_formatted(unit);
}

void flush_all_units() {
  // Record files first, and the error stream last of all: what fails is told there.
  close_all_tapes();
  close_binary_files();
  for (int unit = unit_count - 1; unit >= 0; --unit) close_formatted(unit);
}

std::int64_t record_of_unit(int unit) {
  const OpenFile* const file = find(unit);
  return file != nullptr ? file->records : 0;
}

std::int64_t deck_line() { return record_of_unit(units.NDIN); }

std::string_view deck_text() {
  const OpenFile* const file = find(units.NDIN);
  return file != nullptr ? std::string_view(file->line) : std::string_view();
}

bool next_line(int unit, std::string_view& line) {
  OpenFile& file = open_or_implicit(unit);
  if (file.doing == Doing::writing) return false;  // behind what was written there is nothing
  file.doing = Doing::reading;
  bool found = false;
  read_line(unit, file, found);
  if (found) ++file.records;
  line = file.line;
  return found;
}

bool next_line(int unit, std::string& line) {
  std::string_view text;
  const bool found = next_line(unit, text);
  line = text;
  return found;
}

bool look_ahead(int unit, const std::function<bool(std::string_view)>& go_on) {
  OpenFile& file = open_or_implicit(unit);
  std::error_code error;
  if (file.doing == Doing::writing || !std::filesystem::is_regular_file(file.place, error)) return false;
  const std::string line = file.line;
  const std::uintmax_t position = file.position;
  for (bool found = true; found;) {
    read_line(unit, file, found);
    if (found) found = go_on(file.line);
  }
  std::clearerr(file.stream);
  if (std::fseek(file.stream, static_cast<long>(position), SEEK_SET) != 0) {
    fail(unit, file.records, reason("the file cannot be positioned"));
  }
  file.used = file.filled = 0;
  file.position = position;
  file.line = line;
  return true;
}

std::string& begin_output(int unit) {
  OpenFile& file = open_or_implicit(unit);
  turn_to_writing(unit, file);
  return file.output;
}

void end_output(int unit, int records) {
  OpenFile& file = open_or_implicit(unit);
  file.records += records;
  if (file.output.size() >= chunk) write_out(unit, file);
}

void put_text(int unit, std::string_view text) {
  begin_output(unit) += text;
  end_output(unit, static_cast<int>(std::ranges::count(text, '\n')));
}

}  // namespace tidearc
