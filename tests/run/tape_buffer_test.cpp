// The buffer of a record file on disk: records shorter, longer and just as long as it, in every order of operations,
// beside a list of records in memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "../support/scratch.h"
#include "run/tape_forms.h"

namespace tidearc {
namespace {

using Record = std::vector<Word>;

/// A tape and what should stand on it.
class Pair {
 public:
  Pair(std::int64_t piece, std::int64_t room, unsigned seed) : piece_(piece), tape_(piece, room), random_(seed) {
    EXPECT_EQ(tape_.open("F", true), "");
  }
  ~Pair() { EXPECT_EQ(tape_.close(), ""); }

  void act(const test::Scratch& scratch) {
    switch (below(8)) {
      case 0:
      case 1:
        return write();
      case 2:
        return read();
      case 3:
        return next();
      case 4:
        return skip();
      case 5:
        EXPECT_EQ(tape_.back(), "");
        at_ -= at_ > 0 ? 1 : 0;
        break;
      case 6:
        if (below(3) == 0) {
          tape_.rewind();
          at_ = 0;
        }
        break;
      default:
        if (below(4) == 0) compare_file(scratch);
    }
    EXPECT_EQ(tape_.at(), static_cast<std::int64_t>(at_) + 1);
  }

 private:
  int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }

  void write() {
    Record record(static_cast<std::size_t>(below(below(6) == 0 ? 60 : 8)));
    for (Word& word : record) word = static_cast<Word>(random_());
    EXPECT_EQ(tape_.write(record.data(), static_cast<std::int64_t>(record.size())), "");
    records_.resize(at_++);
    records_.push_back(record);
  }
  void read() {
    Record found(100, 7);
    if (at_ == records_.size()) {
      EXPECT_EQ(tape_.read(found.data(), 0), "end of file");
      return;
    }
    Record expected = records_[at_++];
    expected.resize(static_cast<std::size_t>(below(static_cast<int>(expected.size()) + 1)));
    EXPECT_EQ(tape_.read(found.data(), static_cast<std::int64_t>(expected.size())), "");
    EXPECT_EQ(found[expected.size()], 7) << "not a word more";
    found.resize(expected.size());
    EXPECT_EQ(found, expected);
  }
  void next() {
    std::span<const Word> found;
    if (at_ == records_.size()) {
      EXPECT_EQ(tape_.next(found), "end of file");
      return;
    }
    EXPECT_EQ(tape_.next(found), "");
    EXPECT_EQ(Record(found.begin(), found.end()), records_[at_++]);
  }
  void skip() {
    EXPECT_EQ(tape_.skip(), at_ == records_.size() ? "end of file" : "");
    at_ += at_ < records_.size() ? 1 : 0;
  }
  void compare_file(const test::Scratch& scratch) {
    EXPECT_EQ(tape_.flush(), "");
    std::string bytes;
    const auto put = [&](std::int64_t length) {
      const auto word = static_cast<std::int32_t>(length);
      bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
    };
    for (const Record& record : records_) {
      const char* from = reinterpret_cast<const char*>(record.data());
      auto left = static_cast<std::int64_t>(record.size() * sizeof(Word));
      for (bool more = true; more;) {
        const std::int64_t part = std::min(left, piece_);
        more = left > piece_;
        put(more ? -part : part);
        bytes.append(from, static_cast<std::size_t>(part));
        put(more ? -part : part);
        from += part;
        left -= part;
      }
    }
    EXPECT_EQ(scratch.contents("F"), bytes);
  }

  std::int64_t piece_;
  DiskTape tape_;
  std::mt19937 random_;
  std::vector<Record> records_;
  std::size_t at_ = 0;
};

TEST(TapeBuffer, AnyOrderOfOperationsFindsTheRecordsThatWereWritten) {
  const test::Scratch scratch;
  unsigned seed = 0;
  for (const std::int64_t room : {4, 8, 12, 20, 33, 64, 262144}) {
    for (const std::int64_t piece : {std::int64_t{10}, std::int64_t{16}, largest_piece}) {
      for (int repeat = 0; repeat < 8; ++repeat) {
        SCOPED_TRACE("room " + std::to_string(room) + ", piece " + std::to_string(piece));
        Pair pair(piece, room, ++seed);
        for (int i = 0; i < 300; ++i) pair.act(scratch);
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

TEST(TapeBuffer, RecordsWaitInItUntilTheyAreFlushedOrAsked) {
  const test::Scratch scratch;
  DiskTape tape;
  ASSERT_EQ(tape.open("F", true), "");
  const Word word = 5;
  ASSERT_EQ(tape.write(&word, 1), "");
  EXPECT_EQ(scratch.contents("F"), "");
  tape.rewind();
  Word found = 0;
  ASSERT_EQ(tape.read(&found, 1), "");
  EXPECT_EQ(found, 5);
  ASSERT_EQ(tape.flush(), "");
  EXPECT_EQ(scratch.contents("F").size(), 12U);
  EXPECT_EQ(tape.close(), "");
}

TEST(TapeBuffer, AShortRecordIsSeenWhereItStands) {
  const test::Scratch scratch;
  DiskTape tape;
  ASSERT_EQ(tape.open("F", true), "");
  const Record words(20, 3);
  ASSERT_EQ(tape.write(words.data(), 20), "");
  ASSERT_EQ(tape.write(words.data(), 20), "");
  tape.rewind();
  std::span<const Word> first, second;
  ASSERT_EQ(tape.next(first), "");
  ASSERT_EQ(tape.next(second), "");
  EXPECT_EQ(second.data() - first.data(), 22) << "two length words between them";
  EXPECT_EQ(tape.close(), "");
}

}  // namespace
}  // namespace tidearc
