// What follows from the materials and sections of beams.
#include "elements/beam/properties.h"

#include <numbers>

#include "elements/contract/input.h"

namespace tidearc {

namespace {

void fill(double& value, double tube) {
  if (value == 0.0) value = tube;
}

double circle(double diameter) { return std::numbers::pi / 4.0 * diameter * diameter; }

}  // namespace

void fill_from_tube(LinearSection& s) {
  if (!(s.outside_diameter > 0.0 && s.thickness > 0.0)) return;
  const double D = s.outside_diameter;
  const double d = D - 2.0 * s.thickness;
  const double I = std::numbers::pi / 64.0 * (D * D * D * D - d * d * d * d);
  fill(s.area, circle(D) - circle(d));
  fill(s.inside_diameter, d);
  fill(s.J, 2.0 * I);
  fill(s.I3, I);
  fill(s.I2, I);
}

double mass_per_length(const BeamMaterial& m, double area, double inside_diameter) {
  return filled_tube(m.mass, area, m.fluid_mass, inside_diameter);
}

double weight_per_length(const BeamMaterial& m, double area, double inside_diameter, double growth_weight) {
  return filled_tube(m.weight, area, m.fluid_weight, inside_diameter) + growth_weight;
}

}  // namespace tidearc
