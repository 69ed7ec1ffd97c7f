// The scheme behind a step, through the very phases that the macros call: stability, dissipation, order, one iteration
// for linear structures, and the two ways to the same right-hand side.
//
// Sources of the expectations: N. M. Newmark (1959); H. M. Hilber, T. J. R. Hughes, R. L. Taylor, Earthquake Eng.
// Struct. Dyn. 5 (1977) 283-292; T. J. R. Hughes, The Finite Element Method (1987), chapter 9: second order, spectral
// radius at most 1, and (1 - AB) / (1 + AB) at infinite frequency without damping.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "dynamic/commands.h"
#include "dynamic/dyn2.h"
#include "dynamic/scheme.h"
#include "dynamic_run.h"
#include "elements/contract/pass.h"
#include "model/control.h"
#include "row_deck.h"
#include "solve/arrays.h"
#include "solve/integration.h"
#include "solve/solve.h"

namespace tidearc::test {
namespace {

/// The constants of a step.
IntegrationBlock constants(double DT, double AB, double BETA = 0.0) {
  integration = {};
  integration.DT = DT;
  integration.AB = AB;
  integration.BETA = BETA;
  INTCON(Constants::computed);
  return integration;
}

TEST(Scheme, IsTheTrapezoidalRuleWithoutParameters) {
  const Scratch scratch;
  const IntegrationBlock c = constants(0.1, 0.0);
  // From rest with acceleration 3 constant: v = 0.3, u = 0.015.
  EXPECT_NEAR(new_velocity(c, 0.015, 0.0, 3.0), 0.3, 1e-15);
  EXPECT_NEAR(new_acceleration(c, 0.015, 0.0, 3.0), 3.0, 1e-13);
  EXPECT_NEAR(new_velocity(c, 0.215, 2.0, 3.0), 2.3, 1e-14);
}

TEST(Scheme, AnyParametersKeepAConstantAcceleration) {
  const Scratch scratch;
  for (const double AB : {0.0, 0.05, 0.3}) {
    for (const double BETA : {0.0, 0.2, 0.5}) {
      const IntegrationBlock c = constants(0.1, AB, BETA);
      EXPECT_NEAR(new_velocity(c, 0.215, 2.0, 3.0), 2.3, 1e-13);
      EXPECT_NEAR(new_acceleration(c, 0.215, 2.0, 3.0), 3.0, 1e-12);
      EXPECT_NEAR(damped_velocity(c, 2.3, 3.0), 2.0 + 3.0 * (1.0 - AB) * 0.1, 1e-13) << "the velocity at TIME - AB DT";
    }
  }
}

TEST(Scheme, TheEffectiveLoadOfAMassIsItsInertiaAtIncrementZero) {
  const Scratch scratch;
  IntegrationBlock c = constants(0.05, 0.1);
  c.DMASS = 0.7;
  const double v = 1.3, a = -2.1, mass = 4.0;
  const double v0 = new_velocity(c, 0.0, v, a);
  const double expected = -mass * (new_acceleration(c, 0.0, v, a) + 0.7 * damped_velocity(c, v0, a));
  EXPECT_NEAR(inertia_load(c, mass, v, a), expected, 1e-12);
}

TEST(Updates, ComeByIterationsOrElseByStepsAtTheFirstIteration) {
  const auto due = [](int step_control, int iteration_control) {
    std::vector<int> list;  // 10 * step + iteration
    for (int NS = 1; NS <= 7; ++NS)
      for (int NI = 1; NI <= 4; ++NI)
        if (update_is_due(NS, NI, step_control, iteration_control)) list.push_back(10 * NS + NI);
    return list;
  };
  EXPECT_EQ(due(5, 0), (std::vector<int>{11, 61}));
  EXPECT_EQ(due(1, 0), (std::vector<int>{11, 21, 31, 41, 51, 61, 71}));
  EXPECT_EQ(due(3, 2), (std::vector<int>{11, 13, 21, 23, 31, 33, 41, 43, 51, 53, 61, 63, 71, 73}));
  EXPECT_EQ(due(5, 1).size(), 28U);
}

/// With the macro for which the vectors of dynamic analyses are laid down.
RowDeck with_macro(RowDeck deck) {
  deck.dyn2({});
  return deck;
}

/// A deck that has been read and whose macro has been started, ready for steps.
class OpenMacro {
 public:
  OpenMacro(const RowDeck& deck, double DMASS = 0.0) : problem_(with_macro(deck).text()) {
    integration.DMASS = DMASS;
    job.MAXIT = 1;
    job.KSSTF = 1;
    job.KISTA = 1;
  }
  /// Begins a macro with these constants.
  void begin(double DT, double AB) {
    const double DMASS = integration.DMASS;
    constants(DT, AB);
    integration.DMASS = DMASS;
    start_dynamics(false);
    dynamics.NS = 1;
  }
  ConstantSteps job;

 private:
  OpenProblem problem_;
};

/// The state of a linear structure: displacements, velocities times DT, accelerations times DT^2 of all equations.
using State = std::vector<double>;

void put_state(const State& z, double DT) {
  const auto n = static_cast<std::size_t>(sizes.NEQ);
  const Reals U = equation_vector(arrays.U), VEL = equation_vector(arrays.VEL), ACC = equation_vector(arrays.ACC);
  for (std::size_t e = 0; e < n; ++e) {
    const int equation = static_cast<int>(e) + 1;
    U(equation) = z[e];
    VEL(equation) = z[n + e] / DT;
    ACC(equation) = z[2 * n + e] / DT / DT;
  }
  determine_states();
  dynamics.taken_over = false;
  SDUP();
  copy_vector(arrays.UN, arrays.U);
  copy_vector(arrays.UTS, arrays.U);
  copy_vector(arrays.RN, arrays.R);
}

State get_state(double DT) {
  const auto n = static_cast<std::size_t>(sizes.NEQ);
  State z(3 * n);
  for (std::size_t e = 0; e < n; ++e) {
    const int equation = static_cast<int>(e) + 1;
    z[e] = equation_vector(arrays.U)(equation);
    z[n + e] = equation_vector(arrays.VEL)(equation) * DT;
    z[2 * n + e] = equation_vector(arrays.ACC)(equation) * DT * DT;
  }
  return z;
}

/// Columns: what a step makes of each unit state.
std::vector<State> amplification(OpenMacro& macro, double DT) {
  const auto n = static_cast<std::size_t>(3 * sizes.NEQ);
  std::vector<State> columns;
  for (std::size_t k = 0; k < n; ++k) {
    State z(n, 0.0);
    z[k] = 1.0;
    put_state(z, DT);
    EXPECT_EQ(take_constant_step(macro.job), StepOutcome::accepted);
    columns.push_back(get_state(DT));
  }
  return columns;
}

/// Largest magnitude of an eigenvalue: the growth of the powers of the matrix, squared again and again.
double spectral_radius(std::vector<State> A) {
  const std::size_t n = A.size();
  double logarithm = 0.0;
  const int squarings = 24;
  for (int k = 0; k < squarings; ++k) {
    double largest = 0.0;
    for (const State& column : A)
      for (const double value : column) largest = std::max(largest, std::abs(value));
    if (largest == 0.0) return 0.0;
    logarithm = 2.0 * (logarithm + std::log(largest));
    std::vector<State> square(n, State(n, 0.0));
    for (std::size_t j = 0; j < n; ++j)
      for (std::size_t k2 = 0; k2 < n; ++k2)
        for (std::size_t i = 0; i < n; ++i) square[j][i] += A[k2][i] / largest * (A[j][k2] / largest);
    A = square;
  }
  return std::exp(logarithm / std::pow(2.0, squarings));
}

constexpr double rounding = 1e-5;  ///< of a product of 2^24 matrices, and of a double root

/// Radius of a structure whose first frequency times DT is about `omega_DT`.
double radius(RowDeck deck, double DMASS, double AB, double omega_DT) {
  OpenMacro macro(deck, DMASS);
  macro.begin(omega_DT, AB);  // spring 1, mass 1
  return spectral_radius(amplification(macro, omega_DT));
}

TEST(Stability, TheSpectralRadiusIsAtMostOneOverSixDecadesForAllDissipations) {
  RowDeck plain, massless, damped, between;
  plain.springs = {1.0};
  plain.masses = {1.0};
  massless.springs = {1.0, 2.0};
  massless.masses = {0.0, 1.0};
  damped = massless;
  damped.BETAO = 0.02;
  damped.BETAT = 0.01;
  between.springs = {1.0, 1.0};
  between.masses = {1.0, 3.0};
  between.BETAT = 10.0;
  for (const double AB : {0.0, 0.05, 0.1, 0.2, 0.3, 1.0 / 3.0}) {
    for (const double omega_DT : {1e-3, 1e-2, 0.1, 0.3, 1.0, 3.0, 10.0, 1e2, 1e3}) {
      EXPECT_LE(radius(plain, 0.0, AB, omega_DT), 1.0 + rounding) << AB << ' ' << omega_DT;
      EXPECT_LE(radius(plain, 1.0, AB, omega_DT), 1.0 + rounding) << AB << ' ' << omega_DT;
      EXPECT_LE(radius(massless, 0.0, AB, omega_DT), 1.0 + rounding) << AB << ' ' << omega_DT;
      EXPECT_LE(radius(damped, 0.1, AB, omega_DT), 1.0 + rounding) << AB << ' ' << omega_DT;
      EXPECT_LE(radius(between, 0.0, AB, omega_DT), 1.0 + rounding) << AB << ' ' << omega_DT;
    }
  }
}

TEST(Stability, HighFrequenciesDieOutAsPublished) {
  RowDeck deck;
  deck.springs = {1.0};
  deck.masses = {1.0};
  for (const double AB : {0.0, 0.1, 0.2, 0.3})
    EXPECT_NEAR(radius(deck, 0.0, AB, 1e4), (1.0 - AB) / (1.0 + AB), 1e-3) << AB;
  // In the middle of the band, AB 0.3: Hughes gives the radius of the method at omega DT of 2 pi / 10 as about 0.995.
  EXPECT_GT(radius(deck, 0.0, 0.3, 0.6283), 0.99);
  EXPECT_LT(radius(deck, 0.0, 0.3, 0.6283), 1.0);
}

/// Three storeys with all kinds of damping under a force on the roof.
RowDeck storeys() {
  RowDeck deck;
  deck.springs = {900, 700, 500};
  deck.masses = {2, 1.5, 1};
  deck.BETAO = 0.002;
  deck.BETAT = 0.004;
  return deck;
}
constexpr double storey_DMASS = 0.4;

TEST(LinearStructure, ConvergesInOneIterationForAnyDissipationAndDamping) {
  for (const double ALPHA : {0.0, -0.05, -0.3}) {
    for (const double BETA : {0.0, 0.3}) {
      RowDeck deck = storeys();
      deck.NDFRC = 1;
      deck.forces = sine_record(10.0, 0.02, 102);
      deck.NIDSP = 1;
      deck.displacements = table_record({{0.0, 0.0}, {0.1, 0.01}, {1.0, -0.02}}, true);
      Dyn2Cards cards;
      cards.DT = 0.02;
      cards.ALPHA = ALPHA;
      cards.BETA = BETA;
      cards.DMASS = storey_DMASS;
      cards.NSTEP = 40;
      cards.MAXIT = 5;
      cards.NFORCE = cards.NIMPOS = 1;
      cards.TOL = 1e-10;  // forces are of the order of 10
      cards.commands = command_card(4, 1) + command_card(2, 1);
      deck.dyn2(cards);
      const DynamicResult result = run_dynamic(deck.text());
      const std::vector<Dyn2Row> rows = dyn2_rows(result.files.progress);
      ASSERT_EQ(rows.size(), 40U);
      for (const Dyn2Row& row : rows) EXPECT_EQ(row.iteration, 1) << "step " << row.step;
      EXPECT_EQ(result.formations, 1);
    }
  }
}

TEST(EffectiveLoad, IsTheUnbalanceAtIncrementZero) {
  for (const double AB : {0.0, 0.2}) {
    RowDeck deck = storeys();
    OpenMacro macro(deck, storey_DMASS);
    macro.begin(0.02, AB);
    State z{0.01, -0.02, 0.03, 0.004, 0.005, -0.006, 1e-3, 2e-3, -3e-3};
    put_state(z, 0.02);
    const Reals PN = equation_vector(arrays.PN);
    for (int e = 1; e <= sizes.NEQ; ++e) PN(e) = 5.0 * e;
    DYNINI();
    RDYNAM();
    EFFLOD();
    const Reals RU = equation_vector(arrays.RU);
    const std::vector<double> effective(RU.begin(), RU.end());
    clear_vector(arrays.DSTEP);
    RESPD1();
    UNBALN();
    for (int e = 1; e <= sizes.NEQ; ++e) {
      EXPECT_NEAR(RU(e), effective[static_cast<std::size_t>(e - 1)], 1e-12 * 500) << "equation " << e;
      EXPECT_GT(std::abs(RU(e)), 1.0);
    }
  }
}

TEST(LoadsAlone, AreFormedForEachStepWhileTheStructureStaysWhereItIs) {
  RowDeck deck = storeys();
  OpenMacro macro(deck, storey_DMASS);
  macro.begin(0.02, 0.1);
  const State z{0.01, -0.02, 0.03, 0.004, 0.005, -0.006, 1e-3, 2e-3, -3e-3};
  put_state(z, 0.02);
  macro.job.ISLULT = 1;
  const State before = get_state(0.02);
  const Energies energy = dynamics.energy;
  for (int n = 1; n <= 3; ++n) EXPECT_EQ(take_constant_step(macro.job), StepOutcome::accepted);
  EXPECT_EQ(get_state(0.02), before);
  EXPECT_NEAR(response.TIME, 0.06, 1e-16);
  EXPECT_EQ(dynamics.energy.elastic, energy.elastic);
  EXPECT_EQ(dynamics.energy.external, energy.external);
}

/// The same structure by the classical Runge-Kutta method at a step far below that of any run here.
std::vector<double> reference_displacements(double end) {
  const double k[3] = {900, 700, 500}, m[3] = {2, 1.5, 1}, beta = 0.006;
  const auto rate = [&](const std::vector<double>& y, double t) {
    std::vector<double> dy(6);
    double force[4] = {0, 0, 0, 0};  // of springs 1..3
    for (int i = 0; i < 3; ++i) {
      const auto s = static_cast<std::size_t>(i);
      const double stretch = y[s] - (i > 0 ? y[s - 1] : 0.0), speed = y[s + 3] - (i > 0 ? y[s + 2] : 0.0);
      force[i] = k[i] * (stretch + beta * speed);
    }
    for (int i = 0; i < 3; ++i) {
      const auto s = static_cast<std::size_t>(i);
      const double load = i == 2 ? 10.0 * std::sin(3.0 * t) : 0.0;
      dy[s] = y[s + 3];
      dy[s + 3] = (load - force[i] + force[i + 1]) / m[i] - storey_DMASS * y[s + 3];
    }
    return dy;
  };
  const int steps = 20000;
  const double h = end / steps;
  std::vector<double> y{0, 0, 0, 0, 0, 1.0};  // the roof is thrown too
  for (int n = 0; n < steps; ++n) {
    const auto moved = [&](const std::vector<double>& d, double part) {
      std::vector<double> z = y;
      for (std::size_t i = 0; i < 6; ++i) z[i] += part * h * d[i];
      return z;
    };
    const double t = n * h;
    const auto k1 = rate(y, t), k2 = rate(moved(k1, 0.5), t + 0.5 * h), k3 = rate(moved(k2, 0.5), t + 0.5 * h);
    const auto k4 = rate(moved(k3, 1.0), t + h);
    for (std::size_t i = 0; i < 6; ++i) y[i] += h / 6 * (k1[i] + 2 * k2[i] + 2 * k3[i] + k4[i]);
  }
  return {y[0], y[1], y[2]};
}

/// Error of the displacements at t = 2 with a step. The force is a table dense enough to be the sine; the accelerations
/// at the start are those of equilibrium.
double error_at_two(double DT, double ALPHA, const std::vector<double>& reference) {
  RowDeck deck = storeys();
  deck.NDFRC = 1;
  deck.forces = "    2\n\n 1801    0   0.00125        1.        0.\n2.09439510        0.       10.        0.\n";
  Dyn2Cards cards;
  cards.DT = DT;
  cards.ALPHA = ALPHA;
  cards.DMASS = storey_DMASS;
  cards.NSTEP = static_cast<int>(std::lround(2.0 / DT));
  cards.NFORCE = 1;
  cards.NINIT = 2;
  // a = -(DMASS v + forces of the spring of 500 with speed 1) / m: 0.006 * 500 = 3 on masses 1 and 1.5.
  cards.commands = initial_card(4, 1.0, -3.4) + initial_card(3, 0.0, 2.0) + command_card(4, 1);
  deck.dyn2(cards);
  const DynamicResult result = run_dynamic(deck.text());
  EXPECT_EQ(result.files.status, 0) << result.files.errors;
  double error = 0.0;
  for (std::size_t i = 0; i < 3; ++i) error = std::max(error, std::abs(result.U[i] - reference[i]));
  return error;
}

TEST(Order, IsTwoWithAndWithoutDissipationUnderAllKindsOfDamping) {
  const std::vector<double> reference = reference_displacements(2.0);
  for (const double ALPHA : {0.0, -0.1, -0.3}) {
    const double coarse = error_at_two(0.01, ALPHA, reference);
    const double middle = error_at_two(0.005, ALPHA, reference);
    const double fine = error_at_two(0.0025, ALPHA, reference);
    EXPECT_NEAR(coarse / middle, 4.0, 0.25) << ALPHA;
    EXPECT_NEAR(middle / fine, 4.0, 0.15) << ALPHA;
    EXPECT_LT(fine, 2e-4);
  }
}

TEST(Order, IsTwoForAMasslessNodeWithAndWithoutDamping) {
  // A massless node between springs of 600 and 400 in front of a mass of 1: the mass hangs on a spring of 240, or, with
  // damping in proportion to the springs, on one of 240 with the same proportion.
  for (const double BETAT : {0.0, 0.004}) {
    const double omega = std::sqrt(240.0), damping = 0.5 * BETAT * omega;
    const double turning = omega * std::sqrt(1.0 - damping * damping);
    const double exact = std::exp(-damping * omega) * std::sin(turning) / turning;  // at t = 1, thrown with velocity 1
    std::vector<double> errors;
    for (const double DT : {0.01, 0.005, 0.0025}) {
      RowDeck deck;
      deck.springs = {600, 400};
      deck.masses = {0, 1};
      deck.BETAT = BETAT;
      Dyn2Cards cards;
      cards.DT = DT;
      cards.ALPHA = -0.1;
      cards.NSTEP = static_cast<int>(std::lround(1.0 / DT));
      cards.NINIT = 2;
      cards.commands = initial_card(3, 1.0, -BETAT * 240.0) + initial_card(2, 0.4);
      deck.dyn2(cards);
      errors.push_back(std::abs(run_dynamic(deck.text()).U[1] - exact));
    }
    EXPECT_NEAR(errors[0] / errors[1], 4.0, 0.4) << BETAT;
    EXPECT_NEAR(errors[1] / errors[2], 4.0, 0.2) << BETAT;
  }
}

}  // namespace
}  // namespace tidearc::test
