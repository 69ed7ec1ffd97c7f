// Record files in memory.
#include <algorithm>
#include <cstring>
#include <new>

#include "run/tape_forms.h"

namespace tidearc {

namespace {

/// Words of a block: pages that no record has reached are never touched, so a short file costs little.
constexpr std::int64_t block_words = 262144;
constexpr std::int64_t records_of_a_block = 8;

}  // namespace

/// Finds `count` words behind the last record kept; records begin on even words, where reals may stand.
Word* MemoryTape::room_for(std::int64_t count, Record& place) {
  std::size_t block = 0;
  std::int64_t first = 0;
  if (!records_.empty()) {
    const Record& last = records_.back();
    block = last.block;
    first = last.first + last.count + last.count % 2;
  }
  while (block < blocks_.size() && first + count > blocks_[block].size) {
    ++block;
    first = 0;
  }
  if (block == blocks_.size()) {
    const std::int64_t size = std::max(block_words, records_of_a_block * count);
    Word* fresh = new (std::nothrow) Word[static_cast<std::size_t>(size)];
    if (fresh == nullptr) return nullptr;
    blocks_.push_back(Block{std::unique_ptr<Word[]>(fresh), size});
  }
  place = Record{block, first, count};
  return blocks_[block].words.get() + first;
}

std::string MemoryTape::write(const Word* from, std::int64_t count) {
  records_.resize(at_);
  Record place;
  Word* to = room_for(count, place);
  if (to == nullptr) return "no memory for a record of " + std::to_string(count) + " words";
  if (count > 0) std::memcpy(to, from, static_cast<std::size_t>(count) * sizeof(Word));
  records_.push_back(place);
  ++at_;
  return {};
}

std::string MemoryTape::next(std::span<const Word>& record) {
  if (at_ >= records_.size()) return "end of file";
  const Record& place = records_[at_++];
  record = {blocks_[place.block].words.get() + place.first, static_cast<std::size_t>(place.count)};
  return {};
}

std::string MemoryTape::skip() {
  if (at_ >= records_.size()) return "end of file";
  ++at_;
  return {};
}

void MemoryTape::back() {
  if (at_ > 0) --at_;
}

}  // namespace tidearc
