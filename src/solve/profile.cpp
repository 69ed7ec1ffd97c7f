// The compacted column profile: diagonal addresses from the smallest connected equations.
#include "solve/profile.h"

#include <algorithm>
#include <limits>
#include <string>

#include "model/control.h"
#include "model/masses.h"
#include "run/stops.h"
#include "run/workpool.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

constexpr std::int64_t largest_address = std::numeric_limits<int>::max();
constexpr int stiffness_phase = 10;

ProfileSize measure(ConstIntegers first_rows, int NEQ) {
  ProfileSize size;
  for (int e = 1; e <= NEQ; ++e) {
    const int height = e - first_rows(e) + 1;
    size.length += height;
    size.tallest = std::max(size.tallest, height);
  }
  return size;
}

// Words up to the end of the matrix. In core, matrix and factor, behind what is carved already, are addressed by 32-bit
// word indices. Blocks are counted in reals.
bool addressable(const ProfileSize& size, std::int64_t& need) {
  const std::int64_t stored = size.length * triangles();
  if (records_on_disk()) {
    need = ITWO * stored;
    return stored <= largest_address;
  }
  need = storage.NEXT - 1 + 2 * ITWO * stored;
  return need <= largest_address;
}

}  // namespace

ProfileSize diagonal_addresses(Integers first_rows, int NEQ) {
  const ProfileSize size = measure(first_rows, NEQ);
  if (size.length > largest_address) return size;
  int address = 0;
  for (int e = 1; e <= NEQ; ++e) {
    address += e - first_rows(e) + 1;
    first_rows(e) = address;
  }
  return size;
}

void finish_profile() {
  solver.IDIAG = masses.MARKS;
  const ProfileSize size = diagonal_addresses(pool.integers(solver.IDIAG, NEQ1()), sizes.NEQ);
  std::int64_t need = 0;
  if (!addressable(size, need)) {
    complain(not_on_deck, "the profile of " + std::to_string(sizes.NEQ) + " equations takes " +
                              std::to_string(size.length) + " reals, more than storage can address");
    STORCK(need, storage.MSTOR, stiffness_phase);
  }
  solver.NHBW = size.tallest;
  solver.NSTO = static_cast<int>(size.length);
}

}  // namespace tidearc
