// CopyBits: finds the pixels of both bitmaps and pins them for the call.
#include <cstdint>
#include <cstring>
#include <new>

#include "QDE_host.h"
#include "TRC_host.h"
#include "host/QDE/calls/ports.h"
#include "host/QDE/copy/transfer.h"
#include "host/QDE/pixels/colors.h"
#include "host/QDE/pixels/errors.h"
#include "host/QDE/surfaces/pixel_block.h"
#include "host/QDE/surfaces/registry.h"
#include "host/QDE/surfaces/surface.h"

namespace {

using qde::Error;
using qde::Image;
using qde::Layout;

struct Side {
  Image image{};
  qde::Pin pin;
};

std::int32_t RowBytesOf(const BitMap& bits) {
  return static_cast<std::uint16_t>(bits.rowBytes);
}

// Whether the record is a pixel map, and not a bitmap or a port.
bool IsPixMap(const BitMap& bits) {
  return (RowBytesOf(bits) & (qde::kPixMapFlag | qde::kPortFlag)) == qde::kPixMapFlag;
}

// Copied by bytes: the record's type is unknown to the compiler.
PixMap ReadPixMap(const BitMap* bits) {
  PixMap map{};
  std::memcpy(&map, bits, sizeof map);
  return map;
}

Layout LayoutOf(const PixMap& map) {
  return {map.bounds, map.pixelSize, static_cast<std::uint16_t>(map.rowBytes) & qde::kStrideMask};
}

bool IsSound(const Layout& layout) {
  return qde::IsDepth(layout.depth) && !qde::IsEmpty(layout.bounds) &&
         layout.rowBytes >= qde::Width(layout.bounds) * qde::BytesPerPixel(layout.depth);
}

const QDE_ColorTable* ColorsOf(const PixMap& map) {
  const CTabHandle colors = map.pmTable != nullptr ? map.pmTable : qde::StandardColors();
  return *colors;
}

// The format is a property of the surface; the record does not contain it.
qde::Format FormatOf(const BitMap* bits) {
  const qde::Surface* surface = qde::FindSurface(bits);
  return surface != nullptr ? surface->GetFormat() : qde::kARGB;
}

// Pinned first: memory pressure on another thread may purge unpinned pixels.
Ptr HoldPixels(const PixMap& map, std::uint64_t size, const char* unlocked, Side* side) {
  const Handle handle = qde::HandleIn(map.baseAddr);
  if (handle == nullptr) return map.baseAddr;
  side->pin = qde::Pin(handle);
  TRC_Log(TRC_Level_NOTE, "QDE", "CopyBits", unlocked);
  return qde::PixelsOf(handle, size);
}

Error OpenSide(const BitMap* bits, const char* unlocked, Side* side) {
  if (bits == nullptr || !IsPixMap(*bits)) return qde::kIllegalParameter;
  const PixMap map = ReadPixMap(bits);
  const Layout layout = LayoutOf(map);
  if (!IsSound(layout)) return qde::kIllegalParameter;
  const Ptr pixels = HoldPixels(map, qde::ByteCount(layout), unlocked, side);
  if (pixels == nullptr) return qde::kPurged;
  side->image = {reinterpret_cast<std::uint8_t*>(pixels), layout, FormatOf(bits), ColorsOf(map)};
  return qde::kNoError;
}

Error Copy(const BitMap* source, const BitMap* destination, const Rect& sourceRect,
           const Rect& destinationRect, std::int16_t mode) {
  Side from;
  Side to;
  Error error = OpenSide(source, "source pixels are not locked; pinned for the call", &from);
  if (error != qde::kNoError) return error;
  error = OpenSide(destination, "destination pixels are not locked; pinned for the call", &to);
  if (error != qde::kNoError) return error;
  return qde::Transfer(from.image, to.image, sourceRect, destinationRect,
                       {mode, qde::CurrentColors()});
}

}  // namespace

void CopyBits(const BitMap* source, const BitMap* destination, const Rect* sourceRect,
              const Rect* destinationRect, std::int16_t mode, RgnHandle mask) {
  Error error = qde::kIllegalParameter;
  if (sourceRect != nullptr && destinationRect != nullptr && mask == nullptr) {
    try {
      error = Copy(source, destination, *sourceRect, *destinationRect, mode);
    } catch (const std::bad_alloc&) {
      error = qde::kMemoryFull;
    }
  }
  qde::SetError(error);
}
