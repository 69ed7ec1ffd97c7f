// The table of all shared blocks: what saving writes, restoring reads, and a test resets.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace tidearc {

enum class BlockKind {
  deck,     ///< what the deck fixed: the same from the last card of the model to NONE
  step,     ///< what a step advances: the state of an analysis
  scratch,  ///< nothing that outlives a procedure, or belongs to the process and not to a problem: never saved
};

struct SharedBlock {
  std::string_view name;  ///< of the instance
  void* address;
  std::size_t size;  ///< bytes
  BlockKind kind;
  void (*reset)(void* block);  ///< puts the block into its first state
};

/// All blocks, from the ground floor up.
std::span<const SharedBlock> shared_blocks();

/// Every block back to its first state.
void reset_blocks();

}  // namespace tidearc
