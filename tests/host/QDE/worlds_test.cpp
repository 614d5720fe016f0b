#include <gtest/gtest.h>

#include "QDE_host.h"

namespace {

constexpr Rect kBounds = {0, 0, 10, 10};

TEST(Worlds, CannotBeMadeYet) {
  char something = 0;
  auto* world = reinterpret_cast<GWorldPtr>(&something);
  EXPECT_EQ(NewGWorld(&world, 32, &kBounds, nullptr, nullptr, 0), -50);
  EXPECT_EQ(world, nullptr);
  EXPECT_EQ(QDE_Error(), -50);
}

TEST(Worlds, CannotBeUpdatedYet) {
  GWorldPtr world = nullptr;
  const std::uint32_t flags = UpdateGWorld(&world, 32, &kBounds, nullptr, nullptr, 0);
  EXPECT_EQ(flags & 0x80000000U, 0x80000000U);
  EXPECT_EQ(static_cast<std::int32_t>(flags), -50);
  EXPECT_EQ(world, nullptr);
}

TEST(Worlds, MayBeNull) {
  DisposeGWorld(nullptr);
  UnlockPixels(nullptr);
  EXPECT_EQ(GetGWorldDevice(nullptr), nullptr);
  EXPECT_EQ(GetPortPixMap(nullptr), nullptr);
  EXPECT_EQ(GetPortBitMapForCopyBits(nullptr), nullptr);
  EXPECT_EQ(LockPixels(nullptr), 0);
  EXPECT_EQ(GetPixBaseAddr(nullptr), nullptr);
}

}  // namespace
