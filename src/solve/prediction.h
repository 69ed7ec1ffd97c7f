// Convergence prediction: how many iterations are still needed, from the last two unbalances.
#pragma once

#include <type_traits>

namespace tidearc {

/// Memory of the prediction within one step.
struct PredictionBlock {
  double PR = 0.0;  ///< last unbalance                    [force]
  double PW = 0.0;  ///< sum of weights                    [-]
  double PA = 0.0;  ///< weighted sum of ratios            [-]
  double PC = 0.0;  ///< current weight                    [-]
  double PB = 0.0;  ///< average ratio; kept, decides nothing  [-]
  int KPFLAG = 0;   ///< 1: non-convergence is predicted
};
inline PredictionBlock prediction;
static_assert(std::is_trivially_copyable_v<PredictionBlock>);

struct PredictionRules {
  int MAXIT;     ///< most iterations of a step
  int KPRED;     ///< iteration at which prediction begins, 0 none
  double WPRED;  ///< weighting factor
  double GRACE;  ///< grace ratio
};

/// Begins the memory of a step with the unbalance R after its first iteration, whether that converged or not.
void begin_prediction(double R, int MAXIT);

/// After iteration NI with unbalance R above TOL: true when non-convergence is predicted. Prints its estimate. Each
/// iteration predicts by itself; one behind a step that could not be made smaller may find that it converges after all.
bool predict_nonconvergence(int NI, double R, double TOL, const PredictionRules& rules);

}  // namespace tidearc
