// The integration constants. Numbers are those of the formulas worked by hand.
#include "solve/integration.h"

#include <gtest/gtest.h>

#include <string>

#include "run/units.h"
#include "support/scratch.h"

namespace tidearc {
namespace {

class IntegrationConstants : public testing::Test {
 protected:
  void SetUp() override { integration = {}; }
  void TearDown() override { integration = {}; }
  static void compute(double DT, double AB, double BETA) {
    integration.DT = DT;
    integration.AB = AB;
    integration.BETA = BETA;
    INTCON(Constants::computed);
  }
  test::Scratch scratch_{""};
};

// GAMMA 1/2, BETA 1/4, DT 0.02: 4/DT^2, 4/DT, 2/DT, 1, 1, 0.
TEST_F(IntegrationConstants, WithoutDissipationAreThoseOfTheTrapezoidalRule) {
  compute(0.02, 0.0, 0.0);
  EXPECT_EQ(integration.GAMMA, 0.5);
  EXPECT_EQ(integration.BETA, 0.25);
  EXPECT_DOUBLE_EQ(integration.A0, 10000.0);
  EXPECT_DOUBLE_EQ(integration.A1, 200.0);
  EXPECT_DOUBLE_EQ(integration.A2, 100.0);
  EXPECT_EQ(integration.A3, 1.0);
  EXPECT_EQ(integration.A4, 1.0);
  EXPECT_EQ(integration.A5, 0.0);
}

// AB 0.1: GAMMA 0.6, BETA 0.3025; DT 0.05.
TEST_F(IntegrationConstants, WithDissipationTakeTheBetaThatBelongsToIt) {
  compute(0.05, 0.1, 0.0);
  EXPECT_DOUBLE_EQ(integration.GAMMA, 0.6);
  EXPECT_NEAR(integration.BETA, 0.3025, 1e-16);
  EXPECT_NEAR(integration.A0, 1.0 / (0.3025 * 0.0025), 1e-10);
  EXPECT_NEAR(integration.A1, 66.1157024793388, 1e-11);
  EXPECT_NEAR(integration.A2, 39.6694214876033, 1e-11);
  EXPECT_NEAR(integration.A3, 0.652892561983471, 1e-14);
  EXPECT_NEAR(integration.A4, 0.983471074380165, 1e-14);
  EXPECT_NEAR(integration.A5, -0.05 * 0.00826446280991736, 1e-16);
}

TEST_F(IntegrationConstants, KeepABetaThatIsGiven) {
  compute(0.5, 0.0, 0.125);
  EXPECT_EQ(integration.BETA, 0.125);
  EXPECT_DOUBLE_EQ(integration.A0, 32.0);
  EXPECT_DOUBLE_EQ(integration.A1, 16.0);
  EXPECT_DOUBLE_EQ(integration.A2, 8.0);
  EXPECT_DOUBLE_EQ(integration.A3, 3.0);
  EXPECT_DOUBLE_EQ(integration.A4, 3.0);
  EXPECT_DOUBLE_EQ(integration.A5, 0.5);
}

TEST_F(IntegrationConstants, TellAlphaAndBetaInForce) {
  compute(0.5, 0.1, 0.0);
  const std::string report = scratch_.report();
  EXPECT_NE(report.find("     INTEGRATION PARAMETER, ALPHA ................... =  -0.10000\n"), std::string::npos)
      << report;
  EXPECT_NE(report.find("     INTEGRATION PARAMETER, BETA .................... =   0.30250\n"), std::string::npos)
      << report;
  compute(0.5, 0.0, 0.0);
  EXPECT_NE(scratch_.report().find("ALPHA ................... =   0.00000\n"), std::string::npos) << "without a sign";
}

// Each scales with the power of 1/DT in its dimension: A0 with two, A1 and A2 with one, A5 with minus one.
TEST_F(IntegrationConstants, RescaledAreThoseOfTheNewStep) {
  for (const double factor : {0.5, 2.0, 0.37, 1.9}) {
    compute(0.04, 0.2, 0.0);
    const IntegrationBlock before = integration;
    integration.DT = 0.04 * factor;
    INTCON(Constants::rescaled, 0.04);
    const IntegrationBlock rescaled = integration;
    EXPECT_EQ(rescaled.A3, before.A3) << "no dimension";
    EXPECT_EQ(rescaled.A4, before.A4) << "no dimension";
    EXPECT_EQ(rescaled.BETA, before.BETA);
    compute(0.04 * factor, 0.2, 0.0);
    // Four roundings at most between the two ways.
    EXPECT_NEAR(rescaled.A0 / integration.A0, 1.0, 1e-15);
    EXPECT_NEAR(rescaled.A1 / integration.A1, 1.0, 1e-15);
    EXPECT_NEAR(rescaled.A2 / integration.A2, 1.0, 1e-15);
    EXPECT_NEAR(rescaled.A5 / integration.A5, 1.0, 1e-15);
    EXPECT_NEAR(rescaled.A0 / before.A0, 1.0 / (factor * factor), 1e-14);
    EXPECT_NEAR(rescaled.A5 / before.A5, factor, 1e-14);
  }
}

TEST_F(IntegrationConstants, RescalingPrintsNothingAndKeepsWhatTheMatrixWasFormedWith) {
  compute(0.04, 0.2, 0.0);
  integration.DTK = 0.04;
  integration.NEWCON = 1;
  const std::string report = scratch_.report();
  integration.DT = 0.02;
  INTCON(Constants::rescaled, 0.04);
  EXPECT_EQ(scratch_.report(), report);
  EXPECT_EQ(integration.DTK, 0.04);
  EXPECT_EQ(integration.NEWCON, 1);
  compute(0.04, 0.2, 0.0);
  EXPECT_EQ(integration.DTK, 0.0) << "computed anew they are not those of the matrix";
  EXPECT_EQ(integration.NEWCON, 0);
}

// C = 0.4 M: A0 + 0.4 A2 = 10000 + 40.
TEST_F(IntegrationConstants, MakeTheFactorOfTheMasses) {
  compute(0.02, 0.0, 0.0);
  EXPECT_DOUBLE_EQ(mass_coefficient(), 10000.0);
  integration.DMASS = 0.4;
  EXPECT_DOUBLE_EQ(mass_coefficient(), 10040.0);
}

}  // namespace
}  // namespace tidearc
