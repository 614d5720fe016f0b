// Shared by the tests of surfaces.
#ifndef TESTS_SUPPORT_DRAWING_SURFACES_H
#define TESTS_SUPPORT_DRAWING_SURFACES_H

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <tuple>
#include <vector>

#include "K_host.h"
#include "QDE_host.h"

constexpr std::uint32_t kFailedBit = 0x80000000;

inline std::uint32_t AsResult(std::int16_t error) {
  return static_cast<std::uint32_t>(std::int32_t{error});
}

inline Rect Sized(int width, int height) {
  return {0, 0, static_cast<std::int16_t>(height), static_cast<std::int16_t>(width)};
}

inline bool operator==(const Rect& a, const Rect& b) {
  return a.top == b.top && a.left == b.left && a.bottom == b.bottom && a.right == b.right;
}

// Compares all members; the padding of records is not compared.
inline bool operator==(const PixMap& a, const PixMap& b) {
  const auto members = [](const PixMap& map) {
    return std::tie(map.baseAddr, map.rowBytes, map.pmVersion, map.packType, map.packSize, map.hRes,
                    map.vRes, map.pixelType, map.pixelSize, map.cmpCount, map.cmpSize,
                    map.planeBytes, map.pmTable, map.pmReserved);
  };
  return members(a) == members(b) && a.bounds == b.bounds;
}

// Every allocation moves the unlocked blocks. At its end a test must have disposed of
// all worlds and handles.
class Surfaces : public testing::Test {
 protected:
  Surfaces() { K_SetScramble(1); }
  ~Surfaces() override {
    K_SetScramble(0);
    K_SetMemoryBudget(0);
    for (std::int32_t call = 0; call < QDE_CallCount; ++call) QDE_FailNextCall(call, 0);
    QDE_LosePixelsInFailedUpdates(0);
    QDE_ReplaceWorldInUpdates(0);
    EXPECT_EQ(K_CountHandles(), handles_);
    EXPECT_EQ(QDE_CountWorlds(), worlds_);
  }

  static GWorldPtr Make(std::int16_t depth, const Rect& bounds, std::uint32_t flags = 0) {
    GWorldPtr world = nullptr;
    EXPECT_EQ(NewGWorld(&world, depth, &bounds, nullptr, nullptr, flags), 0);
    EXPECT_NE(world, nullptr);
    return world;
  }
  static std::uint32_t Update(GWorldPtr* world, std::int16_t depth, const Rect& bounds,
                              std::uint32_t flags = 0) {
    return UpdateGWorld(world, depth, &bounds, nullptr, nullptr, flags);
  }

  // The record; valid until the world is updated.
  static PixMap& MapOf(GWorldPtr world) { return **GetPortPixMap(world); }
  // The pixels; valid until a block moves.
  static std::uint8_t* PixelsOf(GWorldPtr world) {
    return reinterpret_cast<std::uint8_t*>(GetPixBaseAddr(GetPortPixMap(world)));
  }
  static std::int32_t StrideOf(GWorldPtr world) {
    return static_cast<std::uint16_t>(MapOf(world).rowBytes) & 0x3FFF;
  }
  // The address of a pixel, in the world's coordinates; valid likewise.
  static std::uint8_t* At(GWorldPtr world, int x, int y) {
    const PixMap& map = MapOf(world);
    return PixelsOf(world) + std::ptrdiff_t{StrideOf(world)} * (y - map.bounds.top) +
           std::ptrdiff_t{map.pixelSize / 8} * (x - map.bounds.left);
  }
  // All bytes, padding included.
  static std::vector<std::uint8_t> Bytes(GWorldPtr world) {
    const std::uint8_t* pixels = PixelsOf(world);
    return {pixels, pixels + Size(world)};
  }
  static std::size_t Size(GWorldPtr world) {
    const Rect bounds = MapOf(world).bounds;
    const int height = bounds.bottom - bounds.top;
    return static_cast<std::size_t>(StrideOf(world)) * static_cast<std::size_t>(height);
  }
  static void Fill(GWorldPtr world, int byte) { std::memset(PixelsOf(world), byte, Size(world)); }
  // Takes all purgeable pixels that are not locked.
  static void Press() { K_PurgeHandlesAndCompact(); }

 private:
  std::uint64_t handles_ = K_CountHandles();
  std::uint64_t worlds_ = QDE_CountWorlds();
};

#endif
