// Force of the sea on a deck that the wave reaches.
#include "elements/deck/inundation.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace tidearc {

namespace {

/// A deck in its water.
struct Deck {
  const DeckBox& box;
  const DeckWater& water;
  double cosine, sine;  // of THETA

  /// Global point over (or in) the box.
  Point at(double along, double across, double level) const {
    return {box.X0 + along * cosine - across * sine, box.Y0 + along * sine + across * cosine, level};
  }
  /// Components along x', y', z, each with its factor.
  Point local(const Point& v) const {
    return {box.R[0] * (v[0] * cosine + v[1] * sine), box.R[1] * (v[1] * cosine - v[0] * sine), box.R[2] * v[2]};
  }
  Point global(const Point& v) const { return {v[0] * cosine - v[1] * sine, v[0] * sine + v[1] * cosine, v[2]}; }

  double surface(const Point& at) const { return water.family->surface(water.time, at); }
  /// Not a number under a surface that is not finite, which must not pass for dry.
  double wet_height(double surface) const {
    if (!std::isfinite(surface)) return std::numeric_limits<double>::quiet_NaN();
    return std::max(0.0, std::min(surface - box.Z0, box.HIGH));
  }
  double wet_height(const Point& at) const { return wet_height(surface(at)); }
  WaterMotion motion(const Point& at) const {
    WaterMotion global;
    water.family->kinematics(at, water.time, water.lower_current, {}, global);
    return {local(global.velocity), local(global.acceleration)};
  }
};

struct Sum {
  Point F{}, M{};
  Point about{};

  void add(const Point& force, const Point& at) {
    const Point r = {at[0] - about[0], at[1] - about[1], at[2] - about[2]};
    for (std::size_t i = 0; i < 3; ++i) F[i] += force[i];
    M[0] += r[1] * force[2] - r[2] * force[1];
    M[1] += r[2] * force[0] - r[0] * force[2];
    M[2] += r[0] * force[1] - r[1] * force[0];
  }
};

/// Velocity along a local axis that decides which side is hit: at the middle of the box, at mid wet height, or in the
/// surface where the water does not reach the box there (above it there is no water to ask).
double velocity_in_middle(const Deck& deck, std::size_t normal) {
  const DeckBox& b = deck.box;
  Point middle = deck.at(0.5 * b.LENGTH, 0.5 * b.WIDTH, b.Z0);
  const double surface = deck.surface(middle);
  middle[2] = std::min(surface, b.Z0 + 0.5 * deck.wet_height(surface));
  return deck.motion(middle).velocity[normal];
}

/// One of the two vertical sides that face the water: normal to local axis `normal` (0: x', 1: y').
void add_side(const Deck& deck, std::size_t normal, Sum& sum) {
  const DeckBox& b = deck.box;
  const double depth = normal == 0 ? b.LENGTH : b.WIDTH;  // of the box behind the side
  const double breadth = normal == 0 ? b.WIDTH : b.LENGTH;
  const int strips = normal == 0 ? b.Ny : b.Nx;
  const double face = velocity_in_middle(deck, normal) < 0.0 ? depth : 0.0;
  for (int s = 0; s < strips; ++s) {
    const double across = (s + 0.5) * breadth / strips;
    const double along_x = normal == 0 ? face : across;
    const double along_y = normal == 0 ? across : face;
    const double hw = deck.wet_height(deck.at(along_x, along_y, b.Z0));
    if (hw <= 0.0) continue;
    const Point at = deck.at(along_x, along_y, b.Z0 + 0.5 * hw);
    const WaterMotion m = deck.motion(at);
    const double A = b.PHI * hw * breadth / strips;
    const double u = m.velocity[normal];
    const double slam = m.velocity[2] > 0.0 ? b.KS[normal] : 0.0;
    Point force{};
    force[normal] = 0.5 * deck.water.rho * (b.CD[normal] + slam) * u * std::abs(u) * A +
                    deck.water.rho * b.KI[normal] * m.acceleration[normal] * A * depth;
    sum.add(deck.global(force), at);
  }
}

/// Returns whether a cell is wet.
bool add_underside(const Deck& deck, Sum& sum) {
  const DeckBox& b = deck.box;
  bool wet = false;
  const double A = b.PHI * b.LENGTH * b.WIDTH / (b.Nx * b.Ny);
  const double rho = deck.water.rho;
  for (int i = 0; i < b.Nx; ++i) {
    for (int j = 0; j < b.Ny; ++j) {
      const Point at = deck.at((i + 0.5) * b.LENGTH / b.Nx, (j + 0.5) * b.WIDTH / b.Ny, b.Z0);
      const double hw = deck.wet_height(at);
      if (hw <= 0.0) continue;
      const WaterMotion m = deck.motion(at);
      const double w = m.velocity[2];
      const double slam = w > 0.0 ? 0.5 * rho * b.KS[2] * w * w : 0.0;
      const double force = (0.5 * rho * b.CD[2] * w * std::abs(w) + slam +
                            (rho * b.KI[2] * m.acceleration[2] + deck.water.weight) * hw) *
                           A;
      sum.add({0.0, 0.0, force}, at);
      wet = true;
    }
  }
  return wet;
}

}  // namespace

DeckForce deck_force(const DeckBox& box, const DeckWater& water, const Point& about) {
  const double angle = box.THETA * std::numbers::pi / 180.0;
  const Deck deck{box, water, std::cos(angle), std::sin(angle)};
  Sum sum;
  sum.about = about;
  add_side(deck, 0, sum);
  add_side(deck, 1, sum);
  const bool wet = add_underside(deck, sum);
  if (wet) sum.add(deck.global({box.F0[0], box.F0[1], 0.0}), about);
  return {sum.F, sum.M};
}

}  // namespace tidearc
