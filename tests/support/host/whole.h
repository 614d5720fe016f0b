// What the tests of the module with the stand-in host share.
#ifndef TESTS_SUPPORT_HOST_WHOLE_H
#define TESTS_SUPPORT_HOST_WHOLE_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "K_host.h"
#include "PXL.h"
#include "QDE_host.h"

// A report as the sink receives it.
struct Reported {
  std::uint32_t code;
  std::uint16_t cls;
  std::int32_t error;
  std::string text;
};
std::ostream& operator<<(std::ostream& out, const Reported& report);

// The module is born, and every allocation moves the unlocked records and
// pixels. Each test has to leave no handle, no block, no surface and no booking
// behind, and the drawing layer as it was.
class Whole : public ::testing::Test {
 protected:
  Whole();
  ~Whole() override;

  // A World in module memory, in a handle that the module allocates; fails the
  // test and gives null when there is none.
  PXL_WorldHandle Make(std::int32_t depth, int width, int height, std::uint32_t flags = 0);
  // The same with a surface of the drawing layer, at 8 or 32 bits.
  PXL_WorldHandle MakeSurface(std::int32_t depth, const Rect& bounds, std::uint32_t flags = 0);
  PXL_WorldHandle MakeSurface(std::int32_t depth, int width, int height, std::uint32_t flags = 0);
  void Dispose(PXL_WorldHandle worldH);
  // The status of making a World that cannot be made.
  std::int32_t FailToMake(std::int32_t depth, int width, int height, std::uint32_t flags = 0);

  std::vector<Reported> reports_;

 private:
  std::uint64_t handles_;
  std::uint64_t poolBlocks_;
  std::uint64_t surfaces_;
  GrafPtr port_ = nullptr;
  GDHandle device_;
  K_MemoryTotals totals_;
};

// A locked World for as long as it lives.
class Locked {
 public:
  explicit Locked(PXL_WorldHandle worldH) : worldH_(worldH) {
    EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), 0);
  }
  ~Locked() { PXL_UnlockPixels(worldH_); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;

 private:
  PXL_WorldHandle worldH_;
};

// The record, valid until the module is called.
inline const PXL_World& Record(PXL_WorldHandle worldH) {
  return **worldH;
}

// Pixel (x, y) of a locked World.
template <class Pixel>
Pixel& PixelAt(PXL_WorldHandle worldH, int x, int y) {
  auto* base = static_cast<char*>(PXLp_GetPixBaseAddr(worldH));
  return reinterpret_cast<Pixel*>(base + std::int64_t{Record(worldH).pixels.rowBytes} * y)[x];
}

#endif
