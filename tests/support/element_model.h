// What the small models of the element tests share: a clean slate.
#pragma once

#include "elements/contract/group.h"
#include "elements/contract/state_log.h"
#include "elements/contract/work.h"
#include "model/control.h"
#include "model/gravity.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "run/run_block.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/integration.h"
#include "solve/solver.h"

namespace tidearc::test {

/// Blocks, record files and the pool as before the first problem.
inline void reset_model() {
  close_all_tapes();
  run = {};
  units = {};
  sizes = {};
  static_loads = {};
  output = {};
  storage = {};
  nodes = {};
  masses = {};
  patterns.have_temperatures = false;
  arrays = {};
  response = {};
  solver = {};
  integration = {};
  state_log = {};
  element_counts = {};
  group = {};
  element = {};
  reset_gravity();
  pool.release();
}

}  // namespace tidearc::test
