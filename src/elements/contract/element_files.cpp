// Element records of a disk job: one record at a time, and the roles of the files.
#include "elements/contract/element_files.h"

#include <array>
#include <utility>

#include "elements/contract/group.h"
#include "elements/contract/walk.h"
#include "run/tapefile.h"
#include "run/units.h"

namespace tidearc {

namespace {

static_assert(sizeof(StiffnessWords) == 2 * sizeof(Word));

void read_own_words(const ElementType& type, Word* record) {
  StiffnessWords kept{};
  FILE(units.NT13, "READ", 2, &kept);
  put_stiffness_words(type, kept, record);
  if (type.sea_words > 0) FILE(units.NT13, "READ", type.sea_words, record + type.sea_word - 1);
  const int tail = group.LEI - group.LFIX;
  if (tail > 0) FILE(units.NT13, "READ", tail, record + group.LFIX);
}

void write_own_words(const ElementType& type, const Word* record) {
  const StiffnessWords kept = stiffness_words(type, record);
  FILE(units.NT2, "WRIT", 2, &kept);
  if (type.sea_words > 0) FILE(units.NT2, "WRIT", type.sea_words, record + type.sea_word - 1);
  const int tail = group.LEI - group.LFIX;
  if (tail > 0) FILE(units.NT2, "WRIT", tail, record + group.LFIX);
}

/// Makes `role` the unit variable of a file of first portions; the variable that named it gets the other file.
void give_role(int& role, int file) {
  for (int* holder : {&units.NT1, &units.NT12, &units.NT15, &units.NT16}) {
    if (*holder == file) std::swap(*holder, role);
  }
}

/// The current generation of a kept step start is its reference, or stands before its vectors.
bool is_kept(int file) { return file == generations.kept_reference || file == generations.kept_vectors; }

/// Makes NT12 a file that a determination may write over. Of the four files three at most hold something that is still
/// wanted: the reference and a step start.
void choose_next_generation() {
  for (const int file : {units.NT12, units.NT16, units.NT15}) {
    if (is_kept(file)) continue;
    give_role(units.NT12, file);
    return;
  }
}

bool reads_states(Pass pass) { return pass != Pass::determination; }
bool writes_states(Pass pass) { return pass == Pass::determination || pass == Pass::rewriting; }
bool writes_own_words(Pass pass) { return pass == Pass::determination || pass == Pass::stiffness || pass == Pass::sea; }
int states_file(Pass pass) { return pass == Pass::kept ? generations.kept_current : generations.current; }

/// NT15 to where the vectors of the kept step start stand.
void go_to_vectors() {
  FILE(units.NT15, "REWI");
  if (generations.kept_vectors == generations.kept_current) FILE(units.NT15, "SKIP", element_counts.NELTOT);
}

}  // namespace

void begin_streams(Pass pass) {
  if (writes_states(pass)) {
    choose_next_generation();
    FILE(units.NT12, "REWI");
  }
  if (reads_states(pass)) FILE(states_file(pass), "REWI");
  FILE(units.NT13, "REWI");
  if (writes_own_words(pass)) FILE(units.NT2, "REWI");
}

void fetch_record(Pass pass, const ElementType& type, Word* record) {
  if (reads_states(pass)) FILE(states_file(pass), "READ", group.LFIX, record);
  read_own_words(type, record);
}

void store_record(Pass pass, const ElementType& type, const Word* record) {
  if (writes_states(pass)) FILE(units.NT12, "WRIT", group.LFIX, record);
  if (writes_own_words(pass)) write_own_words(type, record);
}

void end_streams(Pass pass) {
  if (writes_states(pass)) generations.current = units.NT12;
  if (pass == Pass::rewriting) exchange_generations();
  if (writes_own_words(pass)) std::swap(units.NT13, units.NT2);
}

void begin_streaming() {
  generations.current = units.NT1;
  for (const int unit : {units.NT1, units.NT13, units.NT2}) FILE(unit, "REWI");
  for_each_group([](const ElementType& type) {
    Word* record = pool.words(storage.KEDAT, group.LEI);
    const int tail = group.LEI - group.LFIX;
    for (int i = 0; i < group.NUMEL; ++i) {
      FILE(units.NT1, "READ", group.LFIX, record);
      if (tail > 0) FILE(units.NT13, "READ", tail, record + group.LFIX);
      write_own_words(type, record);
    }
  });
  std::swap(units.NT13, units.NT2);
}

void exchange_generations() { give_role(units.NT1, generations.current); }

void keep_generations() {
  GenerationBlock& g = generations;
  if (g.current != units.NT1) give_role(units.NT15, g.current);
  g.kept_reference = units.NT1;
  g.kept_current = g.current;
  g.kept_vectors = units.NT15;
  go_to_vectors();
}

void return_to_kept_generations() {
  GenerationBlock& g = generations;
  give_role(units.NT1, g.kept_reference);
  give_role(units.NT15, g.kept_vectors);
  g.current = g.kept_current;
  go_to_vectors();
}

}  // namespace tidearc
