// What the storage card, the profile and the last assembly decide about the structure matrix.
//
// The matrix is a compacted column profile: IDIAG(c) is the 1-based address of the diagonal of column c, rows
// ascending, diagonal last; entry (r, c), r not above c, stands at IDIAG(c) + r - c. The assembled matrix KASM is never
// factorised in place; KFAC holds the factor.
#pragma once

#include <type_traits>

namespace tidearc {

struct SolverBlock {
  int KSTOR = 1;   ///< storage code: +1 core, +2 disk, negative for unsymmetric                    [-]
  int NWDBLK = 0;  ///< words in one block of a disk job, 0 all available                            [-]
  int NHBW = 0;    ///< largest column height                                                       [-]
  int NSTO = 0;    ///< length of the compacted vector in reals (both triangles when unsymmetric)   [-]
  int NBLOCK = 1;  ///< matrix blocks, 1 when the whole matrix fits                                  [-]
  int MBLOCK = 0;  ///< length of a matrix block in reals                                           [-]
  int IDIAG = 1;   ///< pool index of the diagonal addresses, integers, NEQ
  int BLKEQ = 1;   ///< pool index of the number of equations of each block, integers, MAXBLK; disk jobs alone
  int BLKFLG = 1;  ///< pool index of marks: prescribed equations reach the block; integers, MAXBLK; likewise
  int KASM = 1;    ///< pool index of the assembled matrix, reals, NSTO; with blocks of the first buffer, MBLOCK
  int KFAC = 1;    ///< the same of the factor, and of the second buffer; 0: the factor stands outside the pool
  int NADDED = 0;  ///< element matrices on NT9 since the last block assembly                         [-]
  int KFIRST = 0;  ///< lowest equation touched since the last factorisation, 1..NEQ                [-]
  int KROW0 = 0;   ///< first row of a column whose stored values are not final                     [-]
  int KSTCHG = 0;  ///< 1: the set of prescribed equations has changed since the last factorisation [-]
  int KSTEQ = 0;   ///< first equation whose status changed                                         [-]
  int NSTUPD = 0;  ///< stiffness reformations of the job                                           [-]
  int KRESET = 0;  ///< 1: clear the matrix and rebuild every element at the next assembly          [-]
  int NELCHK = 0;  ///< running number of the last element whose matrix changed, 0 none             [-]
  int KFORM = 0;   ///< phase code that elements receive; 0 in the first step of a STAT, then falling  [-]
  int NNEG = 0;    ///< negative pivots of the last in-core symmetric factorisation                 [-]
};
inline SolverBlock solver;
static_assert(std::is_trivially_copyable_v<SolverBlock>);

inline bool records_on_disk() { return solver.KSTOR == 2 || solver.KSTOR == -2; }
inline bool unsymmetric() { return solver.KSTOR < 0; }
inline bool blocked() { return solver.NBLOCK > 1; }
/// Triangles that are kept, and the length of one of them in reals. With two, the upper one comes first; they share
/// their addresses.
inline int triangles() { return unsymmetric() ? 2 : 1; }
inline int triangle_length() { return solver.NSTO / triangles(); }

}  // namespace tidearc
