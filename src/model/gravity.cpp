// Gravity and water control: the card, its static current cards, and their checks.
#include "model/gravity.h"

#include <cmath>
#include <span>
#include <string>
#include <string_view>

#include "model/current_cards.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/stops.h"

namespace tidearc {
namespace {

constexpr double usual_gravity = 32.2;

struct GravityCard {
  std::array<char, 2> WDIR{};
  double level = 0.0;
  double weight = 0.0;
  double mass = 0.0;
  int KBUOY = 0;
  int KCURR = 0;
  double GRAV = 0.0;
};

/// Unit vector along a direction word, zero when the word is none of the six.
std::array<double, 3> vector_of(std::string_view word) {
  if (word == "  ") word = "-Z";
  const std::size_t axis = std::string_view("XYZ").find(word[1]);
  std::array<double, 3> vector{};
  if (axis < 3 && (word[0] == ' ' || word[0] == '-')) vector[axis] = word[0] == '-' ? -1.0 : 1.0;
  return vector;
}

/// The acceleration of gravity comes first: the mass density may be taken from it.
void take(const GravityCard& card) {
  gravity.GRAV = card.GRAV > 0.0 ? card.GRAV : usual_gravity;
  gravity.direction = vector_of(std::string_view(card.WDIR.data(), card.WDIR.size()));
  gravity.water_level = card.level;
  gravity.water_weight = card.weight;
  gravity.water_mass = card.mass > 0.0 ? card.mass : card.weight / gravity.GRAV;
  gravity.KBUOY = card.KBUOY;
  gravity.KCURR = card.KCURR;
}

void echo(const GravityCard& card) {
  put_text(units.NDOUT, "\n");
  write_framed(" GRAVITY AND WATER CONTROL", '*', 26);
  put_text(units.NDOUT, "\n");
  write(units.NDOUT, "5X,A50,3X,A2", dotted("DIRECTION NORMAL TO WATER SURFACE"), card.WDIR);
  write_real("COORDINATE OF WATER SURFACE", gravity.water_level);
  write_real("WATER WEIGHT DENSITY", gravity.water_weight);
  write_real("WATER MASS DENSITY", gravity.water_mass);
  write_count("BUOYANCY GENERATION CODE", gravity.KBUOY);
  write_count("STATIC CURRENT GENERATION CODE", gravity.KCURR);
  write(units.NDOUT,
        "8X,'0:  NO STATIC CURRENT',/,8X,'1:  SMALL DISPLACEMENT CURRENT',/,8X,'2:  LARGE DISPLACEMENT CURRENT'");
  write_real("ACCELERATION OF GRAVITY", gravity.GRAV);
}

/// Counts that the tables cannot hold end the run.
void check_levels(int levels) {
  if (levels > most_current_levels) {
    message_box('X',
                " TOTAL NUMBER OF ELEVATIONS FOR CURRENT DEF. IS GREATER THAN 50\n"
                " CHANGE ARRAY CLEVI AND CVELI IN COMMON/INCUR/");
    complain({1, 5}, "total number of elevations for current definition is greater than 50");
    CLOSUP();
  }
  check_current_levels(levels, {1, 5});
}

void read_static_current() {
  int levels = 0;
  int print_code = 0;
  read(units.NDIN, "I5,I5", levels, print_code);
  write(units.NDOUT, "/,8X,'STATIC CURRENT DATA'");
  write_count("NUMBER OF CURRENT LEVELS", levels);
  write_count("PRINT CODE FOR CURRENT TABLE", print_code);
  write(units.NDOUT, "8X,'1:  GENERATED TABLE IS NOT PRINTED'");
  check_levels(levels);
  gravity.NCLEV = levels;
  const auto n = static_cast<std::size_t>(levels);
  const std::span<double> depths = std::span(gravity.CLEVI).first(n);
  const std::span<double> vectors = std::span(gravity.CVELI).first(3 * n);
  read_current_levels(depths, vectors);
  if (print_code == 1) return;
  write(units.NDOUT, "/,8X,'GENERATED STATIC CURRENT TABLE'");
  print_current_levels(depths, vectors);
}

}  // namespace

void reset_gravity() { gravity = GravityBlock{}; }

int gravity_axis() {
  for (int axis = 1; axis <= 3; ++axis) {
    const double component = gravity.direction[static_cast<std::size_t>(axis - 1)];
    if (component != 0.0) return component < 0.0 ? -axis : axis;
  }
  return 0;
}

bool is_horizontal(const std::array<double, 3>& direction) {
  constexpr double level_enough = 1e-6;
  const double length = std::hypot(direction[0], direction[1], direction[2]);
  if (!(length > 0.0)) return true;
  double along = 0.0;
  for (std::size_t i = 0; i < 3; ++i) along += direction[i] / length * gravity.direction[i];
  return !(std::abs(along) > level_enough);
}

void GRAVIN() {
  GravityCard card;
  read(units.NDIN, "3X,A2,5X,3F10.0,I5,I5,F10.0", card.WDIR, card.level, card.weight, card.mass, card.KBUOY, card.KCURR,
       card.GRAV);
  take(card);
  echo(card);
  if (gravity_axis() == 0) {
    warning_box("     ERROR IN SPELLING OF WATER DIRECTION, WDIR =" + std::string(card.WDIR.data(), card.WDIR.size()));
    complain({4, 5}, "water direction is none of X, -X, Y, -Y, Z, -Z");
  }
  if (gravity.KCURR >= 1) read_static_current();
}

}  // namespace tidearc
