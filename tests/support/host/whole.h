// The fixture of the tests of the module with the stand-in host.
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
#include "tests/support/host/kept_reports.h"
#include "tests/support/host/leak_check.h"

// The module is born, and every allocation moves the unlocked records and
// pixels. Each test has to leave no handle, no block, no surface and no booking
// behind, and the drawing layer as it was.
class Whole : public ::testing::Test {
 protected:
  Whole();
  ~Whole() override;

  // A World in module memory, in a handle that the module allocates; fails the
  // test and returns null when there is none.
  PXL_WorldHandle Make(std::int32_t depth, int width, int height, std::uint32_t flags = 0);
  // The same with a surface of the drawing layer, at 8 or 32 bits.
  PXL_WorldHandle MakeSurface(std::int32_t depth, const Rect& bounds, std::uint32_t flags = 0);
  PXL_WorldHandle MakeSurface(std::int32_t depth, int width, int height, std::uint32_t flags = 0);
  void Dispose(PXL_WorldHandle worldH);
  // The status of making a World that cannot be made.
  std::int32_t FailToMake(std::int32_t depth, int width, int height, std::uint32_t flags = 0);

  // All reports since the beginning, or since the last were forgotten.
  [[nodiscard]] const std::vector<KeptReport>& Reports() const { return reports_.All(); }
  void ForgetReports() { reports_.Forget(); }

 private:
  LeakCheck leaks_;
  KeptReports reports_;
  GrafPtr port_ = nullptr;
  GDHandle device_;
};

// A locked World for as long as it lives.
class Locked {
 public:
  explicit Locked(PXL_WorldHandle worldH) : worldH_(worldH) {
    EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
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
template <typename Pixel>
Pixel& PixelAt(PXL_WorldHandle worldH, int x, int y) {
  auto* base = static_cast<char*>(PXLp_GetPixBaseAddr(worldH));
  return reinterpret_cast<Pixel*>(base + std::int64_t{Record(worldH).pixels.rowBytes} * y)[x];
}

#endif
