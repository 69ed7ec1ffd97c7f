// The wake of a cylinder that sheds vortices: how often, in what phase, how strong. Values in, values out; the state of
// a wake stands with its owner.
//
// Model (docs/theory_sea.md): the lift fluctuates with the Strouhal frequency f = St V/D; its phase is the integral of
// f over time, from a random start. Where the member itself moves across the flow at nearly that frequency, the wake
// locks in: its phase follows the motion. Neighbouring points of integration that are correlated share one wake.
//
// Sources: R. D. Blevins, Flow-Induced Vibration, 2nd edition, 1990, chapter 3 (lift, lock-in, drag of vibrating
// cylinders); DNV-RP-C205, section 9. U. Fey, M. König and H. Eckelmann, Phys. Fluids 10 (1998) 1547, and A. Roshko,
// J. Fluid Mech. 10 (1961) 345 (Strouhal numbers).
#pragma once

#include <array>
#include <span>
#include <type_traits>

namespace tidearc {

/// What the cards of a group say about shedding.
struct WakeLaw {
  int KMOTN = 0;                          ///< 0: the steady flow sheds (the current), 1: all of it
  int nnc = 0;                            ///< points that share a wake; below 1 as 1
  int iseed = 0;                          ///< seed of the start phases and of the spread
  int nbuf = 0;                           ///< past values of the motion that are looked at; below 1: none, no lock-in
  double strouhal = 0.0;                  ///< Strouhal number; 0: by the Reynolds number                          [-]
  double cl0 = 0.0;                       ///< lift coefficient (amplitude) without a table                        [-]
  double cd0 = 0.0;                       ///< drag coefficient of the member at rest                              [-]
  double trampb = 0.0;                    ///< time at which the lift begins to grow                               [s]
  double trampl = 0.0;                    ///< how long it grows                                                   [s]
  double timrwl = 0.0;                    ///< time from which the wake is followed; there is no lift before it    [s]
  double alpha = 0.0;                     ///< spread of the shedding frequency over the wakes, as a part of it    [-]
  double cutoff = 0.0;                    ///< lock-in up to this difference of the frequency ratio from 1; 0: none
  double blokfac = 1.0;                   ///< factor on the whole                                                 [-]
  int columns = 0;                        ///< of the coefficient table
  std::span<const double> argument{};     ///< its arguments: amplitudes over the diameter, rising
  std::span<const double> coefficient{};  ///< its rows: lift, drag, further ones without effect
};

/// Strouhal number of a circular cylinder; 0 below a Reynolds number of 47, where no vortices are shed.
double strouhal_number(double Re);

/// Part of the lift at a time: 0 before trampb and before timrwl, 1 from trampb + trampl on.
double lift_ramp(const WakeLaw& law, double time);

/// Lift coefficient, and drag coefficient beyond that at rest, of a member that vibrates with an amplitude (over its
/// diameter). The table is linear and is held at its ends.
struct WakeCoefficients {
  double lift;
  double more_drag;
};
WakeCoefficients wake_coefficients(const WakeLaw& law, double amplitude);

/// A number in 0 to 1 for a seed, a stream and an index, the same on every machine.
double random_part(int seed, int stream, int index);

inline constexpr int kept_crossings = 8;

/// Motion across the flow as far as the lock-in asks: upward zero crossings of its velocity.
struct MotionTrack {
  int values;                   ///< that have been seen, 0: none                                         [-]
  int crossings;                ///< kept, the oldest first                                               [-]
  int number[kept_crossings];   ///< of the value at which each was seen                                  [-]
  double when[kept_crossings];  ///< their times                                                          [s]
  double time, velocity;        ///< last value                                                [s, length/s]
  double peak, cycle;           ///< largest speed since the last crossing, and of the cycle before it  [length/s]
};
/// Adds the velocity of a time; that of the last time is not taken twice, one of an earlier time goes back to it.
/// Crossings that are older than the last `nbuf` values are dropped.
void track_motion(double time, double velocity, int nbuf, MotionTrack& track);

/// Frequency, amplitude and last upward crossing of a tracked motion; frequency 0: none is known.
struct Vibration {
  double frequency = 0.0;  ///< [1/s]
  double amplitude = 0.0;  ///< of the displacement                                                  [length]
  double crossing = 0.0;   ///< [s]
};
Vibration vibration_of(const MotionTrack& track);

/// Phase and frequency of a wake at a time, and the direction in which its lift counts as positive.
struct WakePhase {
  double phase;      ///< 0 to 1
  double frequency;  ///< [1/s]
  double axis[3];    ///< zero: not known yet
};

/// The wakes of a member. A step may be formed anew or dropped: `accepted` is the state at `before`, the time from
/// which the present step starts, and `now` that at `time`. All zero: no time has been seen.
struct WakeState {
  int started;
  int spare;
  double before, time;
  WakePhase accepted[4], now[4];
  MotionTrack track[4];
};
static_assert(std::is_standard_layout_v<WakeState> && std::is_trivially_copyable_v<WakeState>);

/// Goes to a time. A later one makes what stands accepted; the same one, or one that lies before it, starts again from
/// the accepted state. The first one sets the start phases.
void begin_wake_time(const WakeLaw& law, int stream, double time, WakeState& wake);

/// The flow that a wake sees.
struct WakeFlow {
  double speed;      ///< normal to the member                                    [length/s]
  double D;          ///< diameter, above zero                                      [length]
  double viscosity;  ///< kinematic                                             [length2/s]
  double spread;     ///< -1 to 1: where in the spread of frequencies this wake lies     [-]
};
/// Shedding of a flow in a member that vibrates: the frequency, that of the motion when it locks in.
struct Shedding {
  double frequency = 0.0;
  bool locked = false;
};
Shedding shedding_of(const WakeLaw& law, const WakeFlow& flow, const Vibration& motion);

/// The wake at `time`, from its accepted state at `before`, which it stays when the times are one. The phase grows with
/// the mean of the frequencies at both times; locked in, it is drawn within a cycle to where the lift is in phase with
/// the velocity of the motion.
WakePhase advance_wake(const WakeLaw& law, const WakePhase& accepted, double before, double time,
                       const Shedding& shedding, const Vibration& motion);

}  // namespace tidearc
