// Random sequences of calls on one World, and the shortest one that fails.
#ifndef TESTS_MODEL_SEQUENCE_H
#define TESTS_MODEL_SEQUENCE_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/model/world_model.h"

enum class Act {
  New,
  Dispose,
  Lock,
  LoadLock,
  Unlock,
  Update,
  Clear,
  GetOrder,
  SetOrder,
  AssumeOrder,
  Purge,  // the drawing layer drops the pixels of an unlocked surface
  Move,   // every unlocked handle moves
  Count
};

// A call with all that it may need; each act uses its own share.
struct Step {
  Act act = Act::Move;
  Trouble trouble = Trouble::None;
  Wish wish;
  bool hasRect = false;
  Rect rect{};
  std::int32_t depth = 0;
  bool asks = false;
  bool asksToo = false;
  std::int32_t value = 0;
  std::size_t blockOffset = 0;  // of new frames, from a 16-byte boundary
};
using Sequence = std::vector<Step>;

// Returns a number from 0 to sides - 1.
using Dice = std::function<int(std::size_t sides)>;

// A step that a host might take, all of it by the dice.
Step RandomStep(const Dice& roll);

// The same seed leads to the same sequence on every system.
Sequence RandomSequence(std::uint32_t seed, int length);

std::string Described(const Sequence& sequence);

// Drops calls for as long as the rest still fails.
Sequence Shortest(Sequence sequence, const std::function<bool(const Sequence&)>& fails);

#endif
