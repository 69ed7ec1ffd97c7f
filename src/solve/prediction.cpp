// Convergence prediction: a linear estimate of the iterations that are left.
#include "solve/prediction.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "run/layout.h"
#include "run/units.h"

namespace tidearc {

namespace {

/// trunc((R - TOL) / (Rold - R)), held inside the integers (an unbalance that barely moves asks for more than fit).
int linear_estimate(double R, double Rold, double TOL) {
  const double n = std::trunc((R - TOL) / (Rold - R));
  const double most = std::numeric_limits<int>::max() / 4;
  return std::isnan(n) ? static_cast<int>(most) : static_cast<int>(std::clamp(n, -most, most));
}

void print_diverging() { write(units.NDOUT, "5X,'CONVERGENCE PREDICTION - SOLUTION IS DIVERGING',/"); }

}  // namespace

void begin_prediction(double R, int MAXIT) {
  prediction = {.PR = R, .PW = 1.0, .PA = 0.0, .PC = 1.0, .PB = 0.0, .KPFLAG = MAXIT == 1 ? 1 : 0};
}

bool predict_nonconvergence(int NI, double R, double TOL, const PredictionRules& rules) {
  PredictionBlock& p = prediction;
  if (NI == 1) return p.KPFLAG == 1;
  p.KPFLAG = 0;  // a prediction has been acted upon: where no smaller step was left, the step has gone on
  if (rules.KPRED == 0) {
    p.KPFLAG = NI >= rules.MAXIT ? 1 : 0;
    return p.KPFLAG == 1;
  }
  const double Rold = p.PR;
  p.PR = R;
  if (!(Rold > R)) {
    print_diverging();
    if (NI >= rules.KPRED) p.KPFLAG = 1;
    return p.KPFLAG == 1;
  }
  p.PA += R / Rold * p.PC;
  p.PB = p.PA / p.PW;
  const int n = linear_estimate(R, Rold, TOL);
  p.PC = std::pow(rules.WPRED, NI - 1);
  p.PW += p.PC;
  const int m = n + 1;
  if (m > 0) {
    write(units.NDOUT, "5X,'CONVERGENCE PREDICTION - ',I4,' MORE ITERATIONS TO CONVERGE'", m);
  } else {
    print_diverging();
  }
  if (NI < rules.KPRED) return false;
  const bool too_late = NI + m > rules.MAXIT && m > std::trunc(NI * rules.GRACE);
  if (m < 0 || too_late) p.KPFLAG = 1;
  return p.KPFLAG == 1;
}

}  // namespace tidearc
