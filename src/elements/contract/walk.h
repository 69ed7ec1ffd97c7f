// The walk over all elements, in the order of groups and elements, that every pass is made of.
#pragma once

#include <cstring>

#include "elements/contract/element_files.h"
#include "elements/contract/group.h"
#include "elements/contract/types.h"
#include "elements/contract/work.h"
#include "model/control.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/solver.h"

namespace tidearc {

/// Reads the headers of all groups in turn into `group`, sets element.IGRP and calls action(type).
template <class Action>
void for_each_group(Action&& action) {
  FILE(units.NT5, "REWI");
  for (int i = 1; i <= sizes.NELGR; ++i) {
    FILE(units.NT5, "READ", group_words, &group);
    element.IGRP = i;
    action(element_type(group.ITYPE));
  }
}

/// Calls action(type, record, running) for every element: `record` its LEI words in the pool, `running` its number over
/// all groups, from 1. In core every record has its place, at a stride of LEI + 1 words, and may begin on an odd word.
/// In a disk job there is one place, filled before the call and emptied behind it as the pass asks.
///
/// The record is the current generation; a determination finds the words of the stiffness pass and the tail in it, and
/// must leave the whole first portion. Behind the last element of a group, or at once when it has none, follows
/// group_done().
template <class Action, class GroupDone>
void for_each_element(Pass pass, Action&& action, GroupDone&& group_done) {
  const bool streaming = records_on_disk();
  if (streaming) begin_streams(pass);
  int index = storage.KEDAT;
  int running = 0;
  for_each_group([&](const ElementType& type) {
    for (int i = 0; i < group.NUMEL; ++i) {
      Word* record = pool.words(index, group.LEI);
      if (streaming) fetch_record(pass, type, record);
      action(type, record, ++running);
      if (streaming) {
        store_record(pass, type, record);
      } else {
        index += group.LEI + 1;
      }
    }
    group_done();
  });
  if (streaming) end_streams(pass);
}
template <class Action>
void for_each_element(Pass pass, Action&& action) {
  for_each_element(pass, action, [] {});
}

/// Word copies between the work block and a record that may begin on an odd word.
inline void copy_words(Word* to, const Word* from, int count) {
  std::memcpy(to, from, static_cast<std::size_t>(count) * sizeof(Word));
}
inline void load_record(const Word* record) { copy_words(record_words(), record, group.LEI); }

/// The words of a record's first portion that belong to the stiffness pass, taken out and put back around a copy.
struct StiffnessWords {
  Word KSTIF;
  Word other;
};
inline StiffnessWords stiffness_words(const ElementType& type, const Word* record) {
  return {record[1], type.stiffness_word > 0 ? record[type.stiffness_word - 1] : 0};
}
inline void put_stiffness_words(const ElementType& type, const StiffnessWords& kept, Word* record) {
  record[1] = kept.KSTIF;
  if (type.stiffness_word > 0) record[type.stiffness_word - 1] = kept.other;
}

/// Copies the words of the sea from one first portion to another.
inline void copy_sea_words(const ElementType& type, Word* to, const Word* from) {
  if (type.sea_words > 0) copy_words(to + type.sea_word - 1, from + type.sea_word - 1, type.sea_words);
}

/// The work block gets the record with the first portion of another state; the tail, the words of the stiffness pass
/// and those of the sea, which belong to no state, as they stand in the record.
inline void load_state(const ElementType& type, const Word* first_portion, const Word* record) {
  copy_words(record_words(), first_portion, group.LFIX);
  copy_words(record_words() + group.LFIX, record + group.LFIX, group.LEI - group.LFIX);
  put_stiffness_words(type, stiffness_words(type, record), record_words());
  copy_sea_words(type, record_words(), record);
}

}  // namespace tidearc
