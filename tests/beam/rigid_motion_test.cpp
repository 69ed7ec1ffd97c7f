// Members of every kind as their cards make them: rigid motion gives no force, forces are the matrix times the
// displacements, and the matrix is symmetric.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "beam_block.h"
#include "frame_deck.h"
#include "model/nodes.h"

namespace tidearc::test {
namespace {

constexpr std::array<std::array<double, 3>, 6> points = {
    {{0, 0, 0}, {3, 1, 2}, {5, -2, 1}, {1, 4, -1}, {7, 3, 9}, {0, 0, 2.5}}};

/// Linear beams: every hinge alone and together with others, offsets, third nodes, shear areas, an axial force.
std::string linear_members(const std::string& KDEF) {
  LinearGroup group;
  group.KDEF = KDEF;
  group.section({.A = 2, .J = 0.6, .I3 = 0.9, .I2 = 0.4});
  group.section({.A = 3, .J = 0.5, .I3 = 0.3, .I2 = 0.7, .AS2 = 0.8, .AS3 = 1.1});
  group.offset({0.2, -0.1, 0.3, -0.4, 0.1, 0.2});
  const int codes[] = {0, 1, 10, 100, 1000, 11, 111, 1111, 101, 1010};
  for (const int HI : codes) {
    for (const int HJ : codes) {
      const int k = group.last;
      group.element({.I = 1 + k % 3,
                     .J = 4,
                     .K = k % 2 == 0 ? 5 : 0,
                     .SEC = 1 + k % 2,
                     .GEOM = k % 5 == 0,
                     .axial = k % 5 == 0 ? 20.0 : 0.0,
                     .ECC = k % 4 == 1,
                     .HI = HI,
                     .HJ = HJ});
    }
  }
  group.element({.I = 1, .J = 6});
  return group.text();
}

/// Large displacement beams: S.D. codes, offsets, third nodes, angles.
std::string large_members(int type) {
  LargeGroup group;
  group.ITYPE = type;
  group.viv = "\n\n\n";
  group.section({.A = 2, .IY = 0.4, .IZ = 0.9, .J = 0.6});
  group.section({.A = 2, .IY = 0.4, .IZ = 0.9, .J = 0.6, .angle = 0.7});
  if (type == 2) group.offset({0.2, -0.1, 0.3, -0.4, 0.1, 0.2});
  for (int k = 0; k < 24; ++k) {
    group.element({.I = 1 + k % 3,
                   .J = 4,
                   .K = k % 2 == 0 ? 5 : 0,
                   .SEC = 1 + k / 12,
                   .KGE = k % 5 == 0,
                   .SD = 1 + k / 3 % 3,
                   .ECC = type == 2 && k % 4 == 1});
  }
  group.element({.I = 1, .J = 6});
  return group.text();
}

const std::vector<GroupOfRecords> groups = {{3, 101}, {3, 101}, {2, 25}, {27, 25}};

/// Reads the members in; afterwards their records can be walked over.
void read_members() {
  FrameDeck deck;
  for (const auto& p : points) deck.node(p[0], p[1], p[2]);
  deck.group(linear_members(""));
  deck.group(linear_members("STRUD"));
  deck.group(large_members(2));
  deck.group(large_members(27));
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
}

using Motion12 = std::array<double, 12>;

/// Every node moves by t + r x X.
Motion12 rigid_motion(const std::array<double, 3>& t, const std::array<double, 3>& r) {
  const int* LM = location_vector();
  Motion12 u;
  for (std::size_t end = 0; end < 2; ++end) {
    const auto& x = points[static_cast<std::size_t>((LM[6 * end] - 1) % sizes.NUMNP)];
    double* at = u.data() + 6 * end;
    at[0] = t[0] + r[1] * x[2] - r[2] * x[1];
    at[1] = t[1] + r[2] * x[0] - r[0] * x[2];
    at[2] = t[2] + r[0] * x[1] - r[1] * x[0];
    std::ranges::copy(r, at + 3);
  }
  return u;
}

/// Resisting forces behind one determination from the record.
Motion12 forces_of(const ElementType& type, const Word* record, const Motion12& u) {
  load_record(record);
  std::ranges::copy(u, element.EDISP.begin());
  type.operations.state();
  type.operations.resist();
  Motion12 f;
  std::copy_n(element.ERES.begin(), 12, f.begin());
  return f;
}

/// The element's matrix as it is delivered; `size` becomes its largest entry.
Full matrix_of(const ElementType& type, const Word* record, double& size) {
  load_record(record);
  EXPECT_EQ(type.operations.stiffness(0, 0, 0, true), MatrixForm::packed);
  Full K{};
  std::size_t at = 0;
  size = 0;
  for (std::size_t i = 0; i < 12; ++i) {
    for (std::size_t j = i; j < 12; ++j) {
      K[i + 12 * j] = K[j + 12 * i] = element.EMAT[at++];
      size = std::max(size, std::abs(K[i + 12 * j]));
    }
  }
  return K;
}

TEST(RigidMotion, GivesNoForceInAnyMember) {
  read_members();
  int members = 0;
  for_each_record(groups, [&](const ElementType& type, const Word* record, int running) {
    double size = 0;
    const Full K = matrix_of(type, record, size);
    const std::array<double, 3> t = {0.3, -0.8, 0.5};
    // The linear beam knows any rotation as a small one, the others the third power of it.
    const double a = type.ITYPE == 3 ? 1.0 : 1e-7;
    const Motion12 start = forces_of(type, record, {});
    const Motion12 f = forces_of(type, record, rigid_motion(t, {0.5 * a, -0.3 * a, 0.8 * a}));
    const Motion12 u = rigid_motion(t, {0.5, -0.3, 0.8});
    for (std::size_t i = 0; i < 12; ++i) {
      double sum = 0;
      for (std::size_t j = 0; j < 12; ++j) sum += K[i + 12 * j] * u[j];
      EXPECT_NEAR(sum, 0.0, 1e-10 * size) << "type " << type.ITYPE << ", member " << running;
      EXPECT_NEAR(f[i], start[i], 1e-10 * size) << "type " << type.ITYPE << ", member " << running;
    }
    ++members;
  });
  EXPECT_EQ(members, 2 * 101 + 2 * 25);
}

TEST(RigidMotion, ForcesOfEachDisplacementAreTheColumnsOfASymmetricMatrix) {
  read_members();
  for_each_record(groups, [&](const ElementType& type, const Word* record, int running) {
    double size = 0;
    const Full K = matrix_of(type, record, size);
    const double h = type.ITYPE == 3 ? 1.0 : 1e-6;
    const double tolerance = type.ITYPE == 3 ? 1e-12 : 1e-5;  // differences of a step of 1E-6 in large displacement
    Full F;
    for (std::size_t j = 0; j < 12; ++j) {
      Motion12 u{};
      u[j] = h;
      const Motion12 forth = forces_of(type, record, u);
      u[j] = -h;
      const Motion12 back = forces_of(type, record, u);
      for (std::size_t i = 0; i < 12; ++i) F[i + 12 * j] = (forth[i] - back[i]) / (2 * h);
    }
    for (std::size_t i = 0; i < 12; ++i) {
      for (std::size_t j = 0; j < 12; ++j) {
        EXPECT_NEAR(F[i + 12 * j], K[i + 12 * j], tolerance * size) << type.ITYPE << ' ' << running;
        EXPECT_NEAR(F[i + 12 * j], F[j + 12 * i], tolerance * size) << type.ITYPE << ' ' << running;
      }
    }
  });
}

TEST(RigidMotion, OfAMemberThatIsAlmostVerticalGivesTheMomentsOfItsToldAxes) {
  // x = (s, 0, c) with c = 0.9995, but axis 2 is (c, 0, 0) and axis 3 (0, 1, 0). A rotation a about Y moves end J by
  // a L (c, 0, -s): no extension, c c a L along axis 2, the rotation a about axis 3: the ends turn by a (1 - c c)
  // against what axis 2 shows of the chord, and bear 6EI/L times that. A third node cures it.
  const double c = 0.9995, s = std::sqrt(1 - c * c), a = 1e-3, L = 2;
  for (const int type : {3, 2}) {
    for (const int K : {0, 3}) {
      FrameDeck deck;
      deck.node(0, 0, 0);
      deck.node(L * s, 0, L * c);
      deck.node(3, 0, 0);
      LinearGroup linear;
      linear.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1});
      linear.element({.I = 1, .J = 2, .K = K});
      LargeGroup large;
      large.section({.A = 1, .IY = 1, .IZ = 1, .J = 1});
      large.element({.I = 1, .J = 2, .K = K, .SD = 1});
      deck.group(type == 3 ? linear.text() : large.text());
      EXPECT_EQ(run_static(deck.text()).status, 0);
      for_each_record({{type, 1}}, [&](const ElementType& row, const Word* record, int) {
        const Motion12 f = forces_of(row, record, {0, 0, 0, 0, a, 0, a * L * c, 0, -a * L * s, 0, a, 0});
        const double moment = K == 0 ? 6 * 1000 / L * a * s * s : 0.0;
        EXPECT_NEAR(f[4], moment, 1e-6);
        EXPECT_NEAR(f[10], moment, 1e-6);
        EXPECT_NEAR(f[6], K == 0 ? -2 * moment / L * c : 0.0, 1e-6);
      });
    }
  }
}

}  // namespace
}  // namespace tidearc::test
