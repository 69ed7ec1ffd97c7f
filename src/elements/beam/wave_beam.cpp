// The wave beam, type 7: a member of the linear beam's cards that hands the loads of the sea to its nodes and has no
// stiffness and no mass of its own. It stands beside members that have them, where several share one place in the
// water.
#include <algorithm>

#include "elements/beam/linear_input.h"
#include "elements/beam/operations.h"
#include "elements/beam/record.h"
#include "elements/beam/sea.h"
#include "sea/sea_factors.h"

namespace tidearc {

namespace {

void start_record(const LinearInput& input, const LinearCard& card) {
  start_linear_record<WaveBeamRecord>(input, card);
}

void finish_record(const LinearInput& input, const LinearCard& card, const PlacedBeam& placed) {
  WaveBeamRecord& beam = current_record<WaveBeamRecord>();
  const LinearSection& s = input.section(card);
  place_linear_record(placed, beam);
  locate_beam(card.NODEI, card.NODEJ, beam.head.LM);
  add_mass_and_weight({card.NODEI, card.NODEJ, beam.XL, 0.0,
                       weight_per_length(input.material(card), s.area, s.inside_diameter, s.water.growth_weight),
                       beam.TELEM, beam.ECC, input.counts.KFEM == 1});
  take_still_water(in_sea(beam), nullptr);
}

}  // namespace

void INEL07() { read_linear_group({start_record, finish_record}); }

void SDET07() {
  WaveBeamRecord& beam = current_record<WaveBeamRecord>();
  update_extremes(acting_loads(beam.FWAVE), element.TIME, beam.loads);
}

void RENV07() {
  WaveBeamRecord& beam = current_record<WaveBeamRecord>();
  restart_extremes(acting_loads(beam.FWAVE), element.TIME, beam.loads);
}

void RESP07() {
  std::fill_n(element.ERES.begin(), beam_freedoms, 0.0);
  std::fill_n(element.EDAMP.begin(), beam_freedoms, 0.0);
}

}  // namespace tidearc
