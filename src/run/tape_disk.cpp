// Record files on disk. All positions are kept here, so that a cut, a step back and a change between reading and
// writing need no question to the file; and so is the buffer, because most records are short.
#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <limits>
#include <system_error>

#include "run/tape_forms.h"

namespace tidearc {

namespace {

static_assert(std::endian::native == std::endian::little, "record files are little-endian");

constexpr std::int64_t length_bytes = 4;
constexpr std::int64_t word_bytes = sizeof(Word);

/// Words that hold `bytes` bytes: a piece may end within a word.
constexpr std::int64_t words_of(std::int64_t bytes) { return (bytes + word_bytes - 1) / word_bytes; }

std::string system_cause(const char* what) { return std::string(what) + ": " + std::strerror(errno); }

std::string damaged() { return "the record is damaged"; }

/// Data bytes of a piece; its length word is negative when another piece follows.
std::int64_t data_bytes(std::int32_t length) { return length < 0 ? -static_cast<std::int64_t>(length) : length; }

}  // namespace

std::string DiskTape::open(const std::string& path, bool cut) {
  namespace fs = std::filesystem;
  std::error_code error;
  path_ = fs::absolute(path, error).string();
  std::FILE* file = cut ? nullptr : std::fopen(path.c_str(), "r+b");
  if (file == nullptr && (cut || errno == ENOENT)) file = std::fopen(path.c_str(), "w+b");
  if (file == nullptr) return system_cause("the file cannot be opened");
  file_.reset(file);
  std::setvbuf(file, nullptr, _IONBF, 0);
  buffer_ = std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(room_));
  first_ = 0;
  held_ = 0;
  waiting_ = false;
  motion_ = Motion::none;
  // A device (results sent to nowhere) holds nothing that could be read.
  const bool measured = fs::is_regular_file(path_, error);
  size_ = measured ? static_cast<std::int64_t>(fs::file_size(path_, error)) : 0;
  if (error) return "the file cannot be measured: " + error.message();
  rewind();
  return {};
}

void DiskTape::rewind() {
  position_ = 0;
  record_ = 1;
}

/// Puts the file's own position at an offset, when it is not there in the same motion.
std::string DiskTape::aim(Motion motion, std::int64_t offset) {
  if (motion_ == motion && file_at_ == offset) return {};
  motion_ = Motion::none;
  if (std::fseek(file_.get(), static_cast<long>(offset), SEEK_SET) != 0) {
    return system_cause("the file cannot be positioned");
  }
  motion_ = motion;
  file_at_ = offset;
  return {};
}

std::string DiskTape::read_file(std::int64_t offset, char* to, std::int64_t bytes) {
  if (std::string cause = aim(Motion::reading, offset); !cause.empty()) return cause;
  const auto wanted = static_cast<std::size_t>(bytes);
  if (std::fread(to, 1, wanted, file_.get()) != wanted) {
    motion_ = Motion::none;
    return system_cause("the file cannot be read");
  }
  file_at_ += bytes;
  return {};
}

std::string DiskTape::write_file(std::int64_t offset, const char* from, std::int64_t bytes) {
  if (bytes == 0) return {};
  if (std::string cause = aim(Motion::writing, offset); !cause.empty()) return cause;
  const auto wanted = static_cast<std::size_t>(bytes);
  if (std::fwrite(from, 1, wanted, file_.get()) != wanted) {
    motion_ = Motion::none;
    return system_cause("the file cannot be written");
  }
  file_at_ += bytes;
  return {};
}

/// Writes what waits in the buffer; its bytes stay there to be read.
std::string DiskTape::write_held() {
  if (!waiting_) return {};
  waiting_ = false;
  return write_file(first_, buffer_.get(), held_);
}

/// Adds bytes at the position, which is the end of the file.
std::string DiskTape::put(const char* from, std::int64_t bytes) {
  if (bytes == 0) return {};
  if (!waiting_ || held_ + bytes > room_) {
    if (std::string cause = write_held(); !cause.empty()) return cause;
    first_ = position_;
    held_ = 0;
    waiting_ = true;
  }
  if (bytes <= room_) {
    std::memcpy(buffer_.get() + held_, from, static_cast<std::size_t>(bytes));
    held_ += bytes;
  } else {
    if (std::string cause = write_file(position_, from, bytes); !cause.empty()) return cause;
    first_ = position_ + bytes;
  }
  position_ += bytes;
  size_ = position_;
  return {};
}

/// Fills the buffer so that it holds `bytes` bytes from an offset, and as many behind them as there are. A step back
/// fills it with what stands before instead.
std::string DiskTape::read_ahead(std::int64_t offset, std::int64_t bytes) {
  const bool backward = offset < first_ && offset + bytes <= first_ + held_;
  const std::int64_t from = backward ? std::max<std::int64_t>(0, offset + bytes - room_) : offset;
  if (std::string cause = write_held(); !cause.empty()) return cause;
  const std::int64_t count = std::min(room_, size_ - from);
  held_ = 0;
  if (std::string cause = read_file(from, buffer_.get(), count); !cause.empty()) return cause;
  first_ = from;
  held_ = count;
  return {};
}

/// Takes bytes of the file, which the caller knows to be there. What the buffer cannot hold goes straight to its place.
std::string DiskTape::get(std::int64_t offset, char* to, std::int64_t bytes) {
  if (!holds(offset, bytes)) {
    if (bytes > room_) return get_past_buffer(offset, to, bytes);
    if (std::string cause = read_ahead(offset, bytes); !cause.empty()) return cause;
  }
  std::memcpy(to, buffer_.get() + (offset - first_), static_cast<std::size_t>(bytes));
  return {};
}

std::string DiskTape::get_past_buffer(std::int64_t offset, char* to, std::int64_t bytes) {
  if (std::string cause = write_held(); !cause.empty()) return cause;
  if (offset >= first_ && offset < first_ + held_) {  // its beginning was read ahead
    const std::int64_t here = first_ + held_ - offset;
    std::memcpy(to, buffer_.get() + (offset - first_), static_cast<std::size_t>(here));
    to += here;
    offset += here;
    bytes -= here;
  }
  return read_file(offset, to, bytes);
}

/// Cuts what follows the position; a write comes next, which takes the buffer for itself.
std::string DiskTape::cut_here() {
  if (position_ >= size_) return {};
  if (std::string cause = write_held(); !cause.empty()) return cause;
  std::error_code error;
  std::filesystem::resize_file(path_, static_cast<std::uintmax_t>(position_), error);
  if (error) return "the file cannot be cut: " + error.message();
  size_ = position_;
  return {};
}

std::string DiskTape::write_piece(const char* from, std::int64_t bytes, bool more) {
  const auto length = static_cast<std::int32_t>(more ? -bytes : bytes);
  const char* length_word = reinterpret_cast<const char*>(&length);
  if (std::string cause = put(length_word, length_bytes); !cause.empty()) return cause;
  if (std::string cause = put(from, bytes); !cause.empty()) return cause;
  return put(length_word, length_bytes);
}

std::string DiskTape::write(const Word* from, std::int64_t count) {
  if (std::string cause = cut_here(); !cause.empty()) return cause;
  const char* next_byte = reinterpret_cast<const char*>(from);
  std::int64_t left = count * word_bytes;
  while (left > piece_) {
    if (std::string cause = write_piece(next_byte, piece_, true); !cause.empty()) return cause;
    next_byte += piece_;
    left -= piece_;
  }
  if (std::string cause = write_piece(next_byte, left, false); !cause.empty()) return cause;
  ++record_;
  return {};
}

/// Reads the length word at the position and checks that the piece ends within the file.
std::string DiskTape::length_of_piece(std::int32_t& length) {
  if (position_ + 2 * length_bytes > size_) return damaged();
  if (std::string cause = get(position_, reinterpret_cast<char*>(&length), length_bytes); !cause.empty()) return cause;
  if (length == std::numeric_limits<std::int32_t>::min() || position_ + data_bytes(length) + 2 * length_bytes > size_) {
    return damaged();
  }
  return {};
}

/// Moves over the piece; its second length word must be `length` too.
std::string DiskTape::end_piece(std::int32_t length) {
  std::int32_t again = 0;
  const std::int64_t at = position_ + length_bytes + data_bytes(length);
  if (std::string cause = get(at, reinterpret_cast<char*>(&again), length_bytes); !cause.empty()) return cause;
  if (again != length) return damaged();
  position_ = at + length_bytes;
  return {};
}

/// Moves over one record and takes its first `wanted` bytes, or with `hold` the whole record into record_held_. `found`
/// is the length of the whole record.
std::string DiskTape::read_bytes(char* to, std::int64_t wanted, std::int64_t& found, bool hold) {
  found = 0;
  if (position_ >= size_) return "end of file";
  std::int32_t length = 0;
  do {
    if (std::string cause = length_of_piece(length); !cause.empty()) return cause;
    const std::int64_t bytes = data_bytes(length);
    if (hold) {
      wanted = found + bytes;
      record_held_.resize(static_cast<std::size_t>(words_of(wanted)));
      to = reinterpret_cast<char*>(record_held_.data());
    }
    const std::int64_t taken = std::clamp<std::int64_t>(wanted - found, 0, bytes);
    if (taken > 0) {
      if (std::string cause = get(position_ + length_bytes, to + found, taken); !cause.empty()) return cause;
    }
    if (std::string cause = end_piece(length); !cause.empty()) return cause;
    found += bytes;
  } while (length < 0);
  ++record_;
  return {};
}

std::string DiskTape::read(Word* to, std::int64_t count) {
  std::int64_t found = 0;
  const std::int64_t wanted = count * word_bytes;
  if (std::string cause = read_bytes(reinterpret_cast<char*>(to), wanted, found, false); !cause.empty()) return cause;
  if (found >= wanted) return {};
  return "the record holds " + std::to_string(found / word_bytes) + " words, " + std::to_string(count) +
         " were asked for";
}

std::string DiskTape::skip() {
  std::int64_t found = 0;
  return read_bytes(nullptr, 0, found, false);
}

/// The record as it stands in the buffer, when it is short enough for that and begins on a word there; nothing else.
std::string DiskTape::next_in_buffer(std::span<const Word>& record) {
  std::int32_t length = 0;
  if (std::string cause = length_of_piece(length); !cause.empty()) return cause;
  const std::int64_t whole = length + 2 * length_bytes;
  if (length < 0 || whole > room_) return {};
  if (!holds(position_, whole)) {
    if (std::string cause = read_ahead(position_, whole); !cause.empty()) return cause;
  }
  const char* words = buffer_.get() + (position_ + length_bytes - first_);
  if (reinterpret_cast<std::uintptr_t>(words) % alignof(Word) != 0) return {};
  record = {reinterpret_cast<const Word*>(words), static_cast<std::size_t>(length / word_bytes)};
  return {};
}

std::string DiskTape::next(std::span<const Word>& record) {
  if (position_ >= size_) return "end of file";
  record = {};
  if (std::string cause = next_in_buffer(record); !cause.empty()) return cause;
  if (record.data() != nullptr) return skip();  // which stays within the buffer
  std::int64_t found = 0;
  if (std::string cause = read_bytes(nullptr, 0, found, true); !cause.empty()) return cause;
  record = {record_held_.data(), static_cast<std::size_t>(found / word_bytes)};
  return {};
}

/// Moves back over one piece; `continued` tells whether the piece before belongs to the same record.
std::string DiskTape::back_piece(bool first, bool& continued) {
  std::int32_t length = 0;
  if (position_ < 2 * length_bytes) return damaged();
  const std::int64_t second = position_ - length_bytes;
  if (std::string cause = get(second, reinterpret_cast<char*>(&length), length_bytes); !cause.empty()) return cause;
  continued = length < 0;
  if (first == continued) {
    // The last piece of a record has no sign; a piece with one before it belongs to the record that is moved over.
    return first ? damaged() : std::string();
  }
  const std::int64_t start = position_ - data_bytes(length) - 2 * length_bytes;
  if (length == std::numeric_limits<std::int32_t>::min() || start < 0) return damaged();
  position_ = start;
  return {};
}

std::string DiskTape::back() {
  if (position_ == 0) return {};
  bool continued = false;
  if (std::string cause = back_piece(true, continued); !cause.empty()) return cause;
  do {
    if (position_ == 0) break;
    if (std::string cause = back_piece(false, continued); !cause.empty()) return cause;
  } while (continued);
  --record_;
  return {};
}

std::string DiskTape::flush() {
  if (file_ == nullptr) return {};
  return write_held();
}

std::string DiskTape::close() {
  if (file_ == nullptr) return {};
  std::string cause = write_held();
  if (std::fclose(file_.release()) != 0 && cause.empty()) cause = system_cause("the file cannot be closed");
  return cause;
}

}  // namespace tidearc
