// The work array: its reservation, the carving of arrays, and the storage check.
#include "run/workpool.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {

namespace {

constexpr int last_index = std::numeric_limits<int>::max();
constexpr std::size_t phase_name_width = 30;
constexpr std::array<std::string_view, 11> phase_names{"NODAL COORD/DOF CONSTRAINTS", "LOCAL COORDINATE SYSTEMS",
                                                       "LUMPED NODAL MASSES",         "ELEM. DATA INPUT",
                                                       "STATIC LOAD PATTERNS",        "STATIC SUPPORT DISP. PATTERNS",
                                                       "DYNAMIC FORCE RECORDS",       "LIST OF OUTPUT NODES",
                                                       "STORAGE FOR ANALYSIS ARRAYS", "STORAGE FOR STIFFNESS MATRIX",
                                                       "LIST OF POST-PROCESSOR NODES"};

/// A count within what a 32-bit index can tell; none for a negative one.
std::int64_t wanted(std::int64_t n) { return std::clamp<std::int64_t>(n, 0, last_index); }

/// Lays `count` words down at NEXT.
int carve_words(std::int64_t count) {
  const int index = storage.NEXT;
  const std::int64_t room = static_cast<std::int64_t>(last_index) - index;
  storage.NEXT = count > room ? last_index : index + static_cast<int>(count);
  return index;
}

int shown(std::int64_t words) { return static_cast<int>(std::min<std::int64_t>(words, last_index)); }

}  // namespace

WorkPool::~WorkPool() { release(); }

void WorkPool::allocate(int count) {
  release();
  const std::size_t words_wanted = static_cast<std::size_t>(std::max(count, 0));
  // Pages of zeros from the system: nothing is touched before an array is used. One word more, so that a pool of no
  // words has an address too.
  words_ = static_cast<Word*>(std::calloc(words_wanted + 1, sizeof(Word)));
  if (words_ == nullptr) {
    complain(not_on_deck, "the work array of " + std::to_string(words_wanted) + " words cannot be allocated");
    CLOSUP();
  }
  size_ = static_cast<int>(words_wanted);
  storage.MSTOR = size_;
}

void WorkPool::release() {
  std::free(words_);
  words_ = nullptr;
  size_ = 0;
  touched_ = 0;
}

void WorkPool::clear_from(int index) {
  const long long first = std::max(index, 1) - 1LL;
  const long long last = std::min<long long>(touched_, size_);
  if (last <= first) return;
  std::memset(words_ + first, 0, static_cast<std::size_t>(last - first) * sizeof(Word));
  touched_ = first;
}

int carve_reals(std::int64_t n) {
  const std::int64_t reals = wanted(n);
  return carve_words(reals * ITWO);
}

int carve_integers(std::int64_t n) {
  const std::int64_t integers = wanted(n);
  return carve_words(integers + integers % 2);
}

void check_storage(int phase) {
  const std::int64_t need = static_cast<std::int64_t>(storage.NEXT) - 1;
  if (need > storage.MSTOR) STORCK(need, storage.MSTOR, phase);
}

void STORCK(std::int64_t need, std::int64_t have, int phase) {
  const bool named = phase >= 1 && phase <= static_cast<int>(phase_names.size());
  std::string name(named ? phase_names[static_cast<std::size_t>(phase - 1)] : std::string_view());
  const bool behind_deck = phase == 9 || phase == 10;  // laid out when the problem's last card has been read
  complain(behind_deck ? not_on_deck : whole_line, "the work array has " + std::to_string(have) + " words, " +
                                                       std::to_string(need) + " are needed up to the input phase " +
                                                       name);
  name.resize(phase_name_width, ' ');
  write(units.NDOUT,
        "/,/,/,/,' **** STORAGE CHECK ****',/,/,5X,'INPUT PHASE - ',10A3,/,/,"
        "5X,'STORAGE REQUIRED UP TO THIS PHASE =',I11,/,5X,'STORAGE PROVIDED                  =',I11,/,/",
        name, shown(need), shown(have));
  CLOSUP();
}

}  // namespace tidearc
