// Waves with known answers, from deep to shallow: linear waves by their closed form, fifth-order Stokes waves by an
// independent program of the same published theory (written from the paper with the corrected C2), steady waves by an
// independent Fourier approximation of order 24 (32 for the shallowest), converged to the exact steady wave.
#pragma once

#include <array>
#include <ostream>

namespace tidearc::test {

struct SeaCase {
  const char* name;
  double H, T, d, g;
};
inline std::ostream& operator<<(std::ostream& out, const SeaCase& sea) { return out << sea.name; }

inline constexpr SeaCase deep{"deep", 3.0, 8.0, 200.0, 9.80665};
inline constexpr SeaCase fatigue{"fatigue", 8.0, 10.0, 50.001, 9.80665};
inline constexpr SeaCase storm{"storm", 15.0, 14.0, 100.0, 9.80665};
inline constexpr SeaCase extreme{"extreme", 25.0, 14.0, 100.0, 9.80665};
inline constexpr SeaCase shallow{"shallow", 9.0, 12.0, 20.0, 9.80665};
inline constexpr SeaCase moderate{"moderate", 6.0, 9.0, 30.0, 9.80665};
inline constexpr SeaCase long_shallow{"long shallow", 4.0, 15.0, 10.0, 9.80665};
inline constexpr SeaCase feet{"feet", 60.0, 13.0, 300.0, 32.174};
inline constexpr SeaCase steep_deep{"steep deep", 12.0, 8.0, 150.0, 9.80665};
inline constexpr SeaCase very_deep{"very deep", 5.0, 5.5, 150.0, 9.80665};

/// Closed form, the dispersion relation solved to 1e-15. u: at z = 0, u_bed at the bed, both at the crest's phase; a:
/// the largest horizontal acceleration at z = 0.
struct LinearReference {
  SeaCase sea;
  double L, C, kd, crest, u, u_bed, a;
};
inline constexpr std::array linear_references{
    LinearReference{deep, 99.8897166, 12.4862146, 12.5802445, 1.5, 1.17809725, 8.10364404e-06, 0.925275413},       //
    LinearReference{fatigue, 151.252972, 15.1252972, 2.07708678, 4.0, 2.59344325, 0.639844582, 1.62950845},        //
    LinearReference{storm, 297.129971, 21.2235693, 2.11462522, 7.5, 3.46548094, 0.824411982, 1.55530421},          //
    LinearReference{extreme, 297.129971, 21.2235693, 2.11462522, 12.5, 5.77580156, 1.37401997, 2.59217368},        //
    LinearReference{shallow, 152.327572, 12.6939643, 0.824957061, 4.5, 3.47644942, 2.55617842, 1.82026466},        //
    LinearReference{moderate, 116.784019, 12.9760021, 1.61405268, 3.0, 2.26725841, 0.868314375, 1.58284497},       //
    LinearReference{long_shallow, 144.102039, 9.60680263, 0.436023344, 2.0, 2.04160539, 1.86180397, 0.855185665},  //
    LinearReference{feet, 845.575498, 65.0442691, 2.22919845, 30.0, 14.8394319, 3.15731604, 7.1722231},            //
    LinearReference{steep_deep, 99.8897154, 12.4862144, 9.43518352, 6.0, 4.71238904, 0.000752701866, 3.7011017},   //
    LinearReference{very_deep, 47.2134989, 8.58427252, 19.9620409, 2.5, 2.85599332, 1.22287754e-08, 3.26267914},   //
};

/// Skjelbreia and Hendrickson with -2592 in C2. u: at the crest, at z = 0 and at the bed, all at the crest's phase.
struct StokesReference {
  SeaCase sea;
  double L, C, crest, trough, u, u_mean, u_bed, lambda, Q;
};
inline constexpr std::array stokes_references{
    StokesReference{deep, 100.767105, 12.5958882, 1.57093818, -1.42906182, 1.28904732, 1.16866496, 8.96187585e-06,
                    0.0932158609, 8.08922511},  //
    StokesReference{fatigue, 155.064869, 15.5064869, 4.3831256, -3.6168744, 3.06982133, 2.57307882, 0.654874606,
                    0.159975925, 12.2704746},  //
    StokesReference{storm, 303.980164, 21.7128689, 8.17839492, -6.82160508, 4.06751853, 3.43894894, 0.843055829,
                    0.15322136, 24.0552357},  //
    StokesReference{extreme, 315.030223, 22.5021588, 14.4074543, -10.5925457, 7.52623724, 5.61055653, 1.44395212,
                    0.241074313, 25.8692892},  //
    StokesReference{shallow, 162.986146, 13.5821788, 6.06938645, -2.93061355, 5.33261049, 4.06792086, 2.63940913,
                    0.15249213, 9.53491207},  //
    StokesReference{moderate, 119.628314, 13.2920349, 3.33789492, -2.66210508, 2.72983086, 2.29820926, 0.879352865,
                    0.154963791, 9.0274066},  //
    StokesReference{feet, 882.922962, 67.9171509, 33.7483635, -26.2516365, 18.4751493, 14.4997162, 3.30059508,
                    0.208702467, 71.7685688},  //
    StokesReference{steep_deep, 111.480028, 13.9350035, 7.10749864, -4.89250136, 6.55436363, 4.30384758, 0.00176564639,
                    0.320650876, 9.90064519},  //
    StokesReference{very_deep, 51.6545568, 9.39173759, 2.91141516, -2.08858484, 3.82539549, 2.65061866, 6.14089764e-08,
                    0.291592933, 4.49718992},  //
};

/// The exact steady wave. u: at the crest, at z = 0 and at the bed at the crest's phase, at the trough.
struct SteadyReference {
  SeaCase sea;
  double L, C, crest, trough, u, u_mean, u_bed, u_trough, Q;
};
inline constexpr std::array steady_references{
    SteadyReference{deep, 100.767377, 12.5959222, 1.57097974, -1.42902026, 1.28905883, 1.16867099, 8.96212042e-06,
                    -1.06735191, 8.08926878},  //
    SteadyReference{fatigue, 155.078362, 15.5078362, 4.38552844, -3.61447156, 3.07033526, 2.57312675, 0.654845698,
                    -2.14429765, 12.2725964},  //
    SteadyReference{storm, 304.000177, 21.7142984, 8.18191166, -6.81808834, 4.06805134, 3.43902183, 0.843032449,
                    -2.89443045, 24.058385},  //
    SteadyReference{extreme, 315.341342, 22.5243816, 14.4734853, -10.5265147, 7.54100964, 5.60741441, 1.44224548,
                    -4.21199692, 25.9198729},  //
    SteadyReference{shallow, 163.389125, 13.6157605, 6.14918821, -2.85081179, 5.41674677, 4.07771999, 2.62125807,
                    -1.99652719, 9.57664944},  //
    SteadyReference{moderate, 119.641832, 13.2935369, 3.34036992, -2.65963008, 2.73034842, 2.29818725, 0.879246676,
                    -1.84782205, 9.02941513},  //
    SteadyReference{long_shallow, 156.387621, 10.4258414, 3.11655392, -0.883446082, 3.4530604, 2.87355491, 2.21091234,
                    -0.846819104, 5.59546746},  //
    SteadyReference{feet, 883.270752, 67.943904, 33.8155592, -26.1844408, 18.4887129, 14.4984371, 3.2996732,
                    -11.4708045, 71.8247582},  //
    SteadyReference{steep_deep, 111.882595, 13.9853244, 7.21472198, -4.78527802, 6.63108793, 4.28733676, 0.00179228209,
                    -3.02774097, 9.97227907},  //
    SteadyReference{very_deep, 51.7657727, 9.41195868, 2.93718454, -2.06281546, 3.84625256, 2.64641656, 6.3360627e-08,
                    -1.94777656, 4.51657631},  //
};

/// The steady wave H 15, T 14 (fixed observer), d 100, g 9.80665 on a uniform current U along it; u at the crest and at
/// the bed with the current.
struct CurrentReference {
  double U, L, C, crest, trough, u, u_bed, Q;
};
inline constexpr std::array current_references{
    CurrentReference{0.5, 315.750054, 22.5535753, 8.16861675, -6.83138325, 4.48303936, 1.39438526, 24.817741},   //
    CurrentReference{1.0, 327.212768, 23.3723406, 8.15789498, -6.84210502, 4.90723754, 1.94304742, 25.5420186},  //
    CurrentReference{1.5, 338.414134, 24.1724382, 8.14933942, -6.85066058, 5.33923746, 2.48919349, 26.2334685},  //
};

/// Linear waves on a uniform current, from (omega - k U)^2 = g k tanh kd; g 9.80665.
struct DopplerReference {
  double H, T_structure, d, U, T_water, L, C;
};
inline constexpr std::array doppler_references{
    DopplerReference{8.0, 10.0, 50.0, 1.0, 10.6320813, 168.207484, 15.8207484},    //
    DopplerReference{8.0, 10.0, 50.0, -0.5, 9.66029434, 142.186243, 14.7186243},   //
    DopplerReference{15.0, 14.0, 100.0, 1.5, 14.9426985, 332.870643, 22.2764745},  //
};

}  // namespace tidearc::test
