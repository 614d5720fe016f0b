// Random operations on Worlds, with checks of their pixels.
#include "tools/pxl/commands/soak/soak.h"

#include <array>
#include <cmath>
#include <cstring>
#include <string>

#include "K_host.h"
#include "PXL.h"
#include "tools/pxl/system/failure.h"

namespace pxl {
namespace {

constexpr std::size_t kMostWorlds = 192;
constexpr std::int64_t kTinySide = 8;
constexpr std::int64_t kLongestSide = 2048;
// The files are written to the volume, so they stay small.
constexpr std::int64_t kLongestMappedSide = 512;
constexpr std::size_t kTransferModes = 19;

struct Kind {
  std::int32_t depth;
  Backing backing;
};
constexpr std::array<Kind, 10> kKinds = {{{PXL_Depth_32, Backing::Frame},
                                          {PXL_Depth_64, Backing::Frame},
                                          {PXL_Depth_128, Backing::Frame},
                                          {PXL_Depth_32, Backing::MappedFile},
                                          {PXL_Depth_128, Backing::MappedFile},
                                          {PXL_Depth_8, Backing::Surface},
                                          {PXL_Depth_32, Backing::Surface},
                                          {PXL_Depth_8, Backing::PurgeableSurface},
                                          {PXL_Depth_32, Backing::PurgeableSurface},
                                          {PXL_Depth_64, Backing::None}}};

bool HasSurface(const World& world) {
  return world.Record().hasGWorld != 0;
}

bool HasFrame(const World& world) {
  return world.backing() == Backing::Frame;
}

bool HaveSameSize(const World& a, const World& b) {
  return a.Record().width == b.Record().width && a.Record().height == b.Record().height;
}

// Whether the deep blit converts the pair.
bool Converts(const World& source, const World& destination) {
  const std::int32_t from = source.Record().depth;
  const std::int32_t to = destination.Record().depth;
  return HasFrame(source) && HasFrame(destination) && (from > 32 || to > 32) &&
         (from == to || from == 32 || to == 32);
}

std::size_t WordsOf(const PXL_World& record) {
  return static_cast<std::size_t>(record.pixels.rowBytes) *
         static_cast<std::size_t>(record.height) / sizeof(std::int32_t);
}

}  // namespace

std::size_t Soak::Below(std::size_t end) {
  return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
}

bool Soak::Chance(double probability) {
  return std::bernoulli_distribution(probability)(random_);
}

// As many small Worlds as large ones: the logarithms are distributed evenly. One in
// five is tiny.
Soak::Size Soak::RandomSize(std::int64_t longest) {
  const std::int64_t end = Chance(0.2) ? kTinySide : longest;
  const std::int64_t start = end == longest ? kTinySide : 1;
  std::uniform_real_distribution<double> exponent(std::log2(static_cast<double>(start)),
                                                  std::log2(static_cast<double>(end)));
  const auto side = [&] { return static_cast<std::int64_t>(std::exp2(exponent(random_))); };
  const std::int64_t width = side();
  return {width, side()};
}

// Half of the time that of another World, so that pixels can be converted between
// the two.
Soak::Size Soak::SizeOfAny(std::int64_t longest) {
  if (!items_.empty() && Chance(0.5)) {
    const PXL_World record = Any().world.Record();
    if (record.width <= longest && record.height <= longest) return {record.width, record.height};
  }
  return RandomSize(longest);
}

void Soak::Step() {
  using Operation = void (Soak::*)();
  constexpr std::array<Operation, 12> kOperations = {
      &Soak::Make,    &Soak::Make,    &Soak::DisposeOfAny, &Soak::LockAny,
      &Soak::LockAny, &Soak::FillAny, &Soak::FillAny,      &Soak::UnlockAny,
      &Soak::BlitAny, &Soak::BlitAny, &Soak::UnlockAny,    &Soak::ResizeAny};
  const Operation operation = items_.empty() ? &Soak::Make : kOperations[Below(kOperations.size())];
  try {
    (this->*operation)();
  } catch (const Shortage&) {
    ++counts_.refused;
  }
}

void Soak::DisposeOfAll() {
  while (!items_.empty()) Dispose(items_.size() - 1);
}

void Soak::Make() {
  if (items_.size() >= kMostWorlds) {
    DisposeOfAny();
    return;
  }
  const Kind kind = kKinds[Below(kKinds.size())];
  const bool mapped = kind.backing == Backing::MappedFile;
  const Size size = SizeOfAny(mapped ? kLongestMappedSide : kLongestSide);
  items_.push_back({World(module_, kind.depth, size.width, size.height, kind.backing), 0, {}});
  ++counts_.made;
}

void Soak::Dispose(std::size_t index) {
  // The module disposes of locked Worlds too, but the bytes of a view stay booked
  // unless the last unlock unmaps it.
  Item& item = items_[index];
  if (item.world.backing() == Backing::MappedFile) {
    while (item.locks > 0) Unlock(item);
  }
  std::swap(items_[index], items_.back());
  items_.pop_back();
  module_.Check(PXL_Err_NONE);
  ++counts_.disposed;
}

void Soak::DisposeOfAny() {
  Dispose(Below(items_.size()));
}

void Soak::LockAny() {
  Lock(Any());
}

void Soak::UnlockAny() {
  Item& item = Any();
  if (item.locks > 0) Unlock(item);
}

void Soak::CheckOrDispose(Item& item, std::int32_t status) {
  try {
    module_.Check(status);
  } catch (const Failure&) {
    Dispose(static_cast<std::size_t>(&item - items_.data()));
    throw;
  }
}

// Returns whether the World is locked now.
bool Soak::Lock(Item& item) {
  std::uint8_t loaded = 1;
  std::uint8_t reloaded = 0;
  const std::int32_t status = PXL_LoadLockPixels(0, item.world.handle(), &loaded, &reloaded);
  if (loaded == 0) {
    module_.Drop();
    ++counts_.refused;
    return false;
  }
  if (reloaded != 0) {
    item.fill.reset();
    ++counts_.reloaded;
  }
  CheckOrDispose(item, status);
  if (item.world.backing() == Backing::None) return false;
  ++item.locks;
  ++counts_.locked;
  CheckPixels(item);
  return true;
}

void Soak::Unlock(Item& item) {
  PXL_UnlockPixels(item.world.handle());
  module_.Check(PXL_Err_NONE);
  --item.locks;
}

void Soak::CheckPixels(const Item& item) {
  const PXL_World record = item.world.Record();
  if (!item.fill || WordsOf(record) == 0) return;
  const auto* pixels = static_cast<const char*>(PXLp_GetPixBaseAddr(item.world.handle()));
  for (const std::size_t word : {std::size_t{0}, WordsOf(record) / 2, WordsOf(record) - 1}) {
    std::int32_t found = 0;
    std::memcpy(&found, pixels + word * sizeof found, sizeof found);
    if (found != *item.fill) {
      throw Failure("a World of " + std::to_string(record.depth) + " bits, " +
                    std::to_string(record.width) + " x " + std::to_string(record.height) +
                    ", has lost its pixels");
    }
  }
}

void Soak::FillAny() {
  Item& item = Any();
  if (!Lock(item)) return;
  const auto value = static_cast<std::int32_t>(random_());
  module_.Check(PXL_ClearWorldToLong(item.world.handle(), value));
  item.fill = value;
  CheckPixels(item);
  Unlock(item);
  ++counts_.drawn;
}

void Soak::BlitAny() {
  Item& source = Any();
  Item& destination = Any();
  if (HasSurface(source.world) && HasSurface(destination.world)) {
    Draw(source, destination);
  } else if (&source != &destination && Converts(source.world, destination.world) &&
             HaveSameSize(source.world, destination.world)) {
    Convert(source, destination);
  }
}

void Soak::Draw(Item& source, Item& destination) {
  const auto mode = static_cast<std::uint16_t>(Below(kTransferModes));
  destination.fill.reset();
  module_.Check(
      PXL_Blit(source.world.handle(), destination.world.handle(), nullptr, nullptr, mode));
  ++counts_.drawn;
}

void Soak::Convert(Item& source, Item& destination) {
  const PixelLock from(source.world);
  const PixelLock to(destination.world);
  destination.fill.reset();
  module_.Check(PXL_Blit(source.world.handle(), destination.world.handle(), nullptr, nullptr, 0));
  ++counts_.drawn;
}

// A frame must not change its kind of memory: a re-size that fails leaves a block of
// the old size with the new size in the record, and the size decides where the block
// is freed. Hence frames of the pool grow, and those of the heap shrink.
void Soak::ResizeAny() {
  Item& item = Any();
  const PXL_World record = item.world.Record();
  if (item.locks > 0 || item.world.backing() == Backing::MappedFile) return;
  Size size = RandomSize(kLongestSide);
  if (HasFrame(item.world)) {
    const bool grows = K_IsRecycledPtr(record.pixels.frame) != 0;
    const auto side = [grows](std::int64_t a, std::int64_t b) {
      return grows ? std::max(a, b) : std::min(a, b);
    };
    size = {side(size.width, record.width), side(size.height, record.height)};
  }
  const Rect bounds = {0, 0, static_cast<std::int16_t>(size.height),
                       static_cast<std::int16_t>(size.width)};
  item.fill.reset();
  const std::int32_t status = PXL_UpdateWorld(0, &bounds, 0, nullptr, item.world.handle());
  // A World whose re-size failed must not be re-sized again.
  CheckOrDispose(item, status);
  ++counts_.resized;
}

}  // namespace pxl
