// Constant steps against figures computed by hand and by independent programs, with all their digits.
//
// The figures of rows with several masses come from a direct evaluation of the scheme's equations with dense matrices
// (an independent program in extended precision), rounded to the digits that stand here.
#include <gtest/gtest.h>

#include <cmath>

#include "dynamic_run.h"
#include "row_deck.h"

namespace tidearc::test {
namespace {

/// Half a unit of the tenth digit, and of the digits that a figure has.
void expect_digits(double value, double expected, int digits = 10) {
  const double unit = std::pow(10.0, std::floor(std::log10(std::abs(expected))) + 1 - digits);
  EXPECT_NEAR(value, expected, 0.5001 * unit + 1e-16) << digits << " digits";
}

DynamicResult run_row(RowDeck deck, Dyn2Cards cards) {
  deck.dyn2(cards);
  DynamicResult result = run_dynamic(deck.text());
  EXPECT_EQ(result.files.status, 0) << result.files.errors;
  return result;
}

Dyn2Cards thrown(double DT, double ALPHA, int NSTEP) {
  Dyn2Cards cards;
  cards.DT = DT;
  cards.ALPHA = ALPHA;
  cards.NSTEP = NSTEP;
  cards.NINIT = 1;
  cards.commands = initial_card(2, 1.0);
  return cards;
}

TEST(OneMass, ThrownWithoutDissipationFollowsTheClosedFormOfTheScheme) {
  const double theta = 2.0 * std::atan(0.1);  // u_n = sin(n theta) / 10
  for (const int n : {1, 2, 10, 50}) {
    const DynamicResult result = run_row(one_mass(400, 4), thrown(0.02, 0.0, n));
    EXPECT_NEAR(result.U[0], std::sin(n * theta) / 10, 1e-14);
    EXPECT_NEAR(result.energy.kinetic + result.energy.elastic, 2.0, 1e-13);
    EXPECT_NEAR(result.energy.external, 2.0, 1e-15);
    EXPECT_EQ(result.diagonal, 40400.0) << "EA/L + A0 M";
    EXPECT_EQ(result.formations, 1);
  }
  expect_digits(run_row(one_mass(400, 4), thrown(0.02, 0.0, 1)).U[0], 0.0198019802, 9);
  expect_digits(run_row(one_mass(400, 4), thrown(0.02, 0.0, 2)).U[0], 0.0388197236, 9);
  expect_digits(run_row(one_mass(400, 4), thrown(0.02, 0.0, 10)).U[0], 0.0912035224, 9);
  expect_digits(run_row(one_mass(400, 4), thrown(0.02, 0.0, 50)).U[0], -0.0515925156, 9);
}

TEST(OneMass, EachStepKeepsTheEnergyOfTheThrow) {
  const DynamicResult result = run_row(one_mass(400, 4), thrown(0.02, 0.0, 50));
  const std::vector<Dyn2Row> rows = dyn2_rows(result.files.progress);
  ASSERT_EQ(rows.size(), 50U);
  for (const Dyn2Row& row : rows) {
    EXPECT_EQ(row.external, 2.0);
    EXPECT_NEAR(row.unbalance_energy, 0.0, 1e-13);
  }
}

TEST(OneMass, ThrownWithDissipationFollowsTheTable) {
  const RowDeck deck = one_mass(40, 1);
  const DynamicResult one = run_row(deck, thrown(0.05, -0.1, 1));
  expect_digits(one.U[0], 0.04867482781);
  expect_digits(one.VEL[0], 0.947431186, 9);
  expect_digits(one.ACC[0], -1.752293801);
  const DynamicResult two = run_row(deck, thrown(0.05, -0.1, 2));
  expect_digits(two.U[0], 0.09251522373);
  expect_digits(two.VEL[0], 0.806627889, 9);
  expect_digits(two.ACC[0], -3.525247365);
  expect_digits(run_row(deck, thrown(0.05, -0.1, 20)).U[0], -0.003578502531);
  const DynamicResult last = run_row(deck, thrown(0.05, -0.1, 200));
  expect_digits(last.U[0], -0.03569773026);
  expect_digits(last.energy.kinetic, 0.45226824, 8);
  expect_digits(last.energy.elastic, 0.025486559, 8);
  expect_digits(last.energy.unbalance(), 0.0222452, 6);
}

/// Masses 2 and 1 on springs of 600 and 400.
RowDeck two_masses() {
  RowDeck deck;
  deck.springs = {600, 400};
  deck.masses = {2, 1};
  return deck;
}

RowDeck damped_and_shaken() {
  RowDeck deck = two_masses();
  deck.BETAO = 0.001;
  deck.BETAT = 0.002;
  deck.NDFRC = 1;
  deck.forces = sine_record(10.0, 0.02, 102);
  return deck;
}
Dyn2Cards shaken(double ALPHA, int NSTEP) {
  Dyn2Cards cards;
  cards.DT = 0.02;
  cards.ALPHA = ALPHA;
  cards.DMASS = 0.3;
  cards.NSTEP = NSTEP;
  cards.NFORCE = 1;
  cards.commands = command_card(3, 1);
  return cards;
}

TEST(TwoMasses, WithAllKindsOfDampingAndDissipationFollowTheTable) {
  const RowDeck deck = damped_and_shaken();
  const DynamicResult one = run_row(deck, shaken(-0.1, 1));
  expect_digits(one.U[0], 3.467804336E-6);
  expect_digits(one.U[1], 1.287622794E-4);
  // A wrong weight of damping shows here: 7.15736E-4 with the velocity at the end of the step, 7.16982E-4 with the
  // weight of the other forces.
  const DynamicResult two = run_row(deck, shaken(-0.1, 2));
  expect_digits(two.U[0], 2.958265412E-5);
  expect_digits(two.U[1], 7.160858330E-4);
  const DynamicResult ten = run_row(deck, shaken(-0.1, 10));
  expect_digits(ten.U[0], 1.276096434E-2);
  expect_digits(ten.U[1], 3.739252805E-2);
  const DynamicResult last = run_row(deck, shaken(-0.1, 100));
  expect_digits(last.U[0], -1.702209219E-3);
  expect_digits(last.U[1], -3.434256323E-3);
  expect_digits(last.energy.external, 0.21324332, 8);
  expect_digits(last.energy.kinetic, 0.024488473, 8);
  expect_digits(last.energy.elastic, 0.0014692523, 8);
  expect_digits(last.energy.viscous, 0.18656232, 8);
  expect_digits(last.energy.unbalance(), 7.2328E-4, 5);
}

TEST(TwoMasses, WithoutDissipationTheEnergiesBalance) {
  const DynamicResult last = run_row(damped_and_shaken(), shaken(0.0, 100));
  expect_digits(last.U[0], -1.946676508E-3);
  expect_digits(last.U[1], -3.767714821E-3);
  EXPECT_LT(std::abs(last.energy.unbalance()), 1e-14);
}

TEST(TwoMasses, UnderGroundAccelerationFollowTheTable) {
  RowDeck deck = two_masses();
  deck.NGACC = 1;
  deck.ground = table_record({{0.0, 1.0}, {100.0, 1.0}}, false);
  Dyn2Cards cards;
  cards.DT = 0.02;
  cards.KGRND = 1;
  cards.commands = ground_card(1);
  const DynamicResult one = run_row(deck, cards);
  expect_digits(one.U[0], -9.714076246E-5);
  expect_digits(one.U[1], -9.989002933E-5);
  cards.NSTEP = 100;
  const DynamicResult last = run_row(deck, cards);
  expect_digits(last.U[0], -6.44363746E-4, 9);
  expect_digits(last.U[1], 5.61033693E-4, 9);
  // The acceleration of the cards is 0 at the start, where the load is not: that costs energy once.
  for (const Dyn2Row& row : dyn2_rows(last.files.progress)) EXPECT_EQ(row.unbalance_energy, 1.47e-4);
  expect_digits(last.energy.unbalance(), 1.47085777E-4, 9);
  cards.NINIT = 2;
  cards.commands = initial_card(2, 0.0, -1.0) + initial_card(3, 0.0, -1.0) + ground_card(1);
  EXPECT_NEAR(run_row(deck, cards).energy.unbalance(), 0.0, 1e-15);
}

TEST(TwoMasses, OnAMovingSupportFollowTheTable) {
  RowDeck deck = two_masses();
  deck.BETAO = 0.01;
  deck.NIDSP = 1;
  deck.displacements = table_record({{0.0, 0.0}, {10.0, 1.0}}, true);
  Dyn2Cards cards;
  cards.DT = 0.05;
  cards.NIMPOS = 1;
  cards.commands = command_card(2, 1);
  expect_digits(run_row(deck, cards).U[1], 0.001111111111);
  cards.NSTEP = 2;
  expect_digits(run_row(deck, cards).U[1], 0.00549382716, 9);
  cards.NSTEP = 20;
  const DynamicResult last = run_row(deck, cards);
  expect_digits(last.U[1], 0.1004183842);
  EXPECT_NEAR(last.U[0], 0.1, 1e-15);
  EXPECT_NEAR(last.VEL[0], 0.1, 1e-14);
  EXPECT_EQ(last.ACC[0], 0.0);
  expect_digits(last.energy.external, 3.0664016, 8);
  expect_digits(last.energy.kinetic, 0.0031217329, 8);
  expect_digits(last.energy.elastic, 3.000035, 7);
  expect_digits(last.energy.viscous, 0.063244819, 8);
  EXPECT_NEAR(last.energy.unbalance(), 0.0, 1e-14);
}

TEST(MasslessNode, BetweenTwoSpringsFollowsTheTable) {
  RowDeck deck;
  deck.springs = {600, 400};
  deck.masses = {0, 1};
  Dyn2Cards cards;
  cards.DT = 0.02;
  cards.NINIT = 1;
  cards.commands = initial_card(3, 1.0);
  const DynamicResult one = run_row(deck, cards);
  EXPECT_NEAR(one.U[0], 0.0078125, 1e-15);
  EXPECT_NEAR(one.U[1], 0.01953125, 1e-15);
  EXPECT_NEAR(one.VEL[0], 0.390625, 1e-14);
  cards.NSTEP = 40;
  const DynamicResult last = run_row(deck, cards);
  expect_digits(last.U[0], -0.006901123548);
  expect_digits(last.U[1], -0.01725280887);
  expect_digits(last.VEL[0], 0.3602391967);
  expect_digits(last.ACC[0], 3.306072066);
}

/// A spring of 100 that yields at 1.0 and hardens by a tenth, mass 1, under a force of 1.5 from the start.
TEST(YieldingSpring, WithIterationsFollowsTheEventToEventTable) {
  RowDeck deck = one_mass(100, 1);
  deck.ratio = 0.1;
  deck.yield = 0.01;  // stress: 1.0 over an area of 100
  deck.NDFRC = 1;
  deck.forces = table_record({{0.0, 1.5}, {100.0, 1.5}}, true);
  Dyn2Cards cards;
  cards.DT = 0.1;
  cards.NFORCE = 1;
  cards.MAXIT = 5;
  cards.KISTF = 1;
  cards.KISTA = 5;
  cards.KTERM = 1;
  cards.TOL = 1e-11;
  cards.commands = command_card(2, 1);
  cards.NSTEP = 1;
  EXPECT_NEAR(run_row(deck, cards).U[0], 0.003, 1e-15);
  cards.NSTEP = 2;
  const DynamicResult two = run_row(deck, cards);
  expect_digits(two.U[0], 0.013170732, 8);
  expect_digits(two.VEL[0], 0.143414634, 9);
  expect_digits(two.ACC[0], 0.468292683, 9);
  expect_digits(two.R[0], 1.031707317);
  cards.NSTEP = 3;
  expect_digits(run_row(deck, cards).U[0], 0.029446758, 8);
  cards.NSTEP = 10;
  const DynamicResult last = run_row(deck, cards);
  expect_digits(last.U[0], 0.124580856, 9);
  expect_digits(last.VEL[0], -0.028119223, 8);
  expect_digits(last.R[0], 2.145808565);
  expect_digits(last.energy.unbalance(), 0.00225, 6);
}

}  // namespace
}  // namespace tidearc::test
