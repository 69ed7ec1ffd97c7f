// Whole decks of linear beams against closed forms.
#include <gtest/gtest.h>

#include <cmath>

#include "frame_deck.h"

namespace tidearc::test {
namespace {

// A tubular cantilever, N and m: OD 0.5, t 0.02, E 2.1E11, nu 0.3, L 6, shear area 0.0151227868.
constexpr double E = 2.1e11, nu = 0.3, L = 6.0, shear_area = 0.0151227868;
const double G = E / (2.0 * (1.0 + nu));

struct Cantilever {
  double ux = 0.0, uy = 0.0, uz = 1.0;  // unit vector from the base to the tip
  std::string KDEF = "";
  bool shear = false;
};

FrameDeck cantilever(const Cantilever& c, int elements = 1) {
  FrameDeck deck;
  for (int i = 0; i <= elements; ++i) {
    const double s = L * i / elements;
    deck.node(c.ux * s, c.uy * s, c.uz * s);
  }
  deck.fix(1, "111111");
  LinearGroup group;
  group.E = E;
  group.poisson = nu;
  group.KDEF = c.KDEF;
  LinearGroup::Section section;
  section.OD = 0.5;
  section.t = 0.02;
  if (c.shear) section.AS2 = 0.015, section.AS3 = shear_area;
  group.section(section);
  for (int i = 1; i <= elements; ++i) group.element({.I = i, .J = i + 1});
  deck.group(group.text());
  return deck;
}

TEST(LinearDeck, ACantileverAlongZTakesItsTipLoads) {
  FrameDeck deck = cantilever({});
  deck.load(2, {1e5, 0, 0, 0, 0, 0});
  deck.stat({one_step()});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.report << run.errors;
  EXPECT_NEAR(moved(2, 1), 0.0394045415, 1e-9);
}

}  // namespace
}  // namespace tidearc::test
