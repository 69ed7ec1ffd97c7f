// Record files on disk. All positions are kept here, so that a cut, a step back and a change between reading and
// writing need no question to the file.
#include <algorithm>
#include <array>
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
constexpr std::size_t buffer_bytes = 262144;

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
  buffer_ = std::make_unique_for_overwrite<char[]>(buffer_bytes);
  std::setvbuf(file, buffer_.get(), _IOFBF, buffer_bytes);
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
  motion_ = Motion::none;
}

/// Puts the file's own position where this tape is, when the last motion was another.
std::string DiskTape::aim(Motion motion) {
  if (motion_ == motion) return {};
  if (std::fseek(file_.get(), static_cast<long>(position_), SEEK_SET) != 0)
    return system_cause("the file cannot be positioned");
  motion_ = motion;
  return {};
}

std::string DiskTape::cut_here() {
  if (position_ >= size_) return {};
  if (std::string cause = flush(); !cause.empty()) return cause;
  std::error_code error;
  std::filesystem::resize_file(path_, static_cast<std::uintmax_t>(position_), error);
  if (error) return "the file cannot be cut: " + error.message();
  size_ = position_;
  motion_ = Motion::none;
  return {};
}

std::string DiskTape::write_piece(const char* from, std::int64_t bytes, bool more) {
  const auto length = static_cast<std::int32_t>(more ? -bytes : bytes);
  const auto count = static_cast<std::size_t>(bytes);
  if (std::fwrite(&length, 1, length_bytes, file_.get()) != length_bytes ||
      (count > 0 && std::fwrite(from, 1, count, file_.get()) != count) ||
      std::fwrite(&length, 1, length_bytes, file_.get()) != length_bytes) {
    return system_cause("the file cannot be written");
  }
  position_ += bytes + 2 * length_bytes;
  size_ = position_;
  return {};
}

std::string DiskTape::write(const Word* from, std::int64_t count) {
  if (std::string cause = cut_here(); !cause.empty()) return cause;
  if (std::string cause = aim(Motion::writing); !cause.empty()) return cause;
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
  if (std::fread(&length, 1, length_bytes, file_.get()) != length_bytes) return system_cause("the file cannot be read");
  if (length == std::numeric_limits<std::int32_t>::min() || position_ + data_bytes(length) + 2 * length_bytes > size_) {
    return damaged();
  }
  return {};
}

/// Moves over `unread` bytes of the piece and its second length word, which must be `length` too.
std::string DiskTape::end_piece(std::int32_t length, std::int64_t unread) {
  if (unread > 0 && std::fseek(file_.get(), static_cast<long>(unread), SEEK_CUR) != 0) {
    return system_cause("the file cannot be positioned");
  }
  std::int32_t again = 0;
  if (std::fread(&again, 1, length_bytes, file_.get()) != length_bytes) return system_cause("the file cannot be read");
  if (again != length) return damaged();
  position_ += data_bytes(length) + 2 * length_bytes;
  return {};
}

/// Moves over one record and takes its first `wanted` bytes, or with `hold` the whole record into held_. `found` is the
/// length of the whole record.
std::string DiskTape::read_bytes(char* to, std::int64_t wanted, std::int64_t& found, bool hold) {
  found = 0;
  if (position_ >= size_) return "end of file";
  if (std::string cause = aim(Motion::reading); !cause.empty()) return cause;
  std::int32_t length = 0;
  do {
    if (std::string cause = length_of_piece(length); !cause.empty()) return cause;
    const std::int64_t bytes = data_bytes(length);
    if (hold) {
      wanted = found + bytes;
      held_.resize(static_cast<std::size_t>(words_of(wanted)));
      to = reinterpret_cast<char*>(held_.data());
    }
    const std::int64_t taken = std::clamp<std::int64_t>(wanted - found, 0, bytes);
    const auto count = static_cast<std::size_t>(taken);
    if (taken > 0 && std::fread(to + found, 1, count, file_.get()) != count) {
      return system_cause("the file cannot be read");
    }
    if (std::string cause = end_piece(length, bytes - taken); !cause.empty()) return cause;
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

std::string DiskTape::next(std::span<const Word>& record) {
  std::int64_t found = 0;
  if (std::string cause = read_bytes(nullptr, 0, found, true); !cause.empty()) return cause;
  record = {held_.data(), static_cast<std::size_t>(found / word_bytes)};
  return {};
}

/// Moves back over one piece; `continued` tells whether the piece before belongs to the same record.
std::string DiskTape::back_piece(bool first, bool& continued) {
  std::int32_t length = 0;
  if (position_ < 2 * length_bytes) return damaged();
  if (std::fseek(file_.get(), static_cast<long>(position_ - length_bytes), SEEK_SET) != 0 ||
      std::fread(&length, 1, length_bytes, file_.get()) != length_bytes) {
    return system_cause("the file cannot be read");
  }
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
  // Reading behind a write needs the seek that back_piece begins with.
  motion_ = Motion::none;
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
  if (file_ == nullptr || motion_ != Motion::writing) return {};
  motion_ = Motion::none;
  return std::fflush(file_.get()) == 0 ? std::string() : system_cause("the file cannot be written");
}

std::string DiskTape::close() {
  if (file_ == nullptr) return {};
  return std::fclose(file_.release()) == 0 ? std::string() : system_cause("the file cannot be closed");
}

}  // namespace tidearc
