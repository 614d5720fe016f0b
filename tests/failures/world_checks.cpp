// Checks of a record after each kind of operation.
#include "tests/failures/world_checks.h"

#include <cstring>

namespace {

bool AreSame(const Rect& one, const Rect& other) {
  return std::memcmp(&one, &other, sizeof one) == 0;
}

void ExpectTheGeometryOf(const PXL_World& before, const PXL_World& after) {
  EXPECT_TRUE(AreSame(after.bounds, before.bounds));
  EXPECT_EQ(after.width, before.width);
  EXPECT_EQ(after.height, before.height);
  EXPECT_EQ(after.depth, before.depth);
  EXPECT_EQ(after.pixels.rowBytes, before.pixels.rowBytes);
}

void ExpectBounds(const Rect& bounds, const PXL_World& world) {
  EXPECT_TRUE(AreSame(world.bounds, bounds));
  EXPECT_EQ(world.width, bounds.right - bounds.left);
  EXPECT_EQ(world.height, bounds.bottom - bounds.top);
}

Rect AtTheOrigin(const Rect& rect) {
  return {0, 0, static_cast<std::int16_t>(rect.bottom - rect.top),
          static_cast<std::int16_t>(rect.right - rect.left)};
}

bool HasPixels(const PXL_World& world) {
  return world.hasGWorld != 0 || world.pixels.provider != nullptr || world.pixels.frame != nullptr;
}

void CheckCreated(const RecordCheck& check) {
  ExpectBounds(check.wanted, check.after);
  EXPECT_EQ(check.after.pixels.lockCount, 0);
  EXPECT_EQ(check.after.pixels.baseAddr, nullptr);
  EXPECT_EQ(check.after.hasGWorld != 0, check.after.gworld != nullptr);
  EXPECT_TRUE(HasPixels(check.after) || (check.after.flags & PXL_Flag_DEFERRED) != 0);
}

// A lock of purged pixels does not count. One of a provider's pixels counts even
// when they could not be mapped.
void CheckLocked(const RecordCheck& check) {
  ExpectTheGeometryOf(check.before, check.after);
  EXPECT_EQ(check.after.flags, check.before.flags);
  const std::int32_t before = check.before.pixels.lockCount;
  const std::int32_t after = check.after.pixels.lockCount;
  if (check.before.headMark != PXL_LiveMark || !HasPixels(check.before)) {
    EXPECT_EQ(after, before);
  } else if (check.before.hasGWorld != 0 && check.after.pixels.baseAddr == nullptr) {
    EXPECT_EQ(after, 0);
  } else {
    EXPECT_EQ(after, before + 1);
  }
  // The record holds the address of locked pixels.
  const bool tellsAddress = check.after.hasGWorld != 0 || check.after.pixels.provider == nullptr;
  if (check.status == PXL_Err_NONE && after > 0 && tellsAddress) {
    EXPECT_NE(check.after.pixels.baseAddr, nullptr);
  }
}

void CheckUnlocked(const RecordCheck& check) {
  ExpectTheGeometryOf(check.before, check.after);
  const bool without = check.before.hasGWorld == 0 && check.before.pixels.frame == nullptr;
  EXPECT_EQ(check.after.pixels.lockCount, check.before.pixels.lockCount - (without ? 0 : 1));
  EXPECT_EQ(check.after.pixels.baseAddr, nullptr);
}

// A World that lost its pixels is marked purgeable.
void CheckUpdated(const RecordCheck& check) {
  EXPECT_EQ(check.after.pixels.lockCount, check.before.pixels.lockCount);
  const bool changes = HasPixels(check.before);
  if (check.status == PXL_Err_NONE && changes) {
    ExpectBounds(check.before.hasGWorld != 0 || !AreSame(check.after.bounds, check.before.bounds)
                     ? AtTheOrigin(check.wanted)
                     : check.before.bounds,
                 check.after);
  } else {
    ExpectTheGeometryOf(check.before, check.after);
  }
  const bool lost = check.before.pixels.frame != nullptr && check.after.pixels.frame == nullptr;
  EXPECT_TRUE(!lost || (check.after.flags & PXL_Flag_PURGEABLE) != 0);
  if (check.status == PXL_Err_NONE) {
    EXPECT_FALSE(lost);
    EXPECT_EQ(check.after.flags, check.before.flags);
  }
}

void CheckUntouched(const RecordCheck& check) {
  ExpectTheGeometryOf(check.before, check.after);
  EXPECT_EQ(check.after.pixels.lockCount, check.before.pixels.lockCount);
  EXPECT_EQ(check.after.pixels.frame, check.before.pixels.frame);
  EXPECT_EQ(check.after.gworld, check.before.gworld);
}

}  // namespace

void CheckRecord(const RecordCheck& check) {
  EXPECT_EQ(check.after.tailMark, PXL_LiveMark);
  switch (check.effect) {
    case Effect::Creates:
      return CheckCreated(check);
    case Effect::Locks:
      return CheckLocked(check);
    case Effect::Unlocks:
      return CheckUnlocked(check);
    case Effect::Updates:
      return CheckUpdated(check);
    default:
      return CheckUntouched(check);
  }
}
