// Stepping, direction and iteration vectors of a segment: lists of (equation, factor) pairs.
#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "model/control.h"
#include "model/nodes.h"
#include "run/layout.h"
#include "run/stops.h"
#include "static/segment.h"
#include "static/segment_cards.h"

namespace tidearc {
namespace {

constexpr Columns count_columns{1, 5};
constexpr Columns node_columns{1, 5};
constexpr Columns component_columns{6, 10};

/// What the head card of a vector says.
struct VectorHead {
  int terms = 0;
  double scale = 0.0;
  std::array<char, 60> description{};
};

VectorHead read_head() {
  VectorHead head;
  read(units.NDIN, "I5,F10.0,15A4", head.terms, head.scale, head.description);
  head.terms = std::max(head.terms, 0);
  return head;
}

void echo_head(const VectorHead& head) {
  write(units.NDOUT, "5X,'NUMBER OF VECTOR GENERATING COMMANDS =',I5", head.terms);
  write(units.NDOUT, "5X,'INCREMENT SCALE FACTOR               =',E12.4", head.scale);
  write(units.NDOUT, "5X,'DESCRIPTION',5X,15A4", head.description);
  write(units.NDOUT, "/,5X,'NODE    DOF     FACTOR '");
}

/// Reads and echoes one term; a node or component out of range drops it. False when it was dropped.
bool read_term(TermVector& vector) {
  int node = 0;
  int component = 0;
  double factor = 0.0;
  read(units.NDIN, "2I5,F10.0", node, component, factor);
  write(units.NDOUT, "2X,2I7,D12.3", node, component, factor);
  if (!node_in_range(node, sizes.NUMNP, node_columns)) return false;
  if (!component_in_range(component, component_columns)) return false;
  const auto k = static_cast<std::size_t>(vector.count++);
  vector.equation[k] = equation_of(node, component);
  vector.factor[k] = factor;
  return true;
}

void read_over_terms(int count) {
  for (int k = 1; k <= count; ++k) {
    int node = 0;
    int component = 0;
    double factor = 0.0;
    read(units.NDIN, "2I5,F10.0", node, component, factor);
  }
}

/// Behind the head: its terms. A vector with too many is read over, so that the cards behind it are read as what they
/// are.
bool read_terms(const VectorHead& head, TermVector& vector) {
  vector.scale = head.scale;
  if (head.terms > most_vector_terms) {
    segment_error(count_columns, "MAX. NO. OF VECTOR TERMS IS 20");
    read_over_terms(head.terms);
    return false;
  }
  bool sound = true;
  for (int k = 1; k <= head.terms; ++k) sound = read_term(vector) && sound;
  return sound;
}

bool read_stepping_vectors() {
  bool sound = true;
  for (int number = 1; number <= segment.NSVEC; ++number) {
    VectorHead head = read_head();
    if (head.scale == 0.0) head.scale = 1.0;
    write(units.NDOUT, "/,5X,'STEPPING VECTOR NUMBER',I5", number);
    echo_head(head);
    if (number == most_stepping_vectors + 1) {
      segment_error(whole_line, "MAX. NO. OF STEPPING VECTORS IS 20");
      sound = false;
    }
    TermVector beyond;  // vectors that are not kept
    const bool kept = number <= most_stepping_vectors;
    TermVector& vector = kept ? segment.stepping[static_cast<std::size_t>(number - 1)] : beyond;
    sound = read_terms(head, vector) && sound;
  }
  return sound;
}

}  // namespace

bool read_vectors() {
  bool sound = read_stepping_vectors();
  if (segment.KDIR == 3) {
    const VectorHead head = read_head();
    write(units.NDOUT, "/,5X,'DIRECTION VECTOR'");
    echo_head(head);
    sound = read_terms(head, segment.direction) && sound;
  }
  if (segment.KIPAR == 4) {
    const VectorHead head = read_head();
    write(units.NDOUT, "/,5X,'ITERATION VECTOR'");
    echo_head(head);
    sound = read_terms(head, segment.iteration) && sound;
  }
  return sound;
}

}  // namespace tidearc
