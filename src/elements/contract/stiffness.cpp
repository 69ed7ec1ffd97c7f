// Element matrices for the assembly: delivery by difference, nodal axes, and what the record keeps.
#include "elements/contract/stiffness.h"

#include "run/views.h"

namespace tidearc {

namespace {

/// What the damping of the current group adds to its matrices: `initial` times the initial one, `tangent` times the
/// tangent one, from which the weight AB of the step's start is taken. Both are zero in a static analysis.
struct DampingFactors {
  double initial = 0.0;
  double tangent = 0.0;
};
DampingFactors damping_factors(int KFORM) {
  if (KFORM < 1) return {};
  return {group.BETAO * integration.A2, group.BETAT * integration.A2 - integration.AB};
}

}  // namespace

void deliver_change(int ND, bool reset, double* EMAT, double* delivered) {
  const RealTable K(EMAT, ND, ND);
  for (int i = 1; i <= ND; ++i) {
    for (int j = i; j <= ND; ++j) {
      const double now = K(i, j);
      const double change = reset ? now : now - *delivered;
      K(i, j) = change;
      K(j, i) = change;
      *delivered++ = now;
    }
  }
}

void turn_matrix(const int* LM, int ND, double* EMAT) {
  const RealTable K(EMAT, ND, ND);
  for_each_turned_triple(LM, ND, [&](int node, int first) {
    for (int j = 1; j <= ND; ++j) to_local(node, &K(first + 1, j));
    for (int i = 1; i <= ND; ++i) {
      double row[3] = {K(i, first + 1), K(i, first + 2), K(i, first + 3)};
      to_local(node, row);
      for (int k = 0; k < 3; ++k) K(i, first + 1 + k) = row[k];
    }
  });
}

void unpack_matrix(int ND, double* EMAT) {
  // Taken from the last to the first, each entry goes to its place below the diagonal, which never stands before the
  // packed one, so that no entry is lost.
  const RealTable K(EMAT, ND, ND);
  const double* packed = EMAT + ND * (ND + 1) / 2;
  for (int i = ND; i >= 1; --i) {
    for (int j = ND; j >= i; --j) K(j, i) = *--packed;
  }
  for (int i = 1; i <= ND; ++i) {
    for (int j = i + 1; j <= ND; ++j) K(i, j) = K(j, i);
  }
}

MatrixForm form_current_matrix(const ElementType& type, Word* record, int KFORM, bool reset) {
  load_record(record);
  const DampingFactors factors = damping_factors(KFORM);
  MatrixForm form = type.operations.stiffness(KFORM, factors.initial, factors.tangent, reset);
  copy_words(record + group.LFIX, record_words() + group.LFIX, group.LTAN + group.LAUX);
  put_stiffness_words(type, stiffness_words(type, record_words()), record);

  int* LM = location_vector();
  if (sizes.NCSYS >= 1) {
    if (form == MatrixForm::packed) unpack_matrix(group.NDOF, element.EMAT.data());
    form = MatrixForm::full;
    turn_matrix(LM, group.NDOF, element.EMAT.data());
  }
  for (int i = 0; i < group.NDOF; ++i) LM[i] = LM[i] < 1 ? 0 : equation_at(LM[i]);
  return form;
}

}  // namespace tidearc
