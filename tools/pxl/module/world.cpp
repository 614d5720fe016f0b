// Worlds and pixel locks by the calls of the module.
#include "tools/pxl/module/world.h"

#include <cstring>
#include <limits>
#include <string>

#include "tools/pxl/system/failure.h"

namespace pxl {
namespace {

constexpr std::int64_t kLargestSide = std::numeric_limits<std::int16_t>::max();

// The module takes coordinates of 16 bits.
Rect RectOf(std::int64_t width, std::int64_t height) {
  if (width > kLargestSide || height > kLargestSide) {
    throw Failure(std::to_string(width) + " x " + std::to_string(height) +
                  " pixels: the longest side of a World is " + std::to_string(kLargestSide));
  }
  return {0, 0, static_cast<std::int16_t>(height), static_cast<std::int16_t>(width)};
}

std::uint32_t FlagsOf(Backing backing) {
  switch (backing) {
    case Backing::None:
      return PXL_Flag_NO_PLATFORM | PXL_Flag_DEFERRED;
    case Backing::Frame:
      return PXL_Flag_NO_PLATFORM;
    case Backing::MappedFile:
      return PXL_Flag_NO_PLATFORM | PXL_Flag_DEFERRED | PXL_Flag_MAPPED;
    case Backing::PurgeableSurface:
      return PXL_Flag_PURGEABLE;
    case Backing::Surface:
      break;
  }
  return 0;
}

PXL_World ReadRecord(PXL_WorldHandle handle) {
  // The master pointer is of another type than the record's address.
  const PXL_World* address = nullptr;
  std::memcpy(&address, handle, sizeof address);
  return *address;
}

}  // namespace

std::int32_t DepthOf(SampleType samples) {
  return static_cast<std::int32_t>(PixelBytes(samples)) * 8;
}

SampleType SamplesOf(std::int32_t depth) {
  return depth == PXL_Depth_128  ? SampleType::Float
         : depth == PXL_Depth_64 ? SampleType::Integer16
                                 : SampleType::Integer8;
}

World::World(Module& module, std::int32_t depth, std::int64_t width, std::int64_t height,
             Backing backing)
    : module_(&module), backing_(backing) {
  const Rect rect = RectOf(width, height);
  PXL_WorldHandle handle = nullptr;
  const std::int32_t status =
      PXL_NewWorld(nullptr, FlagsOf(backing), &rect, depth, 0, nullptr, &handle);
  handle_.reset(handle);
  module.Check(status);
}

PXL_World World::Record() const {
  return ReadRecord(handle());
}

PXL_World MeasureWorld(Module& module, std::int32_t depth, std::int64_t width,
                       std::int64_t height) {
  return World(module, depth, width, height, Backing::None).Record();
}

PixelLock::PixelLock(const World& world) : handle_(world.handle()) {
  world.module().Check(PXL_LockPixels(0, handle_, nullptr));
}

PixelLock::~PixelLock() {
  PXL_UnlockPixels(handle_);
}

PixelRows PixelLock::Rows() const {
  const PXL_World record = ReadRecord(handle_);
  return {static_cast<std::byte*>(PXLp_GetPixBaseAddr(handle_)), record.pixels.rowBytes};
}

}  // namespace pxl
