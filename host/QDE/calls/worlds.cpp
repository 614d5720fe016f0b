// The calls on offscreen worlds.
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "K_host.h"
#include "QDE_host.h"
#include "host/QDE/calls/ports.h"
#include "host/QDE/pixels/faults.h"
#include "host/QDE/pixels/layout.h"
#include "host/QDE/surfaces/registry.h"
#include "host/QDE/surfaces/surface.h"

namespace {

using qde::Carry;
using qde::Error;
using qde::Extent;
using qde::Layout;
using qde::Surface;

// The published flags of NewGWorld, the reserved two included.
constexpr std::uint32_t kCreationFlags = 0x3F;

std::uint64_t theWorldCount = 0;

// ---- NewGWorld

struct Order {
  std::int16_t depth;
  const Rect* bounds;
  CTabHandle colors;
  GDHandle device;
  std::uint32_t flags;
};

// Devices are the main one and those of surfaces.
const QDE_Device* FindDevice(GDHandle device) {
  const bool live = device == QDE_MainDevice() || qde::FindSurface(device) != nullptr;
  return live ? *device : nullptr;
}

// Determines the device that the world shares, null for none, and its depth.
Error ResolveDevice(Order* order) {
  if ((order->flags & QDE_Flag_NO_NEW_DEVICE) != 0 && order->device != nullptr) {
    const QDE_Device* device = FindDevice(order->device);
    if (device == nullptr) return qde::kIllegalParameter;
    order->depth = (*device->gdPMap)->pixelSize;
    order->colors = (*device->gdPMap)->pmTable;
    return qde::kNoError;
  }
  const bool shared = order->depth == 0 || (order->flags & QDE_Flag_NO_NEW_DEVICE) != 0;
  order->device = shared ? QDE_MainDevice() : nullptr;
  if (order->depth == 0) order->depth = qde::MainDepth();
  return qde::kNoError;
}

Error CheckColors(std::int16_t depth, CTabHandle colors) {
  if (depth != 8 || colors == nullptr) return qde::kNoError;
  const bool sound = *colors != nullptr && qde::IsSound(**colors);
  return sound ? qde::kNoError : qde::kIllegalParameter;
}

Error PlanWorld(Order* order, Layout* layout) {
  if (order->bounds == nullptr || (order->flags & ~kCreationFlags) != 0) {
    return qde::kIllegalParameter;
  }
  Error error = ResolveDevice(order);
  if (error == qde::kNoError) error = CheckColors(order->depth, order->colors);
  if (error == qde::kNoError) error = qde::PlanLayout(order->depth, *order->bounds, layout);
  return error;
}

Error MakeWorld(Order order, GWorldPtr* world) {
  Layout layout{};
  const Error error = PlanWorld(&order, &layout);
  if (error != qde::kNoError) return error;
  const bool purgeable = (order.flags & QDE_Flag_PIX_PURGE) != 0;
  qde::PixelBlock pixels = qde::NewPixelBlock(qde::ByteCount(layout), purgeable);
  if (pixels == nullptr) return qde::kMemoryFull;
  auto surface =
      std::make_unique<Surface>(layout, std::move(pixels), purgeable, order.colors, order.device);
  *world = surface->AddPort();
  // Owned through its port until DisposeGWorld.
  static_cast<void>(surface.release());
  ++theWorldCount;
  return qde::kNoError;
}

// ---- UpdateGWorld

// How old pixels are carried over; nullopt for invalid flags.
std::optional<Carry> CarryFor(std::uint32_t flags) {
  switch (flags & ~std::uint32_t{QDE_Flag_KEEP_LOCAL}) {
    case 0:
      return Carry{Extent::Nothing, false};
    case QDE_Flag_CLIP_PIX:
      return Carry{Extent::Clipped, false};
    case QDE_Flag_CLIP_PIX | QDE_Flag_DITHER_PIX:
      return Carry{Extent::Clipped, true};
    case QDE_Flag_STRETCH_PIX:
      return Carry{Extent::Stretched, false};
    case QDE_Flag_STRETCH_PIX | QDE_Flag_DITHER_PIX:
      return Carry{Extent::Stretched, true};
    default:
      return std::nullopt;
  }
}

// Whether old indices would show other colours.
bool GetsNewTable(const Surface& surface, const Layout& wanted, CTabHandle colors) {
  const bool staysIndexed = surface.GetLayout().depth == 8 && wanted.depth == 8;
  return staysIndexed && !surface.HasTable(colors);
}

bool HasOtherShape(Surface* surface, const Layout& wanted) {
  const Layout& layout = surface->GetLayout();
  return layout.depth != wanted.depth || qde::Width(layout.bounds) != qde::Width(wanted.bounds) ||
         qde::Height(layout.bounds) != qde::Height(wanted.bounds) || surface->Pixels() == nullptr;
}

std::uint32_t ResultFlags(const Layout& before, const Layout& after) {
  std::uint32_t flags = QDE_Flag_REALLOC_PIX;
  if (before.depth != after.depth) flags |= QDE_Flag_NEW_DEPTH;
  if (before.rowBytes != after.rowBytes) flags |= QDE_Flag_NEW_ROW_BYTES;
  return flags;
}

Error ChangeSurface(Surface* surface, const Order& order, std::uint32_t* changes) {
  const std::optional<Carry> carry = CarryFor(order.flags);
  if (!carry || order.bounds == nullptr) return qde::kIllegalParameter;
  const std::int16_t depth = order.depth != 0 ? order.depth : qde::MainDepth();
  Error error = CheckColors(depth, order.colors);
  Layout wanted{};
  if (error == qde::kNoError) error = qde::PlanLayout(depth, *order.bounds, &wanted);
  if (error != qde::kNoError) return error;
  const bool remapped = GetsNewTable(*surface, wanted, order.colors);
  if (!remapped && !HasOtherShape(surface, wanted)) {
    surface->MoveBounds(wanted.bounds);
    return qde::kNoError;
  }
  const Layout before = surface->GetLayout();
  error = surface->Rebuild(wanted, order.colors, *carry);
  if (error != qde::kNoError) return error;
  *changes = ResultFlags(before, wanted);
  if (remapped) *changes |= QDE_Flag_MAP_PIX;
  return qde::kNoError;
}

// Calls, and converts std::bad_alloc to an error.
template <typename Call>
Error Guarded(Call call) {
  try {
    return call();
  } catch (const std::bad_alloc&) {
    return qde::kMemoryFull;
  }
}

Error UpdateSurface(Surface* surface, GWorldPtr* world, const Order& order,
                    std::uint32_t* changes) {
  const Error fault = qde::TakeFault(QDE_Call_UPDATE_GWORLD);
  const Error error = Guarded([&] {
    if (qde::TakeReplacement()) *world = surface->AddPort();
    return fault != qde::kNoError ? fault : ChangeSurface(surface, order, changes);
  });
  if (error != qde::kNoError && qde::FailedUpdatesLosePixels()) surface->LosePixels();
  return error;
}

Surface* SurfaceOf(GWorldPtr world) {
  Surface* surface = qde::FindSurface(world);
  qde::SetError(surface != nullptr ? qde::kNoError : qde::kIllegalParameter);
  return surface;
}

}  // namespace

std::int16_t NewGWorld(GWorldPtr* world, std::int16_t depth, const Rect* bounds, CTabHandle colors,
                       GDHandle device, std::uint32_t flags) {
  if (world == nullptr) return qde::SetError(qde::kIllegalParameter);
  *world = nullptr;
  const Error fault = qde::TakeFault(QDE_Call_NEW_GWORLD);
  if (fault != qde::kNoError) return qde::SetError(fault);
  K_MoveUnlockedHandles();
  const auto make = [&] { return MakeWorld({depth, bounds, colors, device, flags}, world); };
  return qde::SetError(Guarded(make));
}

std::uint32_t UpdateGWorld(GWorldPtr* world, std::int16_t depth, const Rect* bounds,
                           CTabHandle colors, GDHandle device, std::uint32_t flags) {
  K_MoveUnlockedHandles();
  Surface* surface = world != nullptr ? qde::FindSurface(*world) : nullptr;
  std::uint32_t changes = 0;
  Error error = qde::kIllegalParameter;
  if (surface != nullptr) {
    error = UpdateSurface(surface, world, {depth, bounds, colors, device, flags}, &changes);
  }
  qde::SetError(error);
  return error == qde::kNoError ? changes : static_cast<std::uint32_t>(std::int32_t{error});
}

void DisposeGWorld(GWorldPtr world) {
  Surface* surface = qde::FindSurface(world);
  if (surface == nullptr) return;
  qde::LeaveSurface(*surface);
  delete surface;
  --theWorldCount;
}

GDHandle GetGWorldDevice(GWorldPtr world) {
  const Surface* surface = SurfaceOf(world);
  return surface != nullptr ? surface->Device() : nullptr;
}

PixMapHandle GetPortPixMap(GWorldPtr world) {
  Surface* surface = SurfaceOf(world);
  return surface != nullptr ? surface->Map() : nullptr;
}

const BitMap* GetPortBitMapForCopyBits(CGrafPtr port) {
  Surface* surface = SurfaceOf(port);
  // A pixel map starts with the members of a bitmap; its rowBytes marks it.
  return surface != nullptr ? reinterpret_cast<const BitMap*>(*surface->Map()) : nullptr;
}

std::uint64_t QDE_CountWorlds() {
  return theWorldCount;
}
