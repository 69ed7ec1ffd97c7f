// Space frames against an independent solution (independent_frame.h); reactions against loads.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "frame_deck.h"
#include "independent_frame.h"
#include "model/nodes.h"

namespace tidearc::test {
namespace {

constexpr double E = 20, nu = 0.25, G = 8;

/// A tower of four leaning legs, a ring, a cap and a diagonal; the last node is a third node of legs.
std::vector<Vector3> tower_nodes() {
  return {{0, 0, 0},     {6, 0, 0},     {6, 5, 0},     {0, 5, 0},   {0.5, 0.4, 4},
          {5.5, 0.4, 4}, {5.5, 4.6, 4}, {0.5, 4.6, 4}, {3, 2.5, 7}, {20, 3, 1}};
}

struct Member {
  int I, J, K = 0, SEC = 1, ECC = 0, HI = 0, HJ = 0;
};
/// Hinges of every kind stand where the rest of the frame holds what they release.
std::vector<Member> tower_members(bool hinged) {
  const int h = hinged ? 1 : 0;
  return {{1, 5, 10, 1, 0, 11 * h, 0},      {2, 6, 0, 1, 0, 0, 0},       {3, 7, 10, 2, 0, 0, 100 * h},
          {4, 8, 0, 2, 0, 1 * h, 0},        {5, 6, 0, 2, 1, 0, 1 * h},   {6, 7, 0, 2, 0, 10 * h, 0},
          {7, 8, 0, 1, 2, 1000 * h, 0},     {8, 5, 0, 1, 0, 0, 111 * h}, {5, 9, 0, 1, 1, 0, 10 * h},
          {6, 9, 10, 2, 0, 100 * h, 1 * h}, {7, 9, 0, 2, 0, 0, 0},       {8, 9, 0, 1, 0, 0, 1000 * h},
          {1, 7, 0, 2, 2, 11 * h, 111 * h}};
}

struct TowerSection {
  double A, J, I3, I2, AS2, AS3;
};
constexpr TowerSection tower_sections[2] = {{200, 4, 3, 1.5, 0, 0}, {300, 5, 2, 4, 120, 200}};
constexpr std::array<double, 6> tower_offsets[2] = {{0.25, 0, -0.125, 0, 0.5, 0.125}, {0, 0.25, 0.5, 0.125, 0, -0.25}};

struct NodeLoad {
  int node;
  Load6 load;
};
const std::vector<NodeLoad> tower_loads = {
    {9, {30, -20, -50, 5, 3, -4}}, {5, {0, 10, -5, 0, 8, 0}}, {7, {-12, 0, 4, -6, 0, 9}}};

std::array<bool, 6> released(int code) {
  return {code / 1000 % 10 == 1, false, false, code / 100 % 10 == 1, code / 10 % 10 == 1, code % 10 == 1};
}

/// The same tower for the other solution; y of a member without third node is horizontal: Z cross x.
IndependentFrame other_tower(bool hinged, bool shear) {
  IndependentFrame frame;
  frame.nodes = tower_nodes();
  frame.held = {true, true, true, true, false, false, false, false, false, true};
  frame.loads.resize(frame.nodes.size());
  for (const NodeLoad& load : tower_loads) frame.loads[static_cast<std::size_t>(load.node - 1)] = load.load;
  for (const Member& card : tower_members(hinged)) {
    const TowerSection& s = tower_sections[card.SEC - 1];
    FrameMember m{.I = static_cast<std::size_t>(card.I - 1),
                  .J = static_cast<std::size_t>(card.J - 1),
                  .EA = E * s.A,
                  .GJ = G * s.J,
                  .EI2 = E * s.I2,
                  .EI3 = E * s.I3};
    if (shear) m.GA2 = G * s.AS2, m.GA3 = G * s.AS3;
    if (card.ECC > 0) {
      const std::array<double, 6>& e = tower_offsets[card.ECC - 1];
      m.eI = {e[0], e[1], e[2]};
      m.eJ = {e[3], e[4], e[5]};
    }
    const Vector3 &I = frame.nodes[m.I], &J = frame.nodes[m.J];
    const Vector3 x = {J[0] + m.eJ[0] - I[0] - m.eI[0], J[1] + m.eJ[1] - I[1] - m.eI[1], 0};
    m.y = cross({0, 0, 1}, x);
    if (card.K > 0) {
      const Vector3& K = frame.nodes[static_cast<std::size_t>(card.K - 1)];
      m.y = {K[0] - I[0] - m.eI[0], K[1] - I[1] - m.eI[1], K[2] - I[2] - m.eI[2]};
    }
    m.releasedI = released(card.HI);
    m.releasedJ = released(card.HJ);
    frame.members.push_back(m);
  }
  return frame;
}

template <class Group>
void add_offsets_and_members(Group& group, bool hinged) {
  for (const std::array<double, 6>& e : tower_offsets) group.offset(e);
  for (const Member& card : tower_members(hinged)) {
    typename Group::Element e;
    e.I = card.I;
    e.J = card.J;
    e.K = card.K;
    e.SEC = card.SEC;
    e.ECC = card.ECC;
    if constexpr (requires { e.HI; }) {
      e.HI = card.HI;
      e.HJ = card.HJ;
    }
    group.element(e);
  }
}

std::string linear_tower(bool hinged) {
  LinearGroup group;
  group.E = E;
  group.poisson = nu;
  for (const TowerSection& s : tower_sections)
    group.section({.A = s.A, .J = s.J, .I3 = s.I3, .I2 = s.I2, .AS2 = s.AS2, .AS3 = s.AS3});
  add_offsets_and_members(group, hinged);
  return group.text();
}

std::string large_tower() {
  LargeGroup group;
  group.E = E;
  group.poisson = nu;
  for (const TowerSection& s : tower_sections) group.section({.A = s.A, .IY = s.I2, .IZ = s.I3, .J = s.J});
  add_offsets_and_members(group, false);
  return group.text();
}

RunResult run_tower(const std::string& group, double factor, const SegmentCards& segment) {
  FrameDeck deck;
  for (const Vector3& x : tower_nodes()) deck.node(x[0], x[1], x[2]);
  for (const int n : {1, 2, 3, 4, 10}) deck.fix(n, "111111");
  deck.group(group);
  bool first = true;
  for (const NodeLoad& load : tower_loads) {
    Load scaled = load.load;
    for (double& value : scaled) value *= factor;
    first ? deck.load(load.node, scaled) : deck.more_load(load.node, scaled);
    first = false;
  }
  deck.stat({segment});
  RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 0) << run.errors << run.progress;
  return run;
}

void expect_same_displacements(const IndependentFrame& other, double factor, double tolerance) {
  const std::vector<Load6> expected = other.displacements();
  double largest = 0;
  for (const Load6& u : expected) {
    for (const double value : u) largest = std::max(largest, std::abs(value));
  }
  EXPECT_GT(largest, 1e-3);
  for (std::size_t n = 0; n < expected.size(); ++n) {
    for (int c = 1; c <= 6; ++c) {
      EXPECT_NEAR(moved(static_cast<int>(n) + 1, c) / factor, expected[n][static_cast<std::size_t>(c - 1)],
                  tolerance * largest)
          << "node " << n + 1 << ", component " << c;
    }
  }
}

TEST(SpaceFrame, OfLinearBeamsHasTheDisplacementsOfAnIndependentSolution) {
  for (const bool hinged : {false, true}) {
    run_tower(linear_tower(hinged), 1.0, one_step());
    expect_same_displacements(other_tower(hinged, true), 1.0, 1e-8);
  }
}

TEST(SpaceFrame, OfLargeBeamsHasThemUnderSmallLoads) {
  run_tower(large_tower(), 1e-8, one_step(1e-14));
  expect_same_displacements(other_tower(false, false), 1e-8, 1e-7);
}

const std::vector<GroupOfRecords> group_of_tower = {{3, static_cast<int>(tower_members(false).size())}};

/// Sum of the elements' forces on all held nodes: the forces that the structure exerts on its supports, and their
/// moments about the origin, in the displaced positions of `nodes`.
Load6 on_supports() {
  Load6 sum{};
  const std::vector<Vector3> x = tower_nodes();
  for_each_record(group_of_tower, [&](const ElementType& type, const Word* record, int) {
    load_record(record);
    type.operations.resist();
    for (std::size_t end = 0; end < 2; ++end) {
      const int node = (location_vector()[6 * end] - 1) % sizes.NUMNP + 1;
      if (node > 4) continue;
      const double* f = element.ERES.data() + 6 * end;
      const Vector3 M = cross(x[static_cast<std::size_t>(node - 1)], {f[0], f[1], f[2]});
      for (std::size_t i = 0; i < 3; ++i) {
        sum[i] += f[i];
        sum[3 + i] += f[3 + i] + M[i];
      }
    }
  });
  return sum;
}

/// The loads, acting at nodes where they have moved to.
Load6 all_loads(double factor, bool moved_nodes) {
  Load6 sum{};
  const std::vector<Vector3> x = tower_nodes();
  for (const NodeLoad& load : tower_loads) {
    Vector3 at = x[static_cast<std::size_t>(load.node - 1)];
    for (std::size_t i = 0; moved_nodes && i < 3; ++i) at[i] += moved(load.node, static_cast<int>(i) + 1);
    const Vector3 M = cross(at, {load.load[0], load.load[1], load.load[2]});
    for (std::size_t i = 0; i < 3; ++i) {
      sum[i] += factor * load.load[i];
      sum[3 + i] += factor * (load.load[3 + i] + M[i]);
    }
  }
  return sum;
}

TEST(Reactions, OfLinearBeamsAreTheLoads) {
  for (const bool hinged : {false, true}) {
    run_tower(linear_tower(hinged), 1.0, one_step(1e-9));
    const Load6 found = on_supports(), expected = all_loads(1.0, false);
    for (std::size_t i = 0; i < 6; ++i) EXPECT_NEAR(found[i], -expected[i], 1e-7) << i;
  }
}

}  // namespace
}  // namespace tidearc::test
