// The walk over all elements, in the order of groups and elements, that every pass is made of.
#pragma once

#include <cstring>

#include "elements/contract/group.h"
#include "elements/contract/types.h"
#include "elements/contract/work.h"
#include "model/control.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"

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

/// Calls action(type, record, running) for every element: `record` its LEI words in the pool (current generation),
/// which stand at a stride of LEI + 1 words and may begin on an odd word; `running` its number over all groups, from 1.
template <class Action>
void for_each_element(Action&& action) {
  int index = storage.KEDAT;
  int running = 0;
  for_each_group([&](const ElementType& type) {
    for (int i = 0; i < group.NUMEL; ++i) {
      action(type, pool.words(index, group.LEI), ++running);
      index += group.LEI + 1;
    }
  });
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

}  // namespace tidearc
