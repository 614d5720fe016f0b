// Worlds over memory that a test can look at as a whole.
#ifndef TESTS_CONTRACT_TRANSFER_IMAGE_H
#define TESTS_CONTRACT_TRANSFER_IMAGE_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

#include "PXL.h"
#include "platform/record_access.h"

using Bytes = std::vector<unsigned char>;

inline constexpr unsigned char kUntouched = 0x5C;

// A record that the module did not make: geometry alone.
class BareWorld {
 public:
  BareWorld(std::int32_t depth, int width, int height) {
    record_.depth = static_cast<std::int16_t>(depth);
    record_.width = static_cast<std::int16_t>(width);
    record_.height = static_cast<std::int16_t>(height);
  }
  BareWorld(const BareWorld&) = delete;
  BareWorld& operator=(const BareWorld&) = delete;

  PXL_WorldHandle Handle() { return &master_; }

 private:
  PXL_World record_{};
  PXL_World* master_ = &record_;
};

// A World over memory of the test's own, with room before, behind and between
// the rows, that begins `offset` bytes off; a negative stride starts at the last
// row in memory.
class Image {
 public:
  Image(PXL_WorldHandle worldH, std::int32_t padding, bool upsideDown = false,
        std::size_t offset = 0)
      : edge_(kEdge + offset) {
    PXL_World& world = *RecordOf(worldH);
    row_ = static_cast<std::size_t>(world.width) * static_cast<std::size_t>(world.depth / 8);
    stride_ = row_ + static_cast<std::size_t>(padding);
    height_ = static_cast<std::size_t>(world.height);
    upsideDown_ = upsideDown;
    memory.assign(2 * edge_ + stride_ * height_, kUntouched);
    world.pixels.baseAddr = height_ == 0 ? memory.data() : Row(0);
    world.pixels.rowBytes = static_cast<std::int32_t>(upsideDown ? -stride_ : stride_);
  }
  Image(const Image&) = delete;
  Image& operator=(const Image&) = delete;

  // Bytes that differ from row to row and from pixel to pixel.
  void Fill() {
    std::uint32_t state = 1;
    for (unsigned char& byte : memory) {
      state = state * 1664525 + 1013904223;
      byte = static_cast<unsigned char>(state >> 24);
    }
  }
  // Floats around the range that the conversions clamp to.
  void FillWithFloats() {
    Fill();
    for (std::size_t y = 0; y < height_; ++y) {
      for (std::size_t i = 0; i < row_ / 4; ++i) {
        const float value = static_cast<float>((i * 7 + y * 5) % 23) / 16.0F - 0.2F;
        std::memcpy(Row(y) + i * 4, &value, 4);
      }
    }
  }
  unsigned char* Row(std::size_t y) {
    const std::size_t line = upsideDown_ ? height_ - 1 - y : y;
    return memory.data() + edge_ + line * stride_;
  }
  // The expected memory when each row holds the result of `expected`.
  template <typename Expected>
  Bytes With(Expected expected) {
    Bytes copy = memory;
    for (std::size_t y = 0; y < height_; ++y) {
      const Bytes row = expected(y);
      EXPECT_EQ(row.size(), row_);
      std::copy(row.begin(), row.end(), copy.begin() + (Row(y) - memory.data()));
    }
    return copy;
  }
  [[nodiscard]] std::size_t RowSize() const { return row_; }

  Bytes memory;

 private:
  static constexpr std::size_t kEdge = 64;
  std::size_t edge_;
  std::size_t row_ = 0;
  std::size_t stride_ = 0;
  std::size_t height_ = 0;
  bool upsideDown_ = false;
};

#endif
