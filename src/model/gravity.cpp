// Gravity and water control: the card, its static current cards, and their checks.
#include "model/gravity.h"

#include <cmath>
#include <string>
#include <string_view>

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

struct CurrentCard {
  double level = 0.0;
  std::array<double, 3> direction{};
  double scale = 0.0;
};

void error_box(std::string_view words) {
  fatal_box("     ERROR -----" + std::string(words));
  complain(whole_line, words);
}

/// Unit vector along a direction word, zero when the word is none of the six.
std::array<double, 3> vector_of(std::string_view word) {
  if (word == "  ") word = "-Z";
  const std::size_t axis = std::string_view("XYZ").find(word[1]);
  std::array<double, 3> vector{};
  if (axis < 3 && (word[0] == ' ' || word[0] == '-')) vector[axis] = word[0] == '-' ? -1.0 : 1.0;
  return vector;
}

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
  write(units.NDOUT, "/,/,' GRAVITY AND WATER CONTROL',/");
  write(units.NDOUT, "5X,A50,3X,A2", dotted("DIRECTION NORMAL TO WATER SURFACE (WDIR)"), card.WDIR);
  write(units.NDOUT, "5X,A50,F12.3", dotted("COORDINATE OF WATER SURFACE"), gravity.water_level);
  write(units.NDOUT, "5X,A50,1P,E12.4", dotted("WATER WEIGHT DENSITY"), gravity.water_weight);
  write(units.NDOUT, "5X,A50,1P,E12.4", dotted("WATER MASS DENSITY"), gravity.water_mass);
  write_count("BUOYANCY GENERATION CODE", gravity.KBUOY);
  write_count("STATIC CURRENT GENERATION CODE", gravity.KCURR);
  write(units.NDOUT,
        "8X,'0:  NO STATIC CURRENT',/,8X,'1:  SMALL DISPLACEMENT CURRENT',/,8X,'2:  LARGE DISPLACEMENT CURRENT'");
  write(units.NDOUT, "5X,A50,F12.3", dotted("ACCELERATION OF GRAVITY"), gravity.GRAV);
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
  if (levels < 2) {
    error_box("NUMBER OF CURRENT LEVEL IS LESS THAN 2");
    CLOSUP();
  }
}

void check_level(const CurrentCard& card, int level) {
  const int axis = std::abs(gravity_axis());
  if (axis > 0 && card.direction[static_cast<std::size_t>(axis - 1)] != 0.0) {
    error_box("CURRENT VELOCITY DIRECTION DOES NOT LIE ON HORIZONTAL PLANE");
  }
  if (level == 1 && card.level != 0.0) error_box("FIRST LEVEL FOR CURRENT DEFINITION SHOULD BE EQUAL TO ZERO");
  if (level > 1 && !(card.level > gravity.CLEVI[static_cast<std::size_t>(level - 2)])) {
    error_box("CURRENT LEVELS ARE NOT IN ASCENDING ORDER");
  }
}

/// The velocity of a card; a zero direction stays as it stands.
std::array<double, 3> velocity_of(CurrentCard& card) {
  std::array<double, 3> velocity = card.direction;
  const double length = std::hypot(velocity[0], velocity[1], velocity[2]);
  if (!(length > 0.0)) return velocity;
  if (card.scale == 0.0) card.scale = 1.0;
  for (double& component : velocity) component = component / length * card.scale;
  return velocity;
}

void read_level(int level) {
  CurrentCard card;
  read(units.NDIN, "5F10.0", card.level, card.direction, card.scale);
  const std::array<double, 3> velocity = velocity_of(card);
  write(units.NDOUT, "8X,5F13.3", card.level, card.direction, card.scale);
  check_level(card, level);
  const auto at = static_cast<std::size_t>(level - 1);
  gravity.CLEVI[at] = card.level;
  for (std::size_t i = 0; i < 3; ++i) gravity.CVELI[3 * at + i] = velocity[i];
}

void print_current_table() {
  write(units.NDOUT,
        "/,8X,'GENERATED STATIC CURRENT TABLE',/,16X,'LEVEL',3X,'X-VELOCITY',3X,'Y-VELOCITY',3X,'Z-VELOCITY'");
  for (std::size_t i = 0; i < static_cast<std::size_t>(gravity.NCLEV); ++i) {
    write(units.NDOUT, "8X,4F13.3", gravity.CLEVI[i], gravity.CVELI[3 * i], gravity.CVELI[3 * i + 1],
          gravity.CVELI[3 * i + 2]);
  }
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
  write(units.NDOUT, "/,16X,'LEVEL',2X,'X-DIRECTION',2X,'Y-DIRECTION',2X,'Z-DIRECTION',8X,'SCALE'");
  for (int level = 1; level <= levels; ++level) read_level(level);
  gravity.NCLEV = levels;
  if (print_code != 1) print_current_table();
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
