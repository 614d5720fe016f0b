// QDE as the recorder plays it.
#include <cstdlib>
#include <vector>

#include "tests/support/recorder/recorder.h"

using recorder::Current;
using recorder::Join;
using recorder::Text;

struct QDE_Port {
  PixMap map{};
  PixMap* master = nullptr;
  std::vector<unsigned char> pixels;
  QDE_Device* device = nullptr;
  BitMap bits{};
};

namespace {

std::string Name(const void* address) {
  return Text(address);
}

void SetUp(QDE_Port& port, std::int16_t depth, const Rect& bounds) {
  const recorder::Script& script = Current().script;
  const int width = bounds.right - bounds.left;
  const int height = bounds.bottom - bounds.top;
  const int bytes = ((width * std::abs(depth) / 8) + 15) & ~15;
  const int stride = script.surfaceRowBytes != 0 ? script.surfaceRowBytes : bytes;
  port.pixels.assign(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height), 0xA5);
  port.map.bounds = bounds;
  port.map.pixelSize = script.surfaceDepth != 0 ? script.surfaceDepth : depth;
  port.map.rowBytes = static_cast<std::int16_t>(stride | 0x8000);
  port.map.baseAddr = reinterpret_cast<Ptr>(port.pixels.data());
  port.master = &port.map;
}

GWorldPtr MakePort(std::int16_t depth, const Rect& bounds) {
  auto* port = new QDE_Port;
  SetUp(*port, depth, bounds);
  Current().Own(port, "gworld", [port] { delete port; });
  const std::string name = Current().NameOf(port);
  Current().Name(&port->master, "map of " + name);
  Current().Name(&port->device, "device of " + name);
  Current().Name(&port->bits, "bits of " + name);
  return port;
}

}  // namespace

void HLock(Handle handle) {
  Current().Enter("HLock", Name(handle));
  Current().blocks_[handle].locked = true;
}

void HUnlock(Handle handle) {
  Current().Enter("HUnlock", Name(handle));
  Current().blocks_[handle].locked = false;
}

Handle NewEmptyHandle() {
  if (Current().Enter("NewEmptyHandle", "")) return nullptr;
  Current().MoveBlocks();
  Handle handle = Current().NewHandle(0);
  Current().Name(handle, "empty handle");
  return handle;
}

std::int16_t NewGWorld(GWorldPtr* world, std::int16_t depth, const Rect* bounds, CTabHandle colors,
                       GDHandle device, std::uint32_t flags) {
  const recorder::Aside aside;
  const bool fail = Current().Enter(
      "NewGWorld", Join(Text(depth), Text(bounds), Name(colors), Name(device), Text(flags)));
  Current().MoveBlocks();
  if (fail) {
    *world = Current().script.surfaceOfFailure;
    return Current().script.newGWorldError;
  }
  *world = MakePort(depth, *bounds);
  return 0;
}

std::uint32_t UpdateGWorld(GWorldPtr* world, std::int16_t depth, const Rect* bounds,
                           CTabHandle colors, GDHandle device, std::uint32_t flags) {
  const recorder::Aside aside;
  const recorder::Script& script = Current().script;
  const auto deviceBits = static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(device));
  const bool fail = Current().Enter(
      "UpdateGWorld",
      Join(Name(*world), Text(depth), Text(bounds), Name(colors), Text(deviceBits), Text(flags)));
  Current().MoveBlocks();
  if (script.updateReplacesSurface) *world = MakePort(depth, *bounds);
  if (script.updateLosesPixels) (*world)->map.baseAddr = nullptr;
  if (fail) return static_cast<std::uint32_t>(script.updateGWorldError);
  SetUp(**world, depth, *bounds);
  return script.updateGWorldFlags;
}

void DisposeGWorld(GWorldPtr world) {
  Current().Enter("DisposeGWorld", Name(world));
  Current().Disown(world);
  delete world;
}

GDHandle GetGWorldDevice(GWorldPtr world) {
  Current().Enter("GetGWorldDevice", Name(world));
  return &world->device;
}

PixMapHandle GetPortPixMap(GWorldPtr world) {
  if (Current().Enter("GetPortPixMap", Name(world))) return nullptr;
  if (Current().script.surfaceWithoutMap) world->master = nullptr;
  return &world->master;
}

// Failing means that the pixels are purged.
Boolean LockPixels(PixMapHandle pixels) {
  return Current().Enter("LockPixels", Name(pixels)) ? 0 : 1;
}

void UnlockPixels(PixMapHandle pixels) {
  Current().Enter("UnlockPixels", Name(pixels));
}

Ptr GetPixBaseAddr(PixMapHandle pixels) {
  Current().Enter("GetPixBaseAddr", Name(pixels));
  return (*pixels)->baseAddr;
}

void GetPort(GrafPtr* port) {
  Current().Enter("GetPort", "");
  *port = Current().script.currentPort;
}

void MacSetPort(GrafPtr port) {
  Current().Enter("MacSetPort", Name(port));
}

GDHandle GetGDevice() {
  Current().Enter("GetGDevice", "");
  return Current().script.currentDevice;
}

void SetGDevice(GDHandle device) {
  Current().Enter("SetGDevice", Name(device));
}

const BitMap* GetPortBitMapForCopyBits(CGrafPtr port) {
  Current().Enter("GetPortBitMapForCopyBits", Name(port));
  return port == nullptr ? nullptr : &port->bits;
}

void CopyBits(const BitMap* source, const BitMap* destination, const Rect* sourceRect,
              const Rect* destinationRect, std::int16_t mode, RgnHandle mask) {
  Current().Enter("CopyBits", Join(Name(source), Name(destination), Text(sourceRect),
                                   Text(destinationRect), Text(mode), Name(mask)));
}

void MacOffsetRect(Rect* rect, std::int16_t dh, std::int16_t dv) {
  Current().Enter("MacOffsetRect", Join(Text(rect), Text(dh), Text(dv)));
  rect->left = static_cast<std::int16_t>(rect->left + dh);
  rect->right = static_cast<std::int16_t>(rect->right + dh);
  rect->top = static_cast<std::int16_t>(rect->top + dv);
  rect->bottom = static_cast<std::int16_t>(rect->bottom + dv);
}

std::uint32_t TickCount() {
  Current().Enter("TickCount", "");
  return 4711;
}

void QDE_ForceBitmapCreationBitfields(Boolean on, std::int32_t keepLocal, std::int32_t bits) {
  Current().Enter("QDE_ForceBitmapCreationBitfields", Join(Text(on), Text(keepLocal), Text(bits)));
}

std::int16_t QDE_GetGWorld32PixmapFormat(GWorldPtr world, std::int32_t* format) {
  Current().Enter("QDE_GetGWorld32PixmapFormat", Join(Name(world), Text(*format)));
  if (Current().script.pixmapFormat >= 0) *format = Current().script.pixmapFormat;
  return Current().script.pixmapFormatError;
}

std::int16_t QDE_SetGWorld32PixmapFormat(GWorldPtr world, std::int32_t format) {
  Current().Enter("QDE_SetGWorld32PixmapFormat", Join(Name(world), Text(format)));
  return Current().script.pixmapFormatError;
}

void QDE_ConvertBitsFast(void* base, std::int16_t height, std::int16_t width,
                         std::int32_t rowBytes) {
  Current().Enter("QDE_ConvertBitsFast",
                  Join(Name(base), Text(height), Text(width), Text(rowBytes)));
}
