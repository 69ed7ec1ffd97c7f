// Opening of the load files, and the records of TAModel.rlo.
#include <bit>
#include <cstddef>

#include "run/tapefile.h"
#include "run/units.h"
#include "sea/members/member.h"

namespace tidearc {

namespace {

template <std::size_t N>
void write_record(const std::array<Word, N>& record) {
  FILE(UNIT_LOADS, "WRIT", static_cast<int>(N), record.data());
  load_files.records += 1;
}

}  // namespace

void open_load_files(int steps, double DT) {
  if (load_files.open) return;
  load_files.open = true;
  open_formatted(UNIT_LOADS_TEXT, "TAModel.sac", OpenMode::fresh);
  open_tape(UNIT_LOADS, "TAModel.rlo", false);
  const auto real = std::bit_cast<std::array<Word, 2>>(DT);
  write_record(std::array<Word, 3>{std::bit_cast<Word>(steps), real[0], real[1]});
}

void write_member_loads(int number, int NODEI, int NODEJ, std::span<const double, 6> forces) {
  std::array<Word, 9> record{std::bit_cast<Word>(number), std::bit_cast<Word>(NODEI), std::bit_cast<Word>(NODEJ)};
  for (std::size_t i = 0; i < forces.size(); ++i) record[3 + i] = std::bit_cast<Word>(static_cast<float>(forces[i]));
  write_record(record);
}

}  // namespace tidearc
