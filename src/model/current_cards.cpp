// Level cards of a current profile: reading, echo, checks.
#include "model/current_cards.h"

#include <array>
#include <cmath>

#include "model/card_errors.h"
#include "model/gravity.h"
#include "run/layout.h"
#include "run/units.h"

namespace tidearc {

namespace {

constexpr int fewest_levels = 2;
constexpr Columns level_columns{1, 10};
constexpr Columns direction_columns{11, 40};

struct CurrentCard {
  double level = 0.0;
  std::array<double, 3> direction{};
  double scale = 0.0;
};

/// The velocity of a card; a blank scale is written back as 1.0.
std::array<double, 3> velocity_of(CurrentCard& card) {
  std::array<double, 3> velocity = card.direction;
  const double length = std::hypot(velocity[0], velocity[1], velocity[2]);
  if (!(length > 0.0)) return velocity;
  if (card.scale == 0.0) card.scale = 1.0;
  for (double& component : velocity) component = component / length * card.scale;
  return velocity;
}

void check_direction(const CurrentCard& card) {
  if (!is_horizontal(card.direction))
    card_error("CURRENT VELOCITY DIRECTION DOES NOT LIE ON HORIZONTAL PLANE", direction_columns);
}

}  // namespace

void check_current_levels(int levels, Columns where) {
  if (levels >= fewest_levels) return;
  card_error("NUMBER OF CURRENT LEVEL IS LESS THAN 2", where);
  CLOSUP();
}

void read_current_levels(std::span<double> levels, std::span<double> vectors) {
  write(units.NDOUT, "/,16X,'LEVEL',2X,'X-DIRECTION',2X,'Y-DIRECTION',2X,'Z-DIRECTION',8X,'SCALE'");
  for (std::size_t i = 0; i < levels.size(); ++i) {
    CurrentCard card;
    read(units.NDIN, "5F10.0", card.level, card.direction, card.scale);
    const std::array<double, 3> velocity = velocity_of(card);
    write(units.NDOUT, "8X,5F13.3", card.level, card.direction, card.scale);
    check_direction(card);
    if (i == 0 && card.level != 0.0)
      card_error("FIRST LEVEL FOR CURRENT DEFINITION SHOULD BE EQUAL TO ZERO", level_columns);
    if (i > 0 && !(card.level > levels[i - 1])) card_error("CURRENT LEVELS ARE NOT IN ASCENDING ORDER", level_columns);
    levels[i] = card.level;
    for (std::size_t k = 0; k < 3; ++k) vectors[3 * i + k] = velocity[k];
  }
}

void print_current_levels(std::span<const double> levels, std::span<const double> vectors) {
  write(units.NDOUT, "16X,'LEVEL',3X,'X-VELOCITY',3X,'Y-VELOCITY',3X,'Z-VELOCITY'");
  for (std::size_t i = 0; i < levels.size(); ++i)
    write(units.NDOUT, "8X,4F13.3", levels[i], vectors[3 * i], vectors[3 * i + 1], vectors[3 * i + 2]);
}

}  // namespace tidearc
