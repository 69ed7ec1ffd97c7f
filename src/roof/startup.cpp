// The start of the process: floating-point control, command line, files.
#include "roof/startup.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif

#include "roof/blocks.h"
#include "roof/timlog.h"
#include "run/clocks.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"

namespace tidearc {

namespace {

constexpr int default_words = 1500000000;
constexpr int most_millions = 1500;
constexpr int million = 1000000;
constexpr std::size_t argument_kept = 20;
constexpr std::size_t argument_shortest = 2;
constexpr std::size_t argument_longest = 6;

constexpr char done_file[] = "TAP.OK";
constexpr int component_unit = 76;
constexpr int component_record_unit = 77;
constexpr Word component_version = 2;

/// A work file of the table below. Scratch: no other program reads it.
struct WorkFile {
  int unit;
  const char* name;
  bool scratch;
};

/// Record files with names. Those without (units 1, 2, 18 to 22) are made at their first use.
constexpr std::array<WorkFile, 14> record_files{{{3, "TAP3", true},
                                                 {4, "TAP4", true},
                                                 {7, "TAP5", true},
                                                 {8, "TAP6", true},
                                                 {13, "TAP7", true},
                                                 {14, "TAP8", true},
                                                 {15, "TAP9", true},
                                                 {16, "TAP10", true},
                                                 {17, "TAP11", false},
                                                 {23, "TAP23", false},
                                                 {24, "TAP24", true},
                                                 {26, "TAP26", false},
                                                 {31, "TAP31", false},
                                                 {72, "TAP202", false}}};

constexpr std::array<WorkFile, 3> formatted_files{
    {{UNIT_LEVELS, "TAP.ULTFAC", false}, {UNIT_PROGRESS, "TAP53", false}, {54, "TAP.SFORCE", false}}};

void remove_done_file() {
  std::error_code error;
  std::filesystem::remove(done_file, error);
  if (error)
    io_failure(UNIT_DONE, 0, std::string(done_file) + " of an earlier run cannot be deleted: " + error.message());
}

/// True when a regular file begins with these bytes. Nothing else that may bear the name is read: a device might never
/// end, a pipe might never begin.
bool begins_with(const char* name, std::string_view bytes) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(name, ignored)) return false;
  std::string head(bytes.size(), '\0');
  std::ifstream(name, std::ios::binary).read(head.data(), static_cast<std::streamsize>(head.size()));
  return head == bytes;
}

/// Opens a text file whose first record is one item. When that record stands already, the file is positioned behind it:
/// a restart may have to read on, and the next write cuts. Else the record is written.
template <class Item>
void open_behind_first(int unit, const char* name, std::string_view record, const Item& item) {
  const bool found = begins_with(name, record);
  open_formatted(unit, name, OpenMode::position);
  if (!found) {
    write_list(unit, item);
    return;
  }
  std::string line;
  next_line(unit, line);
}

/// The same for the component forces, a record file.
void open_component_records() {
  constexpr char name[] = "CompForces.bc2";
  constexpr Word bytes = sizeof(Word);
  const std::array<Word, 3> record{bytes, component_version, bytes};
  const bool found = begins_with(name, {reinterpret_cast<const char*>(record.data()), sizeof(record)});
  open_tape(component_record_unit, name, false);
  if (found) {
    FILE(component_record_unit, "SKIP", 1);
  } else {
    FILE(component_record_unit, "WRIT", 1, &component_version);
  }
}

}  // namespace

void set_denormals_to_zero() {
#if defined(__x86_64__) || defined(__i386__)
  constexpr unsigned flush_and_zero = 0x8040;  // flush-to-zero 0x8000, denormals-are-zero 0x0040
  _mm_setcsr(_mm_getcsr() | flush_and_zero);
#elif defined(__aarch64__)
  constexpr unsigned long long flush_and_zero = 1ULL << 24;  // FZ does both on this machine
  unsigned long long control = 0;
  asm volatile("mrs %0, fpcr" : "=r"(control));
  asm volatile("msr fpcr, %0" : : "r"(control | flush_and_zero));
#else
#error "this machine's way to flush denormals to zero is not known here"
#endif
}

int pool_words(std::string_view argument) {
  argument = argument.substr(0, argument_kept);
  if (argument.size() < argument_shortest || argument.size() > argument_longest || argument.back() != 'M') {
    return default_words;
  }
  int millions = 0;
  if (!scan(argument.substr(0, argument.size() - 1), "I6", millions)) return default_words;
  return std::clamp(millions, 0, most_millions) * million;
}

void STDOPN() {
  open_formatted(5, "TAModel.inp", OpenMode::existing);
  // A report left by an earlier run must never look like this one's.
  open_formatted(6, "TAModel.out", OpenMode::fresh);
  units.NDIN = 5;
  units.NDOUT = 6;
}

void FILOPN() {
  open_formatted(UNIT_ERROR, "TAP.err", OpenMode::fresh);
  for (const WorkFile& file : record_files) open_tape(file.unit, file.name, file.scratch);
  for (const WorkFile& file : formatted_files) open_formatted(file.unit, file.name, OpenMode::position);
  open_behind_first(UNIT_POST_TEXT, "TAP25", " 1\n", "1");
  open_behind_first(component_unit, "CompForces.bc1", " 2\n", static_cast<int>(component_version));
  open_component_records();
}

void reset_process() {
  flush_all_units();
  pool.release();
  reset_blocks();
}

void start_process(std::string_view argument) {
  reset_process();
  remove_done_file();
  set_denormals_to_zero();
  run.MTOT = pool_words(argument);
  STDOPN();
  run.TIMTAB = started_time_table(DSKTIM(), CPUTIM(), HOURS());
  FILOPN();
}

}  // namespace tidearc
