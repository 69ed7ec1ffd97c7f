// Element matrices for the assembly: which elements are formed, in which form they are delivered, what they keep.
//
// The assembled matrix is not cleared between ordinary updates. An element therefore delivers the change of its matrix
// since its last delivery, and keeps in the tail of its record what it has delivered.
#pragma once

#include "elements/contract/gather.h"
#include "elements/contract/walk.h"
#include "solve/integration.h"

namespace tidearc {

/// One element's matrix on its way into the assembled one, valid during the call that receives it.
struct ElementMatrix {
  int ND;              ///< degrees of freedom
  bool packed;         ///< false: ND by ND, column by column; true: upper triangle by rows
  const int* LM;       ///< ND equation numbers; below 1 or above NEQ: the freedom drops
  const double* EMAT;  ///< the values, in nodal axes
};

/// Makes `EMAT` (ND by ND, symmetric, column by column), which holds the matrix as it is now, into what is delivered:
/// the change since `delivered` (upper triangle by rows, ND(ND+1)/2), or all of it when `reset`. `delivered` becomes
/// what stands in the assembled matrix afterwards.
void deliver_change(int ND, bool reset, double* EMAT, double* delivered);

/// K_local = T^T K T for every node of the element with a local system, in place; LM holds slots.
void turn_matrix(const int* LM, int ND, double* EMAT);

/// Makes the packed matrix in EMAT a full one.
void unpack_matrix(int ND, double* EMAT);

/// Forms the current element's matrix into element.EMAT with its equations in the work block's LM, and puts the tail
/// and the words of the stiffness pass back into its record in the pool, whose LM keeps its slots. Returns the form of
/// EMAT: that of the type, but full where nodes have local systems.
MatrixForm form_current_matrix(const ElementType& type, Word* record, int KFORM, bool reset);

/// Whether the damping terms of the current group are new to the assembled matrix: in the first step of a dynamic
/// analysis, before its matrix holds them.
inline bool damping_is_due(int KFORM) { return KFORM == 1 && integration.NEWCON == 0 && group_damps(); }

/// Walks over all elements in order and calls add(ElementMatrix) for each that is formed: every element when `reset`,
/// else those with a running number up to NELCHK whose KSTIF is not zero or whose damping is due.
template <class Add>
void form_element_matrices(int KFORM, bool reset, int NELCHK, Add&& add) {
  for_each_element(Pass::stiffness, [&](const ElementType& type, Word* record, int running) {
    if (type.operations.stiffness == nullptr) return;
    if (!reset && (running > NELCHK || (record[1] == 0 && !damping_is_due(KFORM)))) return;
    const MatrixForm form = form_current_matrix(type, record, KFORM, reset);
    add(ElementMatrix{group.NDOF, form == MatrixForm::packed, location_vector(), element.EMAT.data()});
  });
}

}  // namespace tidearc
