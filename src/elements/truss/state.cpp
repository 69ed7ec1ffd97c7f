// State determination of the truss.
#include <cmath>

#include "elements/contract/group.h"
#include "elements/contract/state_log.h"
#include "elements/truss/branch.h"
#include "elements/truss/curve.h"
#include "elements/truss/geometry.h"
#include "elements/truss/operations.h"
#include "elements/truss/pressure.h"
#include "elements/truss/sea.h"
#include "solve/arrays.h"

namespace tidearc {

namespace {

/// Moves the ends of an element that follows its nodes; returns its change of length. Ends that meet keep the
/// direction.
double move_ends(TrussRecord& truss) {
  for (std::size_t i = 0; i < 3; ++i) {
    truss.XI[i] += element.EDISP[i];
    truss.XJ[i] += element.EDISP[i + 3];
  }
  const TrussGeometry geometry = truss_geometry(truss.XI, truss.XJ);
  const double dE = geometry.length - truss.XL;
  truss.XL = geometry.length;
  if (geometry.length == 0.0) return dE;
  for (std::size_t i = 0; i < 6; ++i) truss.DIR[i] = geometry.DIR[i];
  wave_axes(std::span<const double, 3>(truss.DIR + 3, 3), truss.ROT);
  return dE;
}

void follow_curve(TrussRecord& truss, double dE) {
  const CurvePoint point = walk_curve(truss.CURVE, (truss.EXT + dE) / truss.DY);
  truss.KYLD = point.code;
  truss.F1 = 0.0;
  truss.F2 = truss.FCURVE * point.value;
}

void follow_branches(TrussRecord& truss, double dE) {
  const BranchLaw law{truss.SK1, truss.SK2, truss.FYT, truss.FYC, truss.KBUCK};
  BranchState state{truss.F1, truss.F2, truss.PLPOS, truss.PLNEG, truss.PLBUCK, truss.KYLD};
  walk_branches(law, dE, state);
  truss.F1 = state.F1;
  truss.F2 = state.F2;
  truss.PLPOS = state.PLPOS;
  truss.PLNEG = state.PLNEG;
  truss.PLBUCK = state.PLBUCK;
  truss.KYLD = state.code;
}

void follow_failure(TrussRecord& truss, double dE) {
  FailingState state{truss.F1, truss.SK2, truss.KYLD};
  walk_failed(dE, state);
  truss.F1 = state.F1;
  truss.SK2 = state.SK2;
  truss.KYLD = state.code;
}

void follow_law(TrussRecord& truss, double dE) {
  if (truss.KFAIL != 0) {
    follow_failure(truss, dE);
  } else if (truss.KBUCK == law_curve) {
    follow_curve(truss, dE);
  } else {
    follow_branches(truss, dE);
  }
}

void raise(double value, double& largest, double& time) {
  if (value > largest) {
    largest = value;
    time = element.TIME;
  }
}

void lower(double value, double& smallest, double& time) {
  if (value < smallest) {
    smallest = value;
    time = element.TIME;
  }
}

void update_envelope(TrussRecord& truss) {
  raise(truss.FREP, truss.FMAX, truss.TFMAX);
  lower(truss.FREP, truss.FMIN, truss.TFMIN);
  raise(truss.EXT, truss.EXTMAX, truss.TEMAX);
  lower(truss.EXT, truss.EXTMIN, truss.TEMIN);
}

void fail_if_stretched_too_far(TrussRecord& truss, double dE) {
  if (truss.KFAIL != 0 || truss.DUCTL == 0.0) return;
  if (!(truss.EXTMAX > truss.DUCTL || -truss.EXTMIN > truss.DUCTL)) return;
  const FailingState begun = begin_failure(truss.F1, truss.F2, truss.SK1, truss.SK2, dE);
  truss.KFAIL = 1;
  truss.SK1 = 0.0;
  truss.F2 = 0.0;
  truss.F1 = begun.F1;
  truss.SK2 = begun.SK2;
  truss.KYLD = begun.code;
}

void log_change(const TrussRecord& truss) {
  const double area = truss.section.area;
  log_state_change({1, truss.head.number, truss.NODEI, truss.NODEJ, truss.KYLD, element.IGRP, response.NLSTEP, 0,
                    element.TIME, truss.FREP, truss.FREP, truss.EXT, truss.EXT, truss.PLPOS, truss.PLNEG,
                    area == 0.0 ? 0.0 : truss.FREP / area});
}

}  // namespace

void SDET01() {
  TrussRecord& truss = current_record<TrussRecord>();
  for (std::size_t i = 0; i < 6; ++i) truss.UE[i] += element.EDISP[i];
  const double dE = truss.KGEOM == 0 ? extension(truss.DIR, element.EDISP.data()) : move_ends(truss);
  const int code = truss.KYLD;
  follow_law(truss, dE);
  truss.EXT += dE;
  truss.FREP =
      truss.F1 + truss.F2 - axial_part_of_sea(truss) - 2.0 * fluid_factor * truss.PNU * mean_end_pressure(truss);
  update_envelope(truss);
  fail_if_stretched_too_far(truss, dE);
  if (truss.KYLD != code) log_change(truss);
  truss.head.KSTIF = truss.KYLD == truss.KLAST && truss.KGEOM == 0 ? 0 : 1;
}

void RENV01() {
  TrussRecord& truss = current_record<TrussRecord>();
  truss.FMAX = truss.FMIN = truss.FREP;
  truss.EXTMAX = truss.EXTMIN = truss.EXT;
  truss.TFMAX = truss.TFMIN = truss.TEMAX = truss.TEMIN = element.TIME;
}

}  // namespace tidearc
