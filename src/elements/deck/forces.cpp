// Loads and prints of the deck inundation element. It has no stiffness and bears nothing.
#include <algorithm>
#include <array>

#include "elements/contract/group.h"
#include "elements/deck/operations.h"
#include "elements/deck/record.h"
#include "run/layout.h"
#include "run/units.h"
#include "sea/sea_factors.h"
#include "solve/arrays.h"

namespace tidearc {

namespace {

DeckBox box_of(const DeckRecord& deck) {
  DeckBox box{};
  box.X0 = deck.corner[0];
  box.Y0 = deck.corner[1];
  box.Z0 = deck.corner[2];
  box.THETA = deck.corner[3];
  box.HIGH = deck.size[0];
  box.LENGTH = deck.size[1];
  box.WIDTH = deck.size[2];
  box.PHI = deck.PHI;
  std::ranges::copy(deck.R, box.R);
  std::ranges::copy(deck.CD, box.CD);
  std::ranges::copy(deck.KI, box.KI);
  std::ranges::copy(deck.F0, box.F0);
  std::ranges::copy(deck.KS, box.KS);
  box.Nx = deck.Nx;
  box.Ny = deck.Ny;
  return box;
}

/// What a node gets: a quarter of force and moment.
double nodal_share(const DeckRecord& deck, std::size_t component) {
  return 0.25 * (component < 3 ? deck.F[component] : deck.M[component - 3]);
}

}  // namespace

void SDET20() {}

void RESP20() {
  std::fill_n(element.ERES.begin(), deck_freedoms, 0.0);
  std::fill_n(element.EDAMP.begin(), deck_freedoms, 0.0);
}

void SEAL20(double time, bool) {
  DeckRecord& deck = current_record<DeckRecord>();
  const DeckWater water{&wave_family(wave.IWTY), time, wave.lower_current, wave.rho, wave.weight};
  const DeckForce force = deck_force(box_of(deck), water, {deck.centre[0], deck.centre[1], deck.centre[2]});
  const double ramp = ramp_factor(time);
  for (std::size_t i = 0; i < 3; ++i) {
    deck.F[i] = ramp * force.F[i];
    deck.M[i] = ramp * force.M[i];
  }
  for (std::size_t i = 0; i < deck_freedoms; ++i) element.ERES[i] = nodal_share(deck, i % 6);
}

void PRNT20() {
  if (element.KPRINT < 0) return;
  const DeckRecord& deck = current_record<DeckRecord>();
  const int out = units.NDOUT;
  if (deck.head.number == group.NFIRST) {
    write(out, "/,/,/,5X,' RESULTS FOR GROUP',I3,' (DECK INUNDATION ELEMENTS) TIME =',E12.4,/,/,5X,10A4,/",
          element.IGRP, print_time(), group.TITLE);
    write(out, "' ELEM   NODE      FX           FY           FZ           MX','           MY           MZ'");
  }
  std::array<double, 6> share{};
  for (std::size_t i = 0; i < 6; ++i) share[i] = sea_factors.wave * nodal_share(deck, i);
  write(out, "I5,I7,6(G13.5)", deck.head.number, deck.NODE[0], share);
  for (int n = 1; n < deck_nodes; ++n) write(out, "5X,I7,6(G13.5)", deck.NODE[n], share);
}

}  // namespace tidearc
