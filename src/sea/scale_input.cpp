// The wave force magnification cards: reading and print. Times are taken as they stand.
#include "sea/scale_input.h"

#include "model/card_errors.h"
#include "run/layout.h"
#include "run/units.h"
#include "sea/wave_state.h"

namespace tidearc {

void read_force_scale(int NORAMP) {
  force_scale.index = 0;
  if (NORAMP > most_scale_points) {
    card_error("NORAMP CANNOT EXCEED 10000");  // ten times as many are accepted; the words are kept
    CLOSUP();
  }
  if (NORAMP < 1) return;
  write(units.NDOUT, "/,' ***** WAVE FROCE MAGNIFICATION DATA *****',/,'    TIME     MULTIPLIER'");
  for (std::size_t i = 0; i < static_cast<std::size_t>(NORAMP); ++i) {
    read(units.NDIN, "2F10.0", force_scale.time[i], force_scale.multiplier[i]);
    write(units.NDOUT, "G13.5,1X,G13.5", force_scale.time[i], force_scale.multiplier[i]);
  }
}

}  // namespace tidearc
