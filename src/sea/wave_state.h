// The sea as the deck and the solved wave theory leave it: one record of wave data that everybody asks.
//
// Directions: wave direction, current vectors and the directions of components point where the water goes. With the
// phase theta = k (D + x) - 2 pi t / T_structure, x the dot product of a point and the wave direction, a crest is at
// theta = 0: at time 0 at x = -D, running toward positive x. Surface elevations eta, vertical velocities w and vertical
// accelerations are positive upward, against gravity; depths h = sg (level - MWL) are positive under water.
#pragma once

#include <array>
#include <cstddef>
#include <type_traits>

namespace tidearc {

enum WaveType : int {
  wave_none = 0,
  wave_airy = 1,
  wave_stokes = 2,
  wave_current_only = 3,
  wave_irregular = 4,
  wave_stream = 5,
  wave_grid = 6,
  wave_legendre = 7,
  wave_embedded = 8,  ///< irregular sea with an embedded stream function wave
};

inline constexpr std::size_t stokes_terms = 5;
inline constexpr std::size_t most_wave_order = 15;   ///< order of a stream function                    [-]
inline constexpr std::size_t most_wave_points = 37;  ///< points across the half wave                   [-]
inline constexpr int most_components = 4000;
inline constexpr int most_scale_points = 100000;

/// Filled by WAVEIN during the model read and not changed afterwards, but for a new IRRSEA of a later time block.
/// Reset at the start of a problem. Scalars of the gravity and water card are copied, so that a field routine finds all
/// that it needs here.
struct WaveState {
  int IWTY = wave_none;           ///< wave type, a WaveType                                                 [-]
  int current_code = 0;           ///< 1: a current is defined
  int large_displacement = 0;     ///< 1: wave loads on the displaced geometry
  int relative_velocity = 0;      ///< 1: velocities of the water relative to the member
  int added_mass_code = 0;        ///< 1: variable added mass
  int NORAMP = 0;                 ///< points of the wave force scale history                                [-]
  int debug_code = 0;             ///< special debug code: printed, without effect
  double ramp_time = 0.0;         ///< time over which loads grow from zero; 0 none                           [s]
  double kinematic_factor = 1.0;  ///< on horizontal velocity and acceleration of the wave                  [-]
  double cutoff_diameter = 0.0;   ///< of selective relative velocity                                  [length]

  int vertical = 3;                     ///< axis of gravity, 1..3
  std::array<int, 2> horizontal{1, 2};  ///< the next two in cyclic order
  double sg = 0.0;                      ///< gravity sign: component of gravity on the vertical axis     [-]
  std::array<double, 3> gravity{};      ///< gravity direction                                           [-]
  double MWL = 0.0;                     ///< coordinate of the mean water surface                   [length]
  double rho = 0.0;                     ///< mass density of water                             [mass/volume]
  double weight = 0.0;                  ///< weight density of water                          [force/volume]

  double H = 0.0;                     ///< wave height; of an irregular sea its significant height         [length]
  double T_water = 0.0;               ///< wave period related to the water                                     [s]
  double T_structure = 0.0;           ///< wave period related to the structure                                 [s]
  double d = 0.0;                     ///< mean water depth                                                [length]
  double g = 32.2;                    ///< acceleration of gravity                                      [length/s2]
  std::array<double, 3> direction{};  ///< wave direction, unit or zero                                [-]
  double crest_distance = 0.0;        ///< D: positive moves toward the origin                    [length]
  double peak_time = 0.0;             ///< of the embedded wave                                        [s]

  double upper_force = 0.0;    ///< elevation above which there is no wave force                  [length]
  double lower_force = 0.0;    ///< elevation below which there is none                           [length]
  double lower_current = 0.0;  ///< lowest elevation of current forces                            [length]
  double mudline = 0.0;        ///< MWL + sg d                                                    [length]
  int ISTRCH = 0;              ///< stretching of wave kinematics: 0 none, 1 Wheeler
  int current_stretching = 1;  ///< 1 vertical, 2 linear, 3 non-linear, else none

  double k = 0.0;                        ///< wave number 2 pi / L                              [1/length]
  double C = 0.0;                        ///< celerity; of a stream function over the ground    [length/s]
  double L = 0.0;                        ///< wave length                                         [length]
  std::array<double, stokes_terms> F{};  ///< Stokes elevation coefficients                            [-]
  std::array<double, stokes_terms> G{};  ///< Stokes velocity coefficients                      [length/s]
  double Q = 0.0;                        ///< Bernoulli constant, frame of the crest              [length]

  int NN = 0;    ///< stream function: order plus 1                                                    [-]
  int NPTS = 0;  ///< points of the surface table                                                      [-]
  /// Unknowns: X[0] the wave length, X[1]..X[NN-1] the coefficients of harmonics 1..NN-1, X[NN] the stream function
  /// value on the surface.
  std::array<double, most_wave_order + 2> X{};
  std::array<double, most_wave_points> theta{};  ///< phases of the points, crest to trough          [rad]
  std::array<double, most_wave_points> eta{};    ///< surface elevations there, above MWL         [length]
  double U = 0.0;  ///< level-1 current along the wave at the time of the largest current         [length/s]
  std::array<double, 3> surface_current{};  ///< that level-1 current, all of it                  [length/s]

  int NTIME = 0;        ///< times of the current table                                                  [-]
  int NLEVEL = 0;       ///< levels of the current table                                                 [-]
  int KCURT = 1;        ///< pool index of the table: times, levels (NLEVEL, NTIME), vectors (3, NLEVEL, NTIME)
  int period_code = 0;  ///< N of the period computation with current                                  [-]
  double period_tolerance = 0.0;  ///< of it                                                           [-]

  int NCOMP = 0;             ///< components of the irregular sea                                            [-]
  int time_block = 0;        ///< time block code: 0 one, 1 IRRSEA again at the next DYN2
  double d_irregular = 0.0;  ///< depth of the components                                         [length]
};
inline WaveState wave;
static_assert(std::is_trivially_copyable_v<WaveState>);

/// A component of the irregular sea. Its phase is theta = k (x cos a + y sin a) - omega t - phase with x, y on the
/// horizontal axes; omega_water is 2 pi over the period in the water, which the amplitudes of velocities take.
struct SeaComponent {
  double omega;         ///< 2 pi f, related to the structure                                       [1/s]
  double amplitude;     ///< half the height                                                        [length]
  double phase;         ///< [rad]
  double k;             ///< wave number                                                            [1/length]
  double omega_water;   ///< [1/s]
  double cosine, sine;  ///< of its direction against the horizontal axes                          [-]

  // What a point takes of the profile over depth, formed once (sea/components.h).
  double shift;      ///< subtracted from k s in the exponential: k d when that is above 100, else 0          [-]
  double growing;    ///< factor of the exponential in cosh(k s)/sinh(k d): 1/(2 sinh k d), or 1 when deep    [-]
  double decaying;   ///< factor of its inverse: the same, or 0 when deep                                     [-]
  double over_cosh;  ///< factor of both in cosh(k s)/cosh(k d): 1/(2 cosh k d), or 1 when deep               [-]
};
/// The first wave.NCOMP are filled by IRRSEA.
struct SeaComponents {
  std::array<SeaComponent, most_components> of;
};
inline SeaComponents components;
static_assert(std::is_trivially_copyable_v<SeaComponents>);

/// Wave force magnification: wave.NORAMP rows, read by WAVEIN; `index` moves with the analysis time.
struct ForceScale {
  std::array<double, most_scale_points> time;        ///< [s]
  std::array<double, most_scale_points> multiplier;  ///< [-]
  int index;  ///< row before the present time, 0 none; never goes back within a run
};
inline ForceScale force_scale;
static_assert(std::is_trivially_copyable_v<ForceScale>);

inline bool has_stream_function() { return wave.IWTY == wave_stream || wave.IWTY == wave_embedded; }
inline bool has_components() { return wave.IWTY == wave_irregular || wave.IWTY == wave_embedded; }
/// Depth of a global elevation under mean water level.
inline double depth_of(double level) { return wave.sg * (level - wave.MWL); }

}  // namespace tidearc
