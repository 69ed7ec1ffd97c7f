// Control values of a problem: what the size, load and output control cards say.
// Written by DATAIN while the deck is read (and by the numbering: NEQ); everybody else reads.
#pragma once

#include <array>
#include <climits>
#include <type_traits>

#undef NZERO  // a macro of the system's <limits.h>, which has to be read before it can be put away

namespace tidearc {

struct SizeBlock {
  int NUMNP = 0;   ///< nodes                                             [-]
  int NCONT = 0;   ///< control nodes                                     [-]
  int NGEN = 0;    ///< coordinate generation commands                    [-]
  int NCATEN = 0;  ///< catenary commands                                 [-]
  int NCSYS = 0;   ///< local coordinate systems                          [-]
  int NDSYS = 0;   ///< local system assignment commands                  [-]
  int NZERO = 0;   ///< constraint commands                               [-]
  int NEQUAL = 0;  ///< identical displacement commands                   [-]
  int NMASS = 0;   ///< mass commands                                     [-]
  int NELGR = 0;   ///< element groups                                    [-]
  int IGRAV = 0;   ///< gravity and water card: 1 present                 [-]
  int IEIGN = 0;   ///< eigensolution card: 1 present                     [-]
  int IENRGY = 0;  ///< energy calculation: 1 yes                         [-]
  int ILBEM = 0;   ///< linear beam geometric stiffness: stored, echoed   [-]
  int IBANDW = 0;  ///< band-width reduction code                         [-]
  int NEQ = 0;     ///< equations; NEQ + 1 is the sink of constrained components  [-]
};
inline SizeBlock sizes;
inline int NEQ1() { return sizes.NEQ + 1; }

struct StaticLoadBlock {
  int NFPAT = 0;   ///< nodal force patterns                    [-]
  int NFOLL = 0;   ///< follower force patterns                 [-]
  int NTPAT = 0;   ///< temperature and pressure patterns       [-]
  int NPPAT = 0;   ///< surface pressure patterns               [-]
  int ISELFW = 0;  ///< self weight pattern: non-zero made      [-]
  int IBUOY = 0;   ///< buoyancy pattern: non-zero made         [-]
  int ICURR = 0;   ///< static current pattern: non-zero made   [-]
  int NZDISP = 0;  ///< prescribed displacement patterns        [-]
  int NPAT = 0;    ///< sum of the first seven                  [-]
  int NMADE = 0;   ///< force patterns written on NT10          [-]
};
inline StaticLoadBlock static_loads;

struct DynamicLoadBlock {
  int NGACC = 0;   ///< ground acceleration records             [-]
  int NDFRC = 0;   ///< dynamic force records                   [-]
  int NIDSP = 0;   ///< imposed displacement records            [-]
  int NDFND = 0;   ///< nodes with dynamic force records        [-]
  int NIDND = 0;   ///< nodes with imposed displacements        [-]
  int MXPNT = 0;   ///< most points of any record, plus 2       [-]
  int IWAVE = 0;   ///< wave data: 1 present                    [-]
  int IVESSL = 0;  ///< vessel motion data: 1 present           [-]
};
inline DynamicLoadBlock dynamic_loads;

/// Lists of nodes for output, one per axis: length (-1 all nodes, 0 none) and pool index of each.
struct OutputBlock {
  std::array<int, 3> NPR{};      ///< lengths of the displacement print lists X, Y, Z      [-]
  std::array<int, 3> KPR{};      ///< their pool indices                                   [-]
  int IRIGID = 0;                ///< rigid body output: 1 yes                             [-]
  std::array<char, 4> POSTF{};   ///< post-processor file code
  int NPSTYP = 0;                ///< post-processor file type                             [-]
  int NPSEQ = 0;                 ///< post-processor sequence limit, -1 none               [-]
  std::array<int, 3> NPS{};      ///< lengths of the post-processing lists                 [-]
  std::array<int, 3> KPS{};      ///< their pool indices                                   [-]
  int ISPFRC = 0;                ///< save special member forces: 1 yes                    [-]
  double TSPFR1 = 0.0;           ///< time at which that saving begins                     [s]
  double TSPFR2 = 0.0;           ///< time at which it ends                                [s]
  int IBCFRC = 0;                ///< save beam column component forces: 1 yes             [-]
  std::array<char, 4> DATF{};    ///< data file code
  int NRSEQ = 0;                 ///< restart results sequence number                      [-]
  int NRPRT = 0;                 ///< print code for restart results                       [-]
  std::array<char, 68> IDENT{};  ///< data file identifier
  int NLEVELS = 0;               ///< records written on the load level history            [-]
  int NTAP25 = 0;                ///< records of waves written on TAP25                    [-]
};
inline OutputBlock output;

/// The fields of the problem size card and of the static and dynamic load control cards, which share one layout.
using ControlFields = std::array<int, 18>;
/// Reads the next deck line as such a card. Fields behind those that a card lists mean nothing, but they are read: what
/// is no integer there ends the process in the I/O layer as it does in front.
ControlFields read_control_fields();

static_assert(std::is_trivially_copyable_v<SizeBlock> && std::is_trivially_copyable_v<StaticLoadBlock> &&
              std::is_trivially_copyable_v<DynamicLoadBlock> && std::is_trivially_copyable_v<OutputBlock>);

}  // namespace tidearc
