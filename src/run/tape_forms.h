// The two forms of a sequential record file, in memory and on disk, below the operations of tapefile.h.
// Every operation tells its failure as a cause in words, empty when it went well; nothing is printed or stopped here.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "run/words.h"

namespace tidearc {

/// Most data bytes of one piece of a record on disk: the two length words of a piece stay within 31 bits with it.
inline constexpr std::int64_t largest_piece = 2147483639;

/// Records in memory, in blocks that stay where they are, so that a record can be read without a copy.
class MemoryTape {
 public:
  std::string write(const Word* from, std::int64_t count);  ///< cuts what follows, then adds one record
  std::string next(std::span<const Word>& record);          ///< the next record's words, valid until it is cut
  std::string skip();
  void back();  ///< no effect at the start
  void rewind() { at_ = 0; }
  std::int64_t at() const { return static_cast<std::int64_t>(at_) + 1; }  ///< number of the next record, from 1

 private:
  struct Block {
    std::unique_ptr<Word[]> words;
    std::int64_t size = 0;
  };
  struct Record {
    std::size_t block = 0;
    std::int64_t first = 0;
    std::int64_t count = 0;
  };
  Word* room_for(std::int64_t count, Record& place);

  std::vector<Block> blocks_;
  std::vector<Record> records_;
  std::size_t at_ = 0;
};

/// Records in a file: length in bytes, words, length again; long records in pieces, see largest_piece.
///
/// A stretch of the file stands in a buffer of the tape's own, either read ahead or waiting to be written, so that
/// records that are short beside it cost a copy and no call of the system.
class DiskTape {
 public:
  /// @param piece  most data bytes of one piece; tests make it small
  /// @param room   bytes of the buffer; tests make it small
  explicit DiskTape(std::int64_t piece = largest_piece, std::int64_t room = 262144) : piece_(piece), room_(room) {}

  std::string open(const std::string& path, bool cut);      ///< made when missing; `cut` empties it
  std::string write(const Word* from, std::int64_t count);  ///< cuts what follows, then adds one record
  std::string read(Word* to, std::int64_t count);           ///< first `count` words of the next record
  std::string next(std::span<const Word>& record);          ///< the next record's words, valid until the next call
  std::string skip();
  std::string back();  ///< no effect at the start
  void rewind();
  std::string flush();
  std::string close();
  const std::string& path() const { return path_; }
  std::int64_t at() const { return record_; }  ///< number of the next record, from 1

 private:
  enum class Motion { none, reading, writing };
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  std::string aim(Motion motion, std::int64_t offset);
  std::string read_file(std::int64_t offset, char* to, std::int64_t bytes);
  std::string write_file(std::int64_t offset, const char* from, std::int64_t bytes);
  std::string get(std::int64_t offset, char* to, std::int64_t bytes);
  std::string get_past_buffer(std::int64_t offset, char* to, std::int64_t bytes);
  std::string next_in_buffer(std::span<const Word>& record);
  std::string read_ahead(std::int64_t offset, std::int64_t bytes);
  std::string put(const char* from, std::int64_t bytes);
  std::string write_held();
  std::string cut_here();
  std::string write_piece(const char* from, std::int64_t bytes, bool more);
  std::string length_of_piece(std::int32_t& length);
  std::string end_piece(std::int32_t length);
  std::string read_bytes(char* to, std::int64_t wanted, std::int64_t& found, bool hold);
  std::string back_piece(bool first, bool& continued);
  bool holds(std::int64_t offset, std::int64_t bytes) const {
    return offset >= first_ && offset + bytes <= first_ + held_;
  }

  std::unique_ptr<std::FILE, Closer> file_;
  std::string path_;  ///< absolute, for cutting and deleting
  std::int64_t piece_ = largest_piece;
  std::int64_t position_ = 0;     ///< byte at which the next record begins
  std::int64_t size_ = 0;         ///< bytes of the file, those that wait in the buffer included
  std::int64_t record_ = 1;       ///< number of the next record
  Motion motion_ = Motion::none;  ///< the last one of the file, whose position then is file_at_
  std::int64_t file_at_ = 0;
  std::int64_t room_ = 0;   ///< bytes of the buffer
  std::int64_t first_ = 0;  ///< offset in the file of the buffer's first byte
  std::int64_t held_ = 0;   ///< bytes of the file in the buffer
  bool waiting_ = false;    ///< they are still to be written
  std::unique_ptr<char[]> buffer_;
  std::vector<Word> record_held_;  ///< the record of next(), when the buffer does not hold it
};

}  // namespace tidearc
