// Resisting, damping and dynamic forces of the truss, its matrix, and its event: the operations around the kernels.
#include <cmath>
#include <cstddef>

#include "elements/contract/group.h"
#include "elements/contract/stiffness.h"
#include "elements/truss/branch.h"
#include "elements/truss/curve.h"
#include "elements/truss/event.h"
#include "elements/truss/geometry.h"
#include "elements/truss/matrix.h"
#include "elements/truss/operations.h"
#include "elements/truss/pressure.h"
#include "elements/truss/sea.h"
#include "run/layout.h"
#include "solve/integration.h"

namespace tidearc {

namespace {

double tangent(const TrussRecord& truss) {
  if (truss.KYLD >= truss_curve) return curve_slope(truss.CURVE, truss.KYLD) * (truss.SK1 + truss.SK2);
  return branch_tangent(truss.KYLD, truss.SK1, truss.SK2);
}

/// Initial stiffness, as damping takes it. Of a failing element nothing else is left than the slope along which its
/// force goes; its sign is that of the motion, and a damping force that took it over would drive the element.
double initial_stiffness(const TrussRecord& truss) {
  return truss.KFAIL != 0 ? std::abs(truss.SK2) : truss.SK1 + truss.SK2;
}

/// The product of stiffness-proportional damping, initial and tangent.
double damping(const TrussRecord& truss) {
  return combined_stiffness(group.BETAO, initial_stiffness(truss), group.BETAT, tangent(truss));
}

/// The course of the ends under EDISP.
EndMotion course(const TrussRecord& truss) {
  const std::span<const double, 6> u(element.EDISP.data(), 6);
  return end_motion(truss.XI, truss.XJ, u.first<3>(), u.last<3>());
}

/// Extension that EDISP would add, without moving the element.
double extension_increment(const TrussRecord& truss) {
  if (truss.KGEOM == 0) return extension(truss.DIR, element.EDISP.data());
  double xI[3], xJ[3];
  for (std::size_t i = 0; i < 3; ++i) {
    xI[i] = truss.XI[i] + element.EDISP[i];
    xJ[i] = truss.XJ[i] + element.EDISP[i + 3];
  }
  return truss_geometry(xI, xJ).length - truss.XL;
}

void print_trouble(const TrussRecord& truss, double dE, const EventTrouble& trouble) {
  write(units.NDOUT, "' EVNT01-CRCO/DV,DVC,CT,DST,DTC,CRFAC',7E13.5", trouble.fraction, dE, trouble.bound, truss.F1,
        truss.SK1, trouble.overshoot, ONE);
}

/// Event by the law of the element, for its extension increment.
ElementEvent law_event(const TrussRecord& truss, double dE) {
  if (truss.KYLD >= truss_curve) return curve_event(truss.CURVE, truss.DY, truss.EXT, dE, truss.OVTOL[0]);
  const BranchLaw law{truss.SK1, truss.SK2, truss.FYT, truss.FYC, truss.KBUCK};
  const BranchState state{truss.F1, truss.F2, truss.PLPOS, truss.PLNEG, truss.PLBUCK, truss.KYLD};
  EventTrouble trouble;
  const ElementEvent event = branch_event(law, state, dE, truss.OVTOL, trouble);
  if (trouble.found) print_trouble(truss, dE, trouble);
  return event;
}

}  // namespace

void RESP01() {
  const TrussRecord& truss = current_record<TrussRecord>();
  const double N = truss.F1 + truss.F2;
  const double D = group_damps() ? damping(truss) * extension(truss.DIR, element.EVEL.data()) : 0.0;
  for (std::size_t i = 0; i < truss_freedoms; ++i) {
    element.ERES[i] = N * truss.DIR[i];
    element.EDAMP[i] = D * truss.DIR[i];
  }
}

void DYNF01(double c1, double c2) {
  const TrussRecord& truss = current_record<TrussRecord>();
  const double v = extension(truss.DIR, element.EVEL.data());
  const double a = extension(truss.DIR, element.EACC.data());
  const double force = damping(truss) * ((1.0 + c1) * v + c2 * a);
  for (std::size_t i = 0; i < truss_freedoms; ++i) element.EDYNF[i] = force * truss.DIR[i];
}

MatrixForm STIF01(int KFORM, double c1, double c2, bool reset) {
  TrussRecord& truss = current_record<TrussRecord>();
  const double Kt = tangent(truss);
  const double K = KFORM >= 1 ? combined_stiffness(c1, initial_stiffness(truss), 1.0 + c2, Kt) : Kt;
  const std::span<double, 36> EMAT(element.EMAT.data(), 36);
  axial_matrix(K, truss.DIR, EMAT);
  // Damping has no part in what follows, the weight of the step's end in a dynamic analysis has.
  const double weight = KFORM >= 1 ? 1.0 - integration.AB : 1.0;
  if (truss.KGEOM != 0 && truss.XL > 0.0) {
    const double N = truss.F1 + truss.F2 + (1.0 - 2.0 * truss.PNU) * mean_end_pressure(truss);
    add_geometric_matrix(weight * N / truss.XL, truss.DIR, EMAT);
  }
  const WaterPlane plane = water_plane(truss);
  if (plane.stiffness != 0.0) EMAT[7 * plane.freedom] += weight * plane.stiffness;
  deliver_change(truss_freedoms, reset, EMAT.data(), truss.tangent);
  truss.head.KSTIF = 0;
  truss.KLAST = truss.KYLD;
  return MatrixForm::full;
}

ElementEvent EVNT01() {
  const TrussRecord& truss = current_record<TrussRecord>();
  const double dE = extension_increment(truss);
  const ElementEvent event = law_event(truss, dE);
  return truss.KGEOM == 0 ? event : event_on_course(event, dE, course(truss));
}

}  // namespace tidearc
