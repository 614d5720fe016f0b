// Checks of a World's record after a call.
#ifndef TESTS_FAILURES_WORLD_CHECKS_H
#define TESTS_FAILURES_WORLD_CHECKS_H

#include <optional>

#include "tests/failures/operation.h"

struct RecordCheck {
  Effect effect{};
  const PXL_World& before;  // of a creation: nothing
  const PXL_World& after;
  std::optional<std::int32_t> status;  // none: an exception came out
  Rect wanted{};                       // the bounds asked for
};

// For a World that is alive after the call.
void CheckRecord(const RecordCheck& check);

#endif
