// The effective matrix of dynamic analyses, KE = A0 M + A2 (DMASS M + sum(BETAO K0 + BETAT Kt)) + (1-AB) sum Kt, in
// every storage scheme, beside one that is made by hand from the geometry; masses and stand-ins; changed step sizes.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "assembly/assembly.h"
#include "bars.h"
#include "elements/contract/pass.h"
#include "model/control.h"
#include "run/layout.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/integration.h"
#include "solve/solve.h"
#include "solve/solver.h"

namespace tidearc {
namespace {

using test::Bar;
using test::BarModel;
using test::BarNode;

struct Scheme {
  int KSTOR;
  int NWDBLK;
};
const std::vector<Scheme> schemes{{1, 0}, {2, 0}, {2, 200}, {2, 68}, {-1, 0}, {-2, 0}, {-2, 400}, {-2, 68}};
std::string name_of(const Scheme& scheme) {
  return "KSTOR " + std::to_string(scheme.KSTOR) + " NWDBLK " + std::to_string(scheme.NWDBLK);
}

// ---- one mass on a bar

std::vector<BarNode> one_node() { return {{2.5, 0, 0, "1"}, {0, 0, 0, ""}}; }  // EA/L 400

// Mass 4, EA/L 400, DT 0.02: 4 * 4 / DT^2 + 400 = 40400; at half the step 160400.
TEST(OneMass, EntersTheMatrixOnce) {
  for (const Scheme& scheme : schemes) {
    SCOPED_TRACE(name_of(scheme));
    const BarModel model(one_node(), {{2, 1}}, scheme.KSTOR, 0);
    model.put_mass(1, 4.0);
    model.begin_dynamics(0.02);
    STIFUP();
    EXPECT_NEAR(model.stiffness(1, 1), 40400.0, 1e-10);
    EXPECT_EQ(solver.NSTUPD, 1);
    solver.NELCHK = 1;  // an element reports a change in the same step
    STIFUP();
    EXPECT_NEAR(model.stiffness(1, 1), 40400.0, 1e-10) << "and not 80400";
    EXPECT_EQ(solver.NSTUPD, 2);
    ++solver.KFORM;
    solver.NELCHK = 1;
    STIFUP();
    EXPECT_NEAR(model.stiffness(1, 1), 40400.0, 1e-10) << "in a later step";
  }
}

TEST(ChangedStep, BuildsTheMatrixAnew) {
  for (const Scheme& scheme : schemes) {
    SCOPED_TRACE(name_of(scheme));
    const BarModel model(one_node(), {{2, 1}}, scheme.KSTOR, 0);
    model.put_mass(1, 4.0);
    model.begin_dynamics(0.02);
    STIFUP();
    solver.KFORM = 17;
    integration.DT = 0.01;
    INTCON(Constants::rescaled, 0.02);
    STIFUP();  // no element is due
    EXPECT_NEAR(model.stiffness(1, 1), 160400.0, 1e-9);
    EXPECT_EQ(solver.KFORM, 1);
    EXPECT_EQ(solver.KRESET, 0);
    EXPECT_EQ(solver.NSTUPD, 2);
    EXPECT_EQ(integration.DTK, 0.01);
    EXPECT_EQ(integration.NEWCON, 1);
    STIFUP();
    EXPECT_EQ(solver.NSTUPD, 2) << "once";
    EXPECT_NEAR(model.stiffness(1, 1), 160400.0, 1e-9);
  }
}

// What the told mark alone, all elements up to the last, would leave: no element has changed, nothing is formed.
TEST(ChangedStep, WithoutAResetWouldKeepTheOldMatrix) {
  const BarModel model(one_node(), {{2, 1}});
  model.put_mass(1, 4.0);
  model.begin_dynamics(0.02);
  STIFUP();
  integration.DT = 0.01;
  INTCON(Constants::rescaled, 0.02);
  solver.KFORM = 2;
  solver.NELCHK = 1;
  ASMDYN();
  EXPECT_NEAR(model.stiffness(1, 1), 40400.0, 1e-10);
}

TEST(AssemblyLoop, IsTheStaticOneAtTimeZeroAndWhenItIsAskedFor) {
  const BarModel model(one_node(), {{2, 1}});
  model.put_mass(1, 4.0);
  const auto diagonal_of = [&](double TIME, int code, int KFORM) {
    model.begin_dynamics(0.02);
    response.TIME = TIME;
    solver.KFORM = KFORM;
    STIFUP(code);
    return model.stiffness(1, 1);
  };
  EXPECT_NEAR(diagonal_of(0.0, loop_dynamic, 0), 400.0, 1e-12);
  EXPECT_NEAR(diagonal_of(0.0, loop_static, 0), 400.0, 1e-12);
  EXPECT_NEAR(diagonal_of(0.02, loop_static, 0), 400.0, 1e-12);
  EXPECT_EQ(integration.DTK, 0.0);
  EXPECT_EQ(integration.NEWCON, 0);
  EXPECT_NE(model.report().find("STIFFNESS FORMED"), std::string::npos);
  EXPECT_NEAR(diagonal_of(0.02, loop_dynamic, 1), 40400.0, 1e-10);
  EXPECT_NEAR(diagonal_of(0.02, loop_alternate, 1), 40400.0, 1e-10);
}

TEST(DynamicAssembly, SaysNothingOnTheReport) {
  const BarModel model({{2.5, 0, 0, "16"}, {0, 0, 0, ""}}, {{2, 1}});  // a rotation without stiffness
  model.begin_dynamics(0.02);
  const std::size_t written = model.report_size();
  STIFUP();
  EXPECT_EQ(model.report_size(), written);
  EXPECT_EQ(model.progress(), "");
}

TEST(DynamicAssembly, ReturnsAtOnceWithoutWork) {
  const BarModel model(one_node(), {{2, 1}});
  model.put_mass(1, 4.0);
  model.begin_dynamics(0.02);
  STIFUP();
  pool.reals(solver.KFAC, solver.NSTO)(1) = 12345.0;
  ++solver.KFORM;
  response.TIME = 0.04;
  STIFUP();
  EXPECT_EQ(model.factor(1, 1), 12345.0);
  EXPECT_EQ(solver.NSTUPD, 1);
}

TEST(StaticAnalysis, BehindADynamicOneHasThePlainMatrix) {
  for (const Scheme& scheme : schemes) {
    SCOPED_TRACE(name_of(scheme));
    const BarModel model(one_node(), {{2, 1}}, scheme.KSTOR, 0);
    model.put_mass(1, 4.0);
    model.begin_dynamics(0.02, 0.1, 0.3);
    STIFUP();
    EXPECT_GT(model.stiffness(1, 1), 1000.0);
    response.TIME = 0.0;
    model.begin_macro();
    STIFUP();
    EXPECT_EQ(model.stiffness(1, 1), 400.0);
    // A dynamic macro behind it: even one that forgot to ask for a reset would get its matrix.
    response.TIME = 0.02;
    solver.KFORM = 1;
    STIFUP();
    EXPECT_GT(model.stiffness(1, 1), 1000.0);
  }
}

// ---- equations without stiffness

// Equations 1 to 3 at node 1 and 5 at node 2 are rotations that no bar stiffens; the bar of 100 holds 4.
std::vector<BarNode> with_rotations() { return {{0, 0, 0, "456"}, {10, 0, 0, "15"}, {20, 0, 0, ""}}; }

TEST(DiagonalsWithoutStiffness, AreTheMassTermOrAStandInInEveryScheme) {
  for (const Scheme& scheme : {Scheme{1, 0}, Scheme{2, 0}, Scheme{2, 12}, Scheme{-1, 0}, Scheme{-2, 12}}) {
    SCOPED_TRACE(name_of(scheme));
    const BarModel model(with_rotations(), std::vector<Bar>{{2, 3}}, scheme.KSTOR, scheme.NWDBLK);
    model.put_mass(2, 3.0);
    model.put_mass(4, 2.0);
    model.begin_dynamics(0.02, 0.0, 0.4);
    STIFUP();
    for (const int step : {1, 2}) {
      for (const int e : {1, 3, 5}) EXPECT_EQ(model.stiffness(e, e), 1.0e-8) << e;
      EXPECT_EQ(model.stiffness(2, 2), 3.0 * 10040.0) << "nothing beside it";
      EXPECT_NEAR(model.stiffness(4, 4), 2.0 * 10040.0 + 100.0, 1e-10);
      for (int e = 1; e <= 5; ++e) EXPECT_EQ(assembled_diagonal(e), model.stiffness(e, e));
      if (step == 2) break;
      solver.KFORM = 9;  // a matrix that is cleared in a later step
      solver.KRESET = 1;
      solver.NELCHK = 1;
      STIFUP();
    }
  }
}

TEST(DiagonalsWithoutStiffness, OfBothTrianglesAreTreatedAlike) {
  const BarModel model(with_rotations(), {{2, 3}}, -1);
  model.put_mass(2, 3.0);
  model.begin_dynamics(0.02);
  STIFUP();
  const Reals K = pool.reals(solver.KASM, solver.NSTO);
  for (int i = 1; i <= triangle_length(); ++i) EXPECT_EQ(K(i), K(i + triangle_length()));
}

TEST(DiagonalsWithoutStiffness, ReachTheFactor) {
  const BarModel model(with_rotations(), {{2, 3}});
  model.put_mass(1, 3.0);
  model.begin_dynamics(0.02);
  STIFUP();
  EXPECT_EQ(solver.KFIRST, 1) << "bars begin at equation 4";
  EXPECT_EQ(model.factor(1, 1), 30000.0);
  EXPECT_EQ(model.factor(2, 2), 1.0e-8);
}

// ---- a truss of two groups beside a matrix made by hand

constexpr double E = 1000.0, yield = 2.0, hardening = 0.1;
constexpr double DT = 0.02, AB = 0.1, DMASS = 0.4;
constexpr int bays = 6;

struct HandBar {
  int I, J;
  bool first_group, turning;
};

/// A plane cantilever of six bays: lower nodes 1 to 6 (equations 1 to 12), upper nodes 7 to 12 (13 to 24), a wall.
std::vector<BarNode> cantilever_nodes() {
  std::vector<BarNode> nodes;
  for (int row = 0; row < 2; ++row) {
    for (int i = 1; i <= bays; ++i) nodes.push_back({10.0 * i, 10.0 * row, 0, "12"});
  }
  nodes.push_back({0, 0, 0, ""});
  nodes.push_back({0, 10, 0, ""});
  return nodes;
}
/// The first group has damping and yields, the second has neither; bars from node 4 on turn with their ends.
std::vector<HandBar> cantilever_bars() {
  std::vector<HandBar> bars{{13, 1, true, false}, {14, 7, false, false}, {13, 7, true, false}};
  for (int i = 1; i <= bays; ++i) {
    const bool turning = i >= 4;
    bars.push_back({i, i + 6, false, turning});
    if (i == bays) break;
    bars.push_back({i, i + 1, true, turning});
    bars.push_back({i + 6, i + 7, false, turning});
    bars.push_back({i, i + 7, true, turning});
  }
  std::stable_partition(bars.begin(), bars.end(), [](const HandBar& bar) { return bar.first_group; });
  return bars;
}
constexpr double BETAO = 0.01, BETAT = 0.002;

std::string cantilever_cards() {
  std::string cards;
  const std::vector<HandBar> bars = cantilever_bars();
  for (const bool first : {true, false}) {
    std::string elements;
    int number = 0;
    for (const HandBar& bar : bars) {
      if (bar.first_group != first) continue;
      elements += format("5I5,F10.3,I5", ++number, bar.I, bar.J, 1, 1, 0.0, bar.turning ? 1 : 0) + "\n";
    }
    cards += format("3I5,2F10.4", 1, number, 1, first ? BETAO : 0.0, first ? BETAT : 0.0) + "\n";
    cards += format("3I5", 1, 1, 0) + "\n";
    cards += format("I5,4F10.3", 1, E, first ? hardening : 0.0, first ? yield : 0.0, first ? yield : 0.0) + "\n\n";
    cards += format("I5,F10.0", 1, 1.0) + "\n\n" + elements;
  }
  return cards;
}

class Dense {
 public:
  explicit Dense(int n) : n_(n), values_(static_cast<std::size_t>(n * n)) {}
  double& operator()(int i, int j) { return values_[static_cast<std::size_t>((i - 1) * n_ + j - 1)]; }
  double largest() const {
    double most = 0.0;
    for (const double value : values_) most = std::max(most, std::abs(value));
    return most;
  }

 private:
  int n_;
  std::vector<double> values_;
};

using Displacements = std::vector<double>;  ///< equation e at [e - 1]

/// By the book: direction, extension and force of each bar where its nodes are.
Dense hand_matrix(const Displacements& U, const std::vector<double>& M) {
  const std::vector<BarNode> nodes = cantilever_nodes();
  Dense K(24);
  const double A0 = 4 / ((1 + AB) * (1 + AB) * DT * DT), A2 = (0.5 + AB) * 4 / ((1 + AB) * (1 + AB) * DT);
  for (int e = 1; e <= 24; ++e) K(e, e) = (A0 + A2 * DMASS) * M[static_cast<std::size_t>(e - 1)];
  const auto moved = [&](int node, int c) { return node > 12 ? 0.0 : U[static_cast<std::size_t>(2 * (node - 1) + c)]; };
  for (const HandBar& bar : cantilever_bars()) {
    const BarNode& I = nodes[static_cast<std::size_t>(bar.I - 1)];
    const BarNode& J = nodes[static_cast<std::size_t>(bar.J - 1)];
    double d[2] = {J.x - I.x, J.y - I.y};
    const double L0 = std::hypot(d[0], d[1]);
    const double dU[2] = {moved(bar.J, 0) - moved(bar.I, 0), moved(bar.J, 1) - moved(bar.I, 1)};
    double L = L0;
    double extension = (d[0] * dU[0] + d[1] * dU[1]) / L0;
    if (bar.turning) {
      for (int c = 0; c < 2; ++c) d[c] += dU[c];
      L = std::hypot(d[0], d[1]);
      extension = L - L0;
    }
    const double stiff = E / L0;
    const double limit = yield * L0 / E;
    const bool yields = bar.first_group && std::abs(extension) > limit;
    const double Kt = yields ? hardening * stiff : stiff;
    const double N = yields ? std::copysign(yield, extension) + Kt * (extension - std::copysign(limit, extension))
                            : stiff * extension;
    const double damping = bar.first_group ? A2 * (BETAO * stiff + BETAT * Kt) : 0.0;
    const double along = damping + (1 - AB) * Kt;
    const double across = bar.turning ? (1 - AB) * N / L : 0.0;
    for (int a = 0; a < 4; ++a) {
      for (int b = 0; b < 4; ++b) {
        const int node_a = a < 2 ? bar.I : bar.J, node_b = b < 2 ? bar.I : bar.J;
        if (node_a > 12 || node_b > 12) continue;
        const double n_a = d[a % 2] / L, n_b = d[b % 2] / L;
        const double value = along * n_a * n_b + across * ((a % 2 == b % 2 ? 1.0 : 0.0) - n_a * n_b);
        K(2 * (node_a - 1) + a % 2 + 1, 2 * (node_b - 1) + b % 2 + 1) += (a < 2) == (b < 2) ? value : -value;
      }
    }
  }
  return K;
}

/// Masses on most equations, none on those of nodes 2 and 9.
std::vector<double> cantilever_masses() {
  std::vector<double> M;
  for (int e = 1; e <= 24; ++e) M.push_back(e == 3 || e == 4 || e == 17 || e == 18 ? 0.0 : 0.5 + 0.125 * e);
  return M;
}
Displacements large_displacements() {
  Displacements U;
  for (int e = 1; e <= 24; ++e) U.push_back(0.02 * e * std::sin(1.0 * e));
  return U;
}

std::vector<double> whole_matrix(const BarModel& model) {
  std::vector<double> values;
  for (int i = 1; i <= 24; ++i) {
    for (int j = 1; j <= 24; ++j) values.push_back(model.stiffness(i, j));
  }
  return values;
}
void expect_matrix(const std::vector<double>& found, Dense expected, double tolerance) {
  const double scale = expected.largest();
  for (int i = 1; i <= 24; ++i) {
    for (int j = 1; j <= 24; ++j)
      EXPECT_NEAR(found[static_cast<std::size_t>((i - 1) * 24 + j - 1)], expected(i, j), tolerance * scale)
          << i << ", " << j;
  }
}

/// What one job finds: the matrix of the first step, after an update by difference, built anew for half the step's
/// masses, and the forces.
struct Job {
  std::vector<double> first, updated, rebuilt, R, D, R_half, D_half;
};

Job run_job(const Scheme& scheme) {
  SCOPED_TRACE(name_of(scheme));
  const BarModel model(cantilever_nodes(), cantilever_cards(), 2, scheme.KSTOR, scheme.NWDBLK);
  EXPECT_EQ(solver.NBLOCK > 1, scheme.NWDBLK > 0);
  const std::vector<double> M = cantilever_masses();
  for (int e = 1; e <= 24; ++e) model.put_mass(e, M[static_cast<std::size_t>(e - 1)]);
  model.begin_dynamics(DT, AB, DMASS);
  Job job;
  STIFUP();
  job.first = whole_matrix(model);
  save_states();
  const Displacements U = large_displacements();
  for (int e = 1; e <= 24; ++e) {
    equation_vector(arrays.U)(e) = U[static_cast<std::size_t>(e - 1)];
    equation_vector(arrays.BFGS1)(e) = 0.5 * U[static_cast<std::size_t>(e - 1)];
    equation_vector(arrays.VD)(e) = std::cos(1.0 * e);
  }
  determine_midstep(arrays.BFGS1, arrays.VD, arrays.BFGS2, arrays.DAMP);
  const auto values = [](int vector) {
    const Reals v = equation_vector(vector);
    return std::vector<double>(v.begin(), v.begin() + 24);
  };
  job.R_half = values(arrays.BFGS2);
  job.D_half = values(arrays.DAMP);
  determine_states({.damped = arrays.VD, .damping = arrays.DAMP});
  job.R = values(arrays.R);
  job.D = values(arrays.DAMP);
  ++solver.KFORM;
  STIFUP();
  job.updated = whole_matrix(model);
  integration.DTK = -1.0;  // as if the matrix were that of another step
  STIFUP();
  job.rebuilt = whole_matrix(model);
  return job;
}

TEST(EffectiveMatrix, IsTheSumThatIsMadeByHandInEveryScheme) {
  const Displacements rest(24, 0.0);
  const Dense first = hand_matrix(rest, cantilever_masses());
  const Dense moved = hand_matrix(large_displacements(), cantilever_masses());
  for (const Scheme& scheme : schemes) {
    SCOPED_TRACE(name_of(scheme));
    const Job job = run_job(scheme);
    expect_matrix(job.first, first, 1e-14);
    expect_matrix(job.updated, moved, 1e-13);
    expect_matrix(job.rebuilt, moved, 1e-14);
  }
}

TEST(EffectiveMatrix, AndForcesHaveTheDigitsOfTheCoreInEveryScheme) {
  const Job core = run_job(schemes.front());
  for (const Scheme& scheme : schemes) {
    SCOPED_TRACE(name_of(scheme));
    const Job job = run_job(scheme);
    EXPECT_EQ(job.first, core.first);
    EXPECT_EQ(job.updated, core.updated);
    EXPECT_EQ(job.rebuilt, core.rebuilt);
    EXPECT_EQ(job.R, core.R);
    EXPECT_EQ(job.D, core.D);
    EXPECT_EQ(job.R_half, core.R_half);
    EXPECT_EQ(job.D_half, core.D_half);
  }
}

// Without masses and with AB 0 the matrix is K + A2 C: the damping forces of the elements are that C times velocities.
TEST(EffectiveMatrix, HoldsTheDampingOfTheDampingForces) {
  const BarModel model(cantilever_nodes(), cantilever_cards(), 2, 1, 0);
  const Displacements U = large_displacements();
  std::vector<double> v;
  for (int e = 1; e <= 24; ++e) {
    equation_vector(arrays.U)(e) = U[static_cast<std::size_t>(e - 1)];
    equation_vector(arrays.VD)(e) = std::cos(1.0 * e);
    v.push_back(std::cos(1.0 * e));
  }
  determine_states({.damped = arrays.VD, .damping = arrays.DAMP});
  model.begin_dynamics(DT);
  ASMDYN();
  const std::vector<double> damped = whole_matrix(model);
  model.begin_macro();
  ASMSTA();
  const std::vector<double> plain = whole_matrix(model);
  for (std::size_t i = 0; i < 24; ++i) {
    double force = 0.0;
    for (std::size_t j = 0; j < 24; ++j) force += (damped[24 * i + j] - plain[24 * i + j]) / integration.A2 * v[j];
    // Differences of matrices near 200, of which 100 times the damping is a hundredth.
    EXPECT_NEAR(equation_vector(arrays.DAMP)(static_cast<int>(i) + 1), force, 1e-13);
  }
}

// ---- the first equation with mass

TEST(FirstColumn, IsThatOfTheFirstMassWhenMassesAreAddedToAMatrixThatStands) {
  for (const Scheme& scheme : {Scheme{1, 0}, Scheme{2, 68}, Scheme{-1, 0}, Scheme{-2, 68}}) {
    SCOPED_TRACE(name_of(scheme));
    const BarModel model(cantilever_nodes(), cantilever_cards(), 2, scheme.KSTOR, scheme.NWDBLK);
    model.begin_dynamics(DT);
    STIFUP();  // without masses
    const std::vector<double> before = whole_matrix(model);
    model.put_mass(8, 2.0);
    model.put_mass(20, 1.0);
    solver.KFORM = 1;
    integration.NEWCON = 0;
    determine_states();
    solver.NELCHK = 0;
    ASMDYN();
    EXPECT_EQ(solver.KFIRST, 8);
    std::vector<double> expected = before;
    expected[7 * 24 + 7] += 2.0 * mass_coefficient();
    expected[19 * 24 + 19] += 1.0 * mass_coefficient();
    EXPECT_EQ(whole_matrix(model), expected);
  }
}

// ---- beams

// A cantilever of length 4 along X, E 1000, I 2, node 1 free in Y and about Z: 12EI/L^3, -6EI/L^2, 4EI/L.
TEST(EffectiveMatrix, OfALinearBeamTakesBothDampingCoefficients) {
  std::string cards = format("3I5,2F10.4", 3, 1, 1, BETAO, BETAT) + "\n";
  cards += format("5I5", 1, 1, 2, 0, 0) + "\n";
  cards += format("I5,5X,F10.1,F10.3", 1, E, 0.25) + "\n";
  cards += format("2I5,6F10.3,2F5.1,F10.1", 1, 0, 0.0, 0.0, 1.0, 0.0, 1.0, 2.0, 3.0, 0.0, 0.0) + "\n\n\n";
  cards += format("11I5,F10.1,I2,I3,I2,2I4", 1, 2, 1, 0, 0, 1, 1, 0, 0, 0, 0, 0.0, 0, 0, 0, 0, 0) + "\n";
  const double EI = E * 2.0, L = 4.0;
  const double plain[2][2] = {{12 * EI / (L * L * L), -6 * EI / (L * L)}, {-6 * EI / (L * L), 4 * EI / L}};
  for (const Scheme& scheme : {Scheme{1, 0}, Scheme{2, 0}, Scheme{-1, 0}}) {
    SCOPED_TRACE(name_of(scheme));
    const BarModel model({{4, 0, 0, "26"}, {0, 0, 0, ""}}, cards, 1, scheme.KSTOR, 0);
    model.put_mass(1, 2.0);
    model.begin_dynamics(DT, AB, DMASS);
    STIFUP();
    const double A2 = integration.A2;
    for (int i = 0; i < 2; ++i) {
      for (int j = 0; j < 2; ++j) {
        const double mass = i == 0 && j == 0 ? 2.0 * (integration.A0 + A2 * DMASS) : 0.0;
        const double expected = mass + (A2 * (BETAO + BETAT) + 1.0 - AB) * plain[i][j];
        EXPECT_NEAR(model.stiffness(i + 1, j + 1), expected, 1e-13 * std::abs(expected)) << i << j;
      }
    }
  }
}

}  // namespace
}  // namespace tidearc
