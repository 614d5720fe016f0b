// CopyBits against the reference, with everything chosen by dice.
#ifndef TESTS_SUPPORT_DRAWING_COPIES_BY_DICE_H
#define TESTS_SUPPORT_DRAWING_COPIES_BY_DICE_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <random>
#include <utility>
#include <vector>

#include "tests/support/drawing/reference_copy.h"
#include "tests/support/drawing/surfaces.h"

// Returns a number from 0 to sides - 1.
using Dice = std::function<std::uint32_t(std::uint32_t sides)>;

inline constexpr int kModes[] = {0, 1, 2, 3, 4, 5, 6, 7, 32, 33, 34, 35, 36, 37, 38, 39, 50};

// The dice choose worlds, rectangles, modes and colours.
class CopiesByDice : public Surfaces {
 protected:
  explicit CopiesByDice(Dice roll) : roll_(std::move(roll)) {}
  ~CopiesByDice() override { MacSetPort(nullptr); }

  int Between(int low, int high) {
    return low + static_cast<int>(roll_(static_cast<std::uint32_t>(high - low + 1)));
  }
  // Large amounts of data are noise with a seed from one roll.
  template <typename Work>
  auto FromNoise(const Work& work) {
    std::minstd_rand noise(roll_(0x10000) + 1);
    const auto roll = [&noise](std::uint32_t sides) {
      return static_cast<std::uint32_t>(noise() % sides);
    };
    const Dice chosen = std::exchange(roll_, roll);
    struct Back {
      ~Back() { place = chosen; }
      Dice& place;
      const Dice& chosen;
    } back{roll_, chosen};
    return work();
  }
  bool Sometimes() { return Between(0, 3) == 0; }

  int AnyMode() {
    const int mode = kModes[Between(0, static_cast<int>(std::size(kModes)) - 1)];
    return Sometimes() ? mode + 64 : mode;
  }

  // ---- Colours

  // One of a few colours, so that equal colours are frequent.
  std::uint16_t AnyComponent() {
    constexpr std::uint16_t kFew[] = {0x0000, 0xFFFF, 0xCC12, 0x3300, 0x80FF, 0x7700};
    return Sometimes() ? static_cast<std::uint16_t>(roll_(0x10000)) : kFew[Between(0, 5)];
  }
  QDE_RGBColor AnyColor() { return {AnyComponent(), AnyComponent(), AnyComponent()}; }

  reference::Colors AnyColors() {
    reference::Colors colors = {{{0, 0, 0}, {0xFFFF, 0xFFFF, 0xFFFF}, {0, 0, 0}, AnyColor()}};
    if (Between(0, 1) == 0) colors[QDE_PortColor_OP] = AnyColor();
    if (Sometimes()) colors[QDE_PortColor_FORE] = AnyColor();
    if (Sometimes()) colors[QDE_PortColor_BACK] = AnyColor();
    return colors;
  }
  static void Take(GWorldPtr port, const reference::Colors& colors) {
    for (int which = 0; which < QDE_PortColorCount; ++which) {
      ASSERT_EQ(QDE_SetPortColor(port, which, &colors[static_cast<std::size_t>(which)]), 0);
    }
    MacSetPort(port);
  }

  // Of any size, with indices left out and colours that occur twice.
  QDE_ColorTable AnyTable() {
    QDE_ColorTable table{};
    table.ctSeed = 2000 + Between(0, 100000);
    table.ctFlags = static_cast<std::int16_t>(Sometimes() ? -0x8000 : 0);
    table.ctSize = static_cast<std::int16_t>(Sometimes() ? Between(0, 5) : Between(0, 255));
    for (int place = 0; place <= table.ctSize; ++place) {
      const int index = Sometimes() ? Between(0, 255) : place;
      const int twin = Between(0, place);
      const bool again = Sometimes() && twin < place;
      table.ctTable[place] = {static_cast<std::int16_t>(index),
                              again ? table.ctTable[twin].rgb : AnyColor()};
    }
    return table;
  }

  // ---- Rectangles

  Rect AnyRect(int most) {
    const int left = Between(-20, 30);
    const int top = Between(-20, 30);
    return {static_cast<std::int16_t>(top), static_cast<std::int16_t>(left),
            static_cast<std::int16_t>(top + Between(1, most)),
            static_cast<std::int16_t>(left + Between(1, most))};
  }
  // A rectangle near the bounds, sometimes larger or empty.
  Rect AnyPart(const Rect& bounds) {
    const int margin = Sometimes() ? AnyMargin() : 0;
    const int left = Between(bounds.left - margin, bounds.right);
    const int top = Between(bounds.top - margin, bounds.bottom);
    return {static_cast<std::int16_t>(top), static_cast<std::int16_t>(left),
            static_cast<std::int16_t>(Between(top, bounds.bottom + margin)),
            static_cast<std::int16_t>(Between(left, bounds.right + margin))};
  }
  // Now and then so that the rectangle reaches for the ends of the coordinates.
  int AnyMargin() { return Sometimes() ? 32600 : 9; }
  static Rect OfSize(const Rect& place, const Rect& size) {
    return {place.top, place.left, static_cast<std::int16_t>(place.top + size.bottom - size.top),
            static_cast<std::int16_t>(place.left + size.right - size.left)};
  }

  // ---- Worlds

  GWorldPtr AnyWorld() {
    const Rect bounds = AnyRect(24);
    GWorldPtr world = nullptr;
    if (Between(0, 1) == 0) {
      world = Make(32, bounds);
      QDE_SetGWorld32PixmapFormat(world, Between(0, 1));
    } else if (Between(0, 1) == 0) {
      world = Make(8, bounds);
    } else {
      QDE_ColorTable table = FromNoise([this] { return AnyTable(); });
      QDE_ColorTable* master = &table;
      EXPECT_EQ(NewGWorld(&world, 8, &bounds, &master, nullptr, 0), 0);
    }
    Scribble(world);
    return world;
  }
  // Padding is drawn too, so that a write there shows.
  void Scribble(GWorldPtr world) {
    const bool few = Between(0, 1) == 0;
    FromNoise([this, world, few] {
      std::uint8_t* pixels = PixelsOf(world);
      for (std::size_t i = 0; i < Size(world); ++i) {
        pixels[i] = static_cast<std::uint8_t>(few ? AnyComponent() >> 8 : roll_(0x100));
      }
    });
  }

  static int FormatOf(GWorldPtr world) {
    std::int32_t format = 0;
    QDE_GetGWorld32PixmapFormat(world, &format);
    return format;
  }
  static reference::Picture PictureOf(GWorldPtr world) {
    const Rect bounds = MapOf(world).bounds;
    const int depth = MapOf(world).pixelSize;
    reference::Picture picture{
        bounds, depth, FormatOf(world), reference::TableOf(**MapOf(world).pmTable), {}};
    for (int y = bounds.top; y < bounds.bottom; ++y) {
      const std::uint8_t* row = At(world, bounds.left, y);
      picture.bytes.insert(picture.bytes.end(), row,
                           row + std::ptrdiff_t{bounds.right - bounds.left} * (depth / 8));
    }
    return picture;
  }
  static std::vector<std::uint8_t> PaddingOf(GWorldPtr world) {
    const Rect bounds = MapOf(world).bounds;
    std::vector<std::uint8_t> padding;
    for (int y = bounds.top; y < bounds.bottom; ++y) {
      const std::uint8_t* row = At(world, bounds.left, y);
      const std::uint8_t* end = At(world, bounds.right, y);
      padding.insert(padding.end(), end, row + StrideOf(world));
    }
    return padding;
  }

  // Copies, and compares all of the destination.
  void Check(GWorldPtr source, GWorldPtr destination, const Rect& from, const Rect& to) {
    const int mode = AnyMode();
    const reference::Colors colors = AnyColors();
    Take(Sometimes() ? source : destination, colors);
    const reference::Picture expected =
        reference::Copy(PictureOf(source), PictureOf(destination), from, to, mode, colors);
    const auto padding = PaddingOf(destination);
    CopyBits(GetPortBitMapForCopyBits(source), GetPortBitMapForCopyBits(destination), &from, &to,
             static_cast<std::int16_t>(mode), nullptr);
    ASSERT_EQ(QDE_Error(), 0);
    ASSERT_EQ(PictureOf(destination).bytes, expected.bytes)
        << "mode " << mode << ", " << MapOf(source).pixelSize << " to "
        << MapOf(destination).pixelSize << " bits, from " << testing::PrintToString(from) << " to "
        << testing::PrintToString(to);
    ASSERT_EQ(PaddingOf(destination), padding);
  }

  // One copy from a world into another, and one within a world.
  void CheckBetweenWorlds() {
    GWorldPtr source = AnyWorld();
    GWorldPtr destination = AnyWorld();
    const Rect from = AnyPart(MapOf(source).bounds);
    const Rect to = AnyPart(MapOf(destination).bounds);
    Check(source, destination, from, Sometimes() ? OfSize(to, from) : to);
    DisposeGWorld(destination);
    DisposeGWorld(source);
  }
  void CheckWithinAWorld() {
    GWorldPtr world = AnyWorld();
    const Rect from = AnyPart(MapOf(world).bounds);
    const Rect to = AnyPart(MapOf(world).bounds);
    Check(world, world, from, Sometimes() ? to : OfSize(to, from));
    DisposeGWorld(world);
  }

 private:
  Dice roll_;
};

#endif
