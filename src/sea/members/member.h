// Wave, current and buoyancy loads on a slender member: from its ends, its motion and its coefficients to equivalent
// nodal loads. Nothing here knows an element record.
#pragma once

#include <array>
#include <span>
#include <type_traits>

#include "sea/field.h"

namespace tidearc {

/// Table of general drag and lift of a section with load code 7: coefficients by angle of attack at 0, 30, .. 330
/// degrees.
struct GeneralCoefficients {
  double inertia;
  double drag[12];
  double lift[12];
};

/// What the water sees of a section.
struct WaterSection {
  double D = 0.0;    ///< outer diameter for water forces; 0: no wave load at all                [length]
  double CD = 0.0;   ///< normal drag coefficient
  double CDS = 0.0;  ///< tangential drag coefficient
  double CM = 0.0;   ///< inertia coefficient
  double KM = 0.0;   ///< added mass coefficient
  int ICA = 0;       ///< load code; 7: with the general table
  int JCA = 0;       ///< second code
  const GeneralCoefficients* general = nullptr;  ///< of load code 7, an aligned copy; else null
};

/// How nodal loads stand: mode 1, twelve freedoms, in local axes; mode 2, six freedoms, in global axes.
enum class LoadMode : int { local = 1, global = 2 };

/// Where a member is. Ends are those of the member itself, offsets included.
struct MemberPlace {
  int NODEI = 0, NODEJ = 0;      ///< node numbers, for output only
  Point I{}, J{};                ///< undeformed ends                                           [length]
  std::array<double, 9> axes{};  ///< local axes, column by column: x, y, z                          [-]
  LoadMode mode = LoadMode::local;
  bool end_moments = false;  ///< loads along the member give end moments (mode 1 only)
  int NGAUSS = 0;            ///< integration points, 1 to 4; else no wave load
};

/// Motion of the member's ends, global translations, I then J.
struct MemberMotion {
  std::array<Point, 2> displacement{};  ///< [length]
  std::array<Point, 2> velocity{};      ///< [length/s]
  std::array<Point, 2> acceleration{};  ///< [length/s2]
};

/// Equivalent nodal loads of a member: three forces and three moments at I, then at J, in local axes for mode 1 and in
/// global axes for mode 2 (whose moments are zero), in the direction of the load.
using MemberLoad = std::array<double, 12>;

/// Waves and their current at `time`, magnified by the force scale table. The current of the time stands in
/// current_now. `lines` asks for load lines on TAModel.sac. The load is zero without a wave type, for a diameter or a
/// length of zero, and for a member outside the force limits. It cannot fail.
void WAVLD(const WaterSection& section, const MemberPlace& place, const MemberMotion& motion, double time, bool lines,
           MemberLoad& load);
/// The same for a member under vortex shedding, with a warning when the current levels divide it.
/// @param told  0 until the warning has been printed for this member, then 1; the caller keeps it
void WAVLDV(const WaterSection& section, const MemberPlace& place, const MemberMotion& motion, double time, bool lines,
            MemberLoad& load, int& told);

/// Integration points of an element: its own number when above 0, else the group's; at most 4, at least 0.
int gauss_count(int of_element, int of_group);

// Still water. These read the gravity and water control alone; whether an element and the control ask for the load is
// the caller's to know. A control without an axis of gravity gives none.

/// Buoyancy of a closed tube of outer diameter Db, by pressure integration, at its undeformed place.
void BUOYLD(double Db, const MemberPlace& place, MemberLoad& load);

/// Static current of the control on the part between mean water level and the deepest static level, integrated with
/// the points of `place`. None without two levels.
void static_current_load(const WaterSection& section, const MemberPlace& place, MemberLoad& load);

/// Added mass of the length at or below mean water level, per global direction, of the whole member.
Point added_mass(const WaterSection& section, const Point& I, const Point& J);

// Load files of the run.

/// Opens TAModel.sac and TAModel.rlo, once in a run, and writes the first record of TAModel.rlo: the number of load
/// steps, DT.
void open_load_files(int steps, double DT);
/// Load lines are written and none stand for this time.
bool load_lines_due(double time);
/// Adds an element's six end forces (axial, shear-2, shear-3 at I, then at J) to TAModel.rlo.
void write_member_loads(int number, int NODEI, int NODEJ, std::span<const double, 6> forces);

/// The load files of a run: they go on over macros and problems. A new load line at a new time raises run.NWAVNO.
struct LoadFiles {
  bool wanted = false;     ///< the current macro writes them (KRISAV 1)
  bool open = false;       ///< opened by a macro of this run
  int lines = 0;           ///< lines on TAModel.sac                                                [-]
  int records = 0;         ///< records on TAModel.rlo, the first one included                      [-]
  double last_time = 0.0;  ///< analysis time of the last load lines                                [s]
};
inline LoadFiles load_files;
static_assert(std::is_trivially_copyable_v<LoadFiles>);

}  // namespace tidearc
