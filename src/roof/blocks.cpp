// The table of all shared blocks.
#include "roof/blocks.h"

#include <array>
#include <new>
#include <type_traits>

#include "dynamic/commands.h"
#include "dynamic/dyn1.h"
#include "dynamic/energy_files.h"
#include "dynamic/step.h"
#include "eigen/eigen.h"
#include "elements/contract/element_files.h"
#include "elements/contract/event_scan.h"
#include "elements/contract/group.h"
#include "elements/contract/state_log.h"
#include "elements/contract/work.h"
#include "model/control.h"
#include "model/gravity.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "model/records.h"
#include "run/clocks.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/timsub.h"
#include "run/units.h"
#include "run/workpool.h"
#include "sea/field.h"
#include "sea/grid.h"
#include "sea/members/member.h"
#include "sea/members/wave_member.h"
#include "sea/sea_factors.h"
#include "sea/wave_constants.h"
#include "sea/wave_state.h"
#include "solve/arrays.h"
#include "solve/bfgs.h"
#include "solve/integration.h"
#include "solve/prediction.h"
#include "solve/solver.h"
#include "static/scale.h"
#include "static/segment.h"
#include "static/stepping.h"

namespace tidearc {

namespace {

/// A block is made anew in its place: the largest have more bytes than a stack should lend.
template <class Block>
SharedBlock entry(std::string_view name, Block& block, BlockKind kind) {
  static_assert(std::is_trivially_copyable_v<Block>, "a block is saved and restored as plain words");
  return {name, &block, sizeof(Block), kind, [](void* place) { ::new (place) Block{}; }};
}

// In the order of the floors.
const std::array table{
    entry("units", units, BlockKind::step),
    entry("run", run, BlockKind::scratch),
    entry("failure", failure, BlockKind::scratch),
    entry("clocks", clocks, BlockKind::scratch),
    entry("timers", timers, BlockKind::scratch),
    entry("storage", storage, BlockKind::deck),
    entry("sizes", sizes, BlockKind::deck),
    entry("static_loads", static_loads, BlockKind::deck),
    entry("dynamic_loads", dynamic_loads, BlockKind::deck),
    entry("output", output, BlockKind::deck),
    entry("nodes", nodes, BlockKind::deck),
    entry("catenaries", catenaries, BlockKind::scratch),
    entry("gravity", gravity, BlockKind::deck),
    entry("masses", masses, BlockKind::deck),
    entry("patterns", patterns, BlockKind::deck),
    entry("load_records", load_records, BlockKind::deck),
    entry("wave", wave, BlockKind::deck),
    entry("wave_constants", wave_constants, BlockKind::deck),
    entry("components", components, BlockKind::deck),
    entry("force_scale", force_scale, BlockKind::step),
    entry("current_now", current_now, BlockKind::step),
    entry("grid_wave", grid_wave, BlockKind::step),
    entry("sea_factors", sea_factors, BlockKind::step),
    entry("wave_member", wave_member, BlockKind::scratch),
    entry("load_files", load_files, BlockKind::step),
    entry("arrays", arrays, BlockKind::deck),
    entry("integration", integration, BlockKind::step),
    entry("solver", solver, BlockKind::step),
    entry("response", response, BlockKind::step),
    entry("prediction", prediction, BlockKind::step),
    entry("bfgs", bfgs, BlockKind::step),
    entry("group", group, BlockKind::scratch),
    entry("element_counts", element_counts, BlockKind::deck),
    entry("generations", generations, BlockKind::step),
    entry("element", element, BlockKind::scratch),
    entry("state_log", state_log, BlockKind::step),
    entry("event_found", event_found, BlockKind::scratch),
    entry("segment", segment, BlockKind::step),
    entry("prescribed_factors", prescribed_factors, BlockKind::step),
    entry("statics", statics, BlockKind::step),
    entry("step", step, BlockKind::step),
    entry("scaling", scaling, BlockKind::step),
    entry("eigen", eigen, BlockKind::deck),
    entry("commands", commands, BlockKind::deck),
    entry("dynamics", dynamics, BlockKind::step),
    entry("dyn1", dyn1, BlockKind::step),
    entry("energy_files", energy_files, BlockKind::step),
};

}  // namespace

std::span<const SharedBlock> shared_blocks() { return table; }

void reset_blocks() {
  for (const SharedBlock& block : shared_blocks()) block.reset(block.address);
}

}  // namespace tidearc
