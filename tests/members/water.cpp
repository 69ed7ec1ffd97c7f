#include "water.h"

#include <cmath>

#include "model/gravity.h"
#include "run/run_block.h"
#include "sea/wave_constants.h"
#include "sea/wavein.h"

namespace tidearc::test {

namespace {

Point turned(const MemberPlace& place, const MemberLoad& load, std::size_t first) {
  const Point part{load[first], load[first + 1], load[first + 2]};
  return place.mode == LoadMode::global ? part : to_global(place.axes, part);
}

Point cross(const Point& a, const Point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

void regular_sea(int IWTY) {
  still_sea();
  wave.IWTY = IWTY;
  wave.H = 12.0;
  wave.T_water = wave.T_structure = 12.0;
  wave.direction = {1.0, 0.0, 0.0};
}

double fake_surface(double, const Point&) {
  ++fake.surfaces;
  return fake.surface;
}

void fake_motion(const Point& at, double, double, MotionParts parts, WaterMotion& motion) {
  fake.asked.push_back(at);
  fake.current_only.push_back(parts.current_only);
  motion = {fake.velocity, fake.acceleration};
}

WavePressure fake_pressure(double, const Point&, double) { return {}; }

Point fake_cut(const Point& A, const Point& B, double) {
  const auto v = static_cast<std::size_t>(wave.vertical) - 1;
  const double share = (fake.surface - A[v]) / (B[v] - A[v]);
  return along(A, {B[0] - A[0], B[1] - A[1], B[2] - A[2]}, share);
}

void lay_levels(const std::vector<double>& levels, const std::vector<double>& speeds, double* level, double* vector) {
  for (std::size_t i = 0; i < levels.size(); ++i) {
    level[i] = levels[i];
    vector[3 * i] = speeds[i];
  }
}

}  // namespace

void still_sea() {
  wave = WaveState{};
  wave.sg = -1.0;
  wave.gravity = {0.0, 0.0, -1.0};
  wave.g = 9.81;
  wave.rho = rho;
  wave.weight = weight_density;
  wave.d = 50.0;
  wave.mudline = wave.lower_force = wave.lower_current = -50.0;
  wave.upper_force = 12.0;
  current_now = CurrentNow{};
  force_scale.index = 0;
  load_files = LoadFiles{};
  run.NWAVNO = 0;
  wave_member = WaveMember{};
  fake = FakeSea{};
  reset_gravity();
  gravity.GRAV = 9.81;
  gravity.water_weight = weight_density;
  gravity.water_mass = rho;
}

void airy_sea(int stretching) {
  regular_sea(wave_airy);
  wave.ISTRCH = stretching;
  wave.k = 0.03067471;
  wave.L = 204.833;
  wave.C = wave.L / wave.T_water;
  prepare_wave_constants();
}

void stokes_sea() {
  regular_sea(wave_stokes);
  WAVSOL(1e-6, 20);
  prepare_wave_constants();
}

void stream_sea() {
  regular_sea(wave_stream);
  wave.NPTS = 37;
  SFSOLVE(1e-6, 20, 15, 9, 0);
  prepare_wave_constants();
}

void set_current(const std::vector<double>& levels, const std::vector<double>& speeds) {
  wave.current_code = 1;
  wave.current_stretching = 1;
  wave.NTIME = 1;
  wave.NLEVEL = current_now.NLEVEL = static_cast<int>(levels.size());
  current_now.time = 0.0;
  lay_levels(levels, speeds, current_now.level.data(), current_now.vector.data());
}

void current_sea(const std::vector<double>& levels, const std::vector<double>& speeds) {
  still_sea();
  wave.IWTY = wave_current_only;
  wave.upper_force = 0.0;
  set_current(levels, speeds);
}

void set_static_current(const std::vector<double>& levels, const std::vector<double>& speeds) {
  gravity.KCURR = 1;
  gravity.NCLEV = static_cast<int>(levels.size());
  lay_levels(levels, speeds, gravity.CLEVI.data(), gravity.CVELI.data());
}

const WaveFamily& fake_family() {
  static constexpr WaveFamily family{fake_surface, fake_motion, fake_pressure, fake_cut};
  return family;
}

MemberPlace pile(double foot, double head, int points, bool end_moments) {
  MemberPlace place;
  place.NODEI = 12;
  place.NODEJ = 34;
  place.I = {0.0, 0.0, foot};
  place.J = {0.0, 0.0, head};
  place.axes = {0.0, 0.0, 1.0, 1.0, 0.0, 0.0, 0.0, 1.0, 0.0};
  place.end_moments = end_moments;
  place.NGAUSS = points;
  return place;
}

MemberPlace bar_of(MemberPlace place) {
  place.mode = LoadMode::global;
  place.end_moments = false;
  return place;
}

MemberPlace member_between(const Point& I, const Point& J, int points, bool end_moments) {
  MemberPlace place;
  place.NODEI = 1;
  place.NODEJ = 2;
  place.I = I;
  place.J = J;
  place.end_moments = end_moments;
  place.NGAUSS = points;
  const Point chord{J[0] - I[0], J[1] - I[1], J[2] - I[2]};
  const double length = std::sqrt(chord[0] * chord[0] + chord[1] * chord[1] + chord[2] * chord[2]);
  const Point x{chord[0] / length, chord[1] / length, chord[2] / length};
  Point y = cross({0.0, 0.0, 1.0}, x);
  const double size = std::sqrt(y[0] * y[0] + y[1] * y[1]);
  y = {y[0] / size, y[1] / size, 0.0};
  const Point z = cross(x, y);
  place.axes = {x[0], x[1], x[2], y[0], y[1], y[2], z[0], z[1], z[2]};
  return place;
}

WaterSection plain_tube(double D) {
  WaterSection section;
  section.D = D;
  section.CD = 1.0;
  section.CM = 2.0;
  return section;
}

WaveMember made_ready(const MemberPlace& place, const WaterSection& section) {
  WaveMember member;
  member.terms = section_terms(section, wave.rho);
  member.rule = gauss_rule(place.NGAUSS);
  member.NODEI = place.NODEI;
  member.NODEJ = place.NODEJ;
  member.mode = place.mode;
  member.end_moments = place.end_moments;
  member.axes = place.axes;
  member.A = place.I;
  member.B = place.J;
  const Point chord{place.J[0] - place.I[0], place.J[1] - place.I[1], place.J[2] - place.I[2]};
  member.length = std::sqrt(chord[0] * chord[0] + chord[1] * chord[1] + chord[2] * chord[2]);
  member.chord =
      member.undeformed_chord = {chord[0] / member.length, chord[1] / member.length, chord[2] / member.length};
  member.upper = wave.upper_force;
  member.lower = wave.lower_force;
  return member;
}

Resultant resultant(const MemberPlace& place, const MemberLoad& load) {
  Resultant sum;
  const Point FI = turned(place, load, 0), FJ = turned(place, load, 6);
  const Point MI = turned(place, load, 3), MJ = turned(place, load, 9);
  const Point about_I = cross(place.I, FI), about_J = cross(place.J, FJ);
  for (std::size_t i = 0; i < 3; ++i) {
    sum.force[i] = FI[i] + FJ[i];
    sum.moment[i] = MI[i] + MJ[i] + about_I[i] + about_J[i];
  }
  return sum;
}

Point force_at_I(const MemberPlace& place, const MemberLoad& load) { return turned(place, load, 0); }
Point force_at_J(const MemberPlace& place, const MemberLoad& load) { return turned(place, load, 6); }
Point moment_at_I(const MemberPlace& place, const MemberLoad& load) { return turned(place, load, 3); }
Point moment_at_J(const MemberPlace& place, const MemberLoad& load) { return turned(place, load, 9); }

MemberLoad wave_load(const WaterSection& section, const MemberPlace& place, double time) {
  MemberLoad load;
  WAVLD(section, place, MemberMotion{}, time, false, load);
  return load;
}

}  // namespace tidearc::test
