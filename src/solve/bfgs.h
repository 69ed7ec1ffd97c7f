// BFGS updates of the right-hand side between factorisations, in product form.
//
// Source: H. Matthies and G. Strang, The solution of nonlinear finite element equations (1979); the two loops as in
// J. Nocedal, Updating quasi-Newton matrices with limited storage (1980). A pair holds the change `f` of the internal
// forces over an accepted iteration (new minus old) and the displacement change `s` of it. Before the solve the newest
// pair comes first, after it the oldest: both passes together map f to s.
#pragma once

#include <array>
#include <cstddef>
#include <type_traits>

#include "run/views.h"

namespace tidearc {

inline constexpr int most_pairs = 20;

/// Vectors that pass through a solve together, each with coefficients of its own.
enum class UpdateSlot : std::size_t {
  unbalance = 0,
  reference = 1,
};

/// Written by the procedures below. The pairs themselves are records on TapeFile NT14: f, then s, of each pair.
struct BfgsBlock {
  int NBFGS = 0;                         ///< pairs stored since the last factorisation, at most most_pairs          [-]
  bool pending = false;                  ///< a pair of the last accepted iteration waits to be stored
  std::array<double, most_pairs> RHO{};  ///< 1 / (f . s) of each pair                    [1/work]
  std::array<std::array<double, 2>, most_pairs> BETA{};  ///< coefficients of the first pass, by pair and slot  [-]
};
inline BfgsBlock bfgs;
static_assert(std::is_trivially_copyable_v<BfgsBlock>);

/// No pair: after a factorisation, an event, a restep.
void forget_pairs();

/// Stores a pair behind those on NT14 (the first one at the start of the file), vectors of NEQ. Not stored when there
/// are most_pairs already, or when f . s is zero (or its inverse is not finite).
void store_pair(ConstReals f, ConstReals s);

/// First pass, before the solve: v, a load vector of NEQ. Uses the vector WORK.
void update_before_solve(Reals v, UpdateSlot slot);
/// Second pass, after the solve: v, a displacement vector of NEQ. Uses the vector WORK.
void update_after_solve(Reals v, UpdateSlot slot);

/// The passes' formulas for one pair: v -= b f with b = rho (s . v), which is returned; v += (beta - rho (f . v)) s.
double projection_on(ConstReals s, double rho, ConstReals v);
void remove_force(ConstReals f, double b, Reals v);
void add_displacement(ConstReals s, double e, Reals v);

}  // namespace tidearc
