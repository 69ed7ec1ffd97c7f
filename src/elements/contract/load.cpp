// Element records where the analyses find them, in the work array or on their files, and the storage report.
#include <cstdint>
#include <string>
#include <utility>

#include "elements/contract/group.h"
#include "elements/contract/pass.h"
#include "elements/contract/walk.h"
#include "run/layout.h"
#include "run/stops.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

void load_group(int index) {
  const int tail = group.LTAN + group.LAUX;
  for (int i = 0; i < group.NUMEL; ++i) {
    Word* record = pool.words(index, group.LEI + 1LL);
    FILE(units.NT1, "READ", group.LFIX, record);
    if (tail > 0) FILE(units.NT13, "READ", tail, record + group.LFIX);
    record[group.LEI] = 0;
    index += group.LEI + 1;
  }
}

/// Words of the problem with all its element records in the work array; loads them as long as they fit.
std::int64_t load_records() {
  std::int64_t needed = storage.KEDAT - 1LL;
  for_each_group([&](const ElementType&) {
    const std::int64_t start = needed + 1;
    needed += (group.LEI + 1LL) * group.NUMEL;
    if (needed > storage.MSTOR) set_fatal_flag();
    if (executing()) load_group(static_cast<int>(start));
  });
  return needed;
}

/// A count as a twelve-column field, whatever its size.
std::string counted(std::int64_t value) {
  const std::string digits = std::to_string(value);
  return std::string(digits.size() < 12 ? 12 - digits.size() : 0, ' ') + digits;
}

void print_storage_report(std::int64_t needed) {
  write(units.NDOUT, "/,/,/,/,21('*'),/,' STORAGE REQUIREMENTS',/,21('*')");
  write(units.NDOUT, "/,5X,'STORAGE REQUIRED EXCLUDING ELEMENT DATA ........ =',I12", storage.KEDAT - 1);
  write(units.NDOUT, "5X,'MINIMUM TOTAL STORAGE REQUIRED ................. =',A12", counted(needed));
  write(units.NDOUT, "5X,'TOTAL STORAGE PROVIDED ......................... =',I12", storage.MSTOR);
  write(units.NDOUT, "5X,'TOTAL NUMBER OF EQUILIBRIUM EQUATIONS .......... =',I12", sizes.NEQ);
  write(units.NDOUT, "5X,'MAXIMUM BAND WIDTH OF STRUCTURE MATRIX ......... =',I12", solver.NHBW);
  write(units.NDOUT, "5X,'STORAGE FOR STRUCTURE STIFFNESS MATRIX ......... =',I12,/", solver.NSTO);
}

/// A core job without room for its records ends here. A disk job has been refused before, when not even its one record
/// finds room beside the matrix; nothing is analysed then.
void refuse(std::int64_t needed) {
  set_fatal_flag();
  complain(not_on_deck, "element data: " + std::to_string(needed) + " words are needed, " +
                            std::to_string(storage.MSTOR) + " are provided");
  if (!records_on_disk()) FATERR("ELDATA");
}

/// The first portions as read in are the state at the start: both generations of it.
void begin_generations() {
  generations = {};
  if (records_on_disk()) {
    begin_streaming();
  } else {
    std::swap(units.NT1, units.NT12);  // the file that holds them is the reference from now on
  }
}

}  // namespace

void LODELM() {
  for (const int unit : {units.NT1, units.NT13}) FILE(unit, "REWI");
  const std::int64_t needed = records_on_disk() ? storage.KEDAT - 1LL + element_counts.MAXLEI + 1 : load_records();
  storage.NEEDED = static_cast<int>(std::min<std::int64_t>(needed, storage.MSTOR + 1LL));
  print_storage_report(needed);
  if (needed > storage.MSTOR) refuse(needed);
  if (executing()) begin_generations();
}

}  // namespace tidearc
