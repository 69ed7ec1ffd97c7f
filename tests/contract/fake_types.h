// Four small types of element for tests of the passes: a bar with one word of stiffness history and a tail, as type 1,
// a block without a tail, as type 11, a latch with a long record that never takes its KSTIF back, as type 13, and a
// float that has loads of the sea and no stiffness, as type 7. All others are not available.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "elements/contract/types.h"
#include "elements/contract/work.h"

namespace tidearc::test {

/// Spring between two nodes, three freedoms each: force `stiffness` times the difference of the translations. Its
/// stiffness halves where the first difference is above 1, and the change goes on the state log.
struct FakeSpring {
  ElementHead<6> head;
  int NODEI, NODEJ;
  int code;       ///< 1 when soft
  int last_code;  ///< word of the stiffness pass
  double stiffness;
  double difference[3];
  double largest;  ///< envelope: largest first difference
  double largest_time;
  double speed, growth;  ///< first differences of EVEL and EACC at the last determination
  double tangent[21];
};
inline constexpr int spring_words = words(sizeof(FakeSpring));
inline constexpr int spring_first = spring_words - 42;

/// Holds one node: a force equal to its displacement in the first direction. No tail; its matrix is delivered packed.
struct FakeBlock {
  ElementHead<6> head;
  double displacement;
};

/// Holds one node with a force of twice its displacement in the first direction. A displacement beyond 1 sets KSTIF,
/// which nothing but the stiffness pass clears.
struct FakeLatch {
  ElementHead<6> head;
  int moves;  ///< determinations since the start, those that were given up not counted
  int pad;
  double displacement;
  int filler[685];  ///< `moves` everywhere
  int formed;       ///< tail: times that the matrix was formed
  int formed_at[2];
};
inline constexpr int latch_first = words(sizeof(FakeLatch)) - 3;  // odd, as no type of ours is

/// Floats at one node. Its load of the sea at a time, along the first direction, is 10 times the time plus
/// displacement, velocity and acceleration there; 1000 more with load lines. The load and the number of loadings belong
/// to the pass of the sea.
struct FakeFloat {
  ElementHead<6> head;
  double displacement;
  double load;       ///< words of the sea: the load,
  int loadings;      ///< and how many there have been
  int words_after;   ///< 4711 from input on: a neighbour that no pass may touch
  double load_seen;  ///< at the last determination
  double tail;
};
inline constexpr int float_first = words(sizeof(FakeFloat)) - 2;

/// What the operations were called for, in order: "state 1/3" for element 3 of group 1.
inline std::vector<std::string> calls;
/// KFORM, c1 and c2 of every matrix that springs were asked for, in order.
inline std::vector<std::array<double, 3>> factors;
/// Envelope and print lines of springs carry the group and element number.

}  // namespace tidearc::test
