// Shared by the tests of single modes: worlds of a few pixels with given values.
#ifndef TESTS_STAND_INS_QDE_COPYING_H
#define TESTS_STAND_INS_QDE_COPYING_H

#include "tests/support/drawing/surfaces.h"

class Copying : public Surfaces {
 protected:
  Copying() {
    // Current port: only its colours are used.
    port_ = Make(32, Sized(1, 1));
    MacSetPort(port_);
  }
  ~Copying() override {
    MacSetPort(nullptr);
    for (GWorldPtr world : worlds_) DisposeGWorld(world);
    DisposeGWorld(port_);
  }

  // A world that is disposed of with the test.
  GWorldPtr Keep(GWorldPtr world) { return worlds_.emplace_back(world); }
  GWorldPtr World(int depth, int width, int height) {
    return Keep(Make(static_cast<std::int16_t>(depth), Sized(width, height)));
  }
  // A row of indices or of 32-bit pixels, whose first bytes are as in AARRGGBB.
  GWorldPtr Indices(const std::vector<std::uint8_t>& indices) {
    GWorldPtr world = World(8, static_cast<int>(indices.size()), 1);
    std::memcpy(PixelsOf(world), indices.data(), indices.size());
    return world;
  }
  GWorldPtr Pixels(const std::vector<std::uint32_t>& pixels, std::int32_t format = 0) {
    GWorldPtr world = World(32, static_cast<int>(pixels.size()), 1);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      for (std::size_t k = 0; k < 4; ++k) {
        PixelsOf(world)[4 * i + k] = static_cast<std::uint8_t>(pixels[i] >> (24 - 8 * k));
      }
    }
    EXPECT_EQ(QDE_SetGWorld32PixmapFormat(world, format), 0);
    return world;
  }
  // A pixel of a row: an index, or AARRGGBB.
  static std::uint32_t PixelAt(GWorldPtr world, int x) {
    const std::uint8_t* bytes = At(world, x, 0);
    if (MapOf(world).pixelSize == 8) return bytes[0];
    std::int32_t format = 0;
    QDE_GetGWorld32PixmapFormat(world, &format);
    std::uint32_t pixel = 0;
    for (int k = 0; k < 4; ++k) pixel = pixel << 8 | bytes[format == 0 ? k : 3 - k];
    return pixel;
  }
  static std::vector<std::uint32_t> Row(GWorldPtr world) {
    std::vector<std::uint32_t> row;
    for (int x = 0; x < MapOf(world).bounds.right; ++x) row.push_back(PixelAt(world, x));
    return row;
  }

  // From RRGGBB, each byte taken twice.
  void SetColor(int which, std::uint32_t rgb) {
    const auto wide = [rgb](int shift) {
      return static_cast<std::uint16_t>((rgb >> shift & 0xFF) * 257);
    };
    SetWideColor(which, {wide(16), wide(8), wide(0)});
  }
  void SetWideColor(int which, const QDE_RGBColor& color) {
    EXPECT_EQ(QDE_SetPortColor(port_, which, &color), 0);
  }

  // All of one to all of the other, without an error.
  static void Draw(GWorldPtr source, GWorldPtr destination, int mode) {
    CopyBits(GetPortBitMapForCopyBits(source), GetPortBitMapForCopyBits(destination),
             &MapOf(source).bounds, &MapOf(destination).bounds, static_cast<std::int16_t>(mode),
             nullptr);
    EXPECT_EQ(QDE_Error(), 0) << mode;
  }

 private:
  GWorldPtr port_;
  std::vector<GWorldPtr> worlds_;
};

#endif
