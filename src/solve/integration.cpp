// The constants of the implicit time integration: computed once a macro, rescaled when its step changes.
#include "solve/integration.h"

#include "run/layout.h"
#include "run/units.h"

namespace tidearc {

namespace {

void compute_constants() {
  IntegrationBlock& c = integration;
  c.GAMMA = c.AB + 0.5;
  if (c.BETA == 0.0) c.BETA = (1.0 + c.AB) * (1.0 + c.AB) * 0.25;
  c.A1 = 1.0 / (c.BETA * c.DT);
  c.A0 = c.A1 / c.DT;
  c.A2 = c.GAMMA * c.A1;
  c.A3 = 0.5 / c.BETA - 1.0;
  c.A4 = c.GAMMA / c.BETA - 1.0;
  c.A5 = (0.5 * c.GAMMA / c.BETA - 1.0) * c.DT;
}

/// Each constant by the power of the ratio that its dimension needs; A3 and A4 have none.
void rescale_constants(double ratio) {
  IntegrationBlock& c = integration;
  c.A0 *= ratio * ratio;
  c.A1 *= ratio;
  c.A2 *= ratio;
  c.A5 /= ratio;
}

}  // namespace

void INTCON(Constants how, double old_step) {
  if (how == Constants::rescaled) {
    rescale_constants(old_step / integration.DT);
    return;
  }
  compute_constants();
  integration.DTK = 0.0;
  integration.NEWCON = 0;
  write(units.NDOUT, "/,5X,'INTEGRATION PARAMETER, ALPHA ................... =',F10.5", 0.0 - integration.AB);
  write(units.NDOUT, "5X,'INTEGRATION PARAMETER, BETA .................... =',F10.5", integration.BETA);
}

}  // namespace tidearc
