// Follower force patterns: forces along the line from one moving node to another.
#include "model/pattern_records.h"
#include "run/layout.h"

namespace tidearc {

void read_follower_pattern() {
  int cards = 0;
  PatternTitle title{};
  read(units.NDIN, "I5,10A4", cards, title);
  write(units.NDOUT, "/,/,' LOAD PATTERN NO.',I5,' - FOLLOWER FORCE',/,5X,10A4,/,/,' NODA    NODD            FORCE',/",
        pattern_number(), title);
  write_header(pattern_follower, cards < 0 ? 0 : cards, title);
  for (int i = 1; i <= cards; ++i) {
    FollowerRecord record{};
    read(units.NDIN, "2I5,F10.0", record.NODA, record.NODD, record.force);
    write(units.NDOUT, "I5,I8,F17.3", record.NODA, record.NODD, record.force);
    // A card in error leaves a record too, so that the file holds as many as its header says.
    if (!node_in_range(record.NODA, sizes.NUMNP, {1, 5}) || !node_in_range(record.NODD, sizes.NUMNP, {6, 10})) {
      record = {1, 1, 0.0};
    }
    FILE(units.NT10, "WRIT", follower_words, &record);
  }
  count_pattern(pattern_follower, {});
}

}  // namespace tidearc
