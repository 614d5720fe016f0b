// What each call does to the model of a World.
#include "tests/model/world_model.h"

#include <cstddef>

#include "tests/support/recorder/layer_errors.h"

namespace {

constexpr int kLargestRow = 32766;
constexpr int kDeepestWithSparePixel = 32;

int RoundedUp(int bytes) {
  return (bytes + 15) / 16 * 16;
}

int WidthOf(const Rect& rect) {
  return rect.right - rect.left;
}

int HeightOf(const Rect& rect) {
  return rect.bottom - rect.top;
}

bool HasSparePixel(int depth) {
  return depth <= kDeepestWithSparePixel;
}

int PixelsInRow(const Rect& rect, int depth) {
  return WidthOf(rect) + (HasSparePixel(depth) ? 1 : 0);
}

int FrameRow(const Rect& rect, int depth) {
  return RoundedUp(PixelsInRow(rect, depth) * depth / 8);
}

// Room to align the first pixel; deep frames have four bytes more.
std::uint64_t FrameBytes(const Rect& rect, int depth) {
  const int extra = HasSparePixel(depth) ? 16 : 20;
  const int bytes = FrameRow(rect, depth) * HeightOf(rect) + extra;
  return static_cast<std::uint64_t>(bytes);
}

bool IsTooWide(const Rect& rect, int depth) {
  return PixelsInRow(rect, depth) > kLargestRow;
}

// The drawing layer's rows have no spare pixel.
int SurfaceRow(const Rect& rect, int depth) {
  return RoundedUp(WidthOf(rect) * depth / 8);
}

Rect AtOrigin(const Rect& rect) {
  return {0, 0, static_cast<std::int16_t>(HeightOf(rect)),
          static_cast<std::int16_t>(WidthOf(rect))};
}

Answer Reported(std::int32_t status) {
  return {status, 1};
}

bool FailsInTheLayer(Trouble trouble) {
  return trouble == Trouble::SurfaceFails || trouble == Trouble::SurfaceNoMemory;
}

std::int32_t LayerError(Trouble trouble) {
  return trouble == Trouble::SurfaceNoMemory ? kLayerMemoryFull : kLayerError;
}

bool HasNoFrame(Trouble trouble) {
  return trouble == Trouble::NoMemory || trouble == Trouble::FirstFrameFails;
}

std::uint32_t FlagsOf(const Wish& wish) {
  std::uint32_t flags = wish.clear ? std::uint32_t{PXL_Flag_CLEAR} : 0U;
  if (wish.alternate) flags |= PXL_Flag_ALT_ORDER;
  if (wish.backing == Backing::Frame) flags |= PXL_Flag_NO_PLATFORM;
  if (wish.backing == Backing::Geometry) flags |= PXL_Flag_DEFERRED;
  if (wish.backing == Backing::Mapped) flags |= PXL_Flag_DEFERRED | PXL_Flag_MAPPED;
  return flags;
}

}  // namespace

bool operator==(const Answer& a, const Answer& b) {
  return a.status == b.status && a.reports == b.reports && a.first == b.first &&
         a.second == b.second && a.beeps == b.beeps;
}

Answer WorldModel::New(const Wish& wish, Trouble trouble) {
  if (trouble == Trouble::NoHandle && !wish.callersHandle) return {PXL_Err_NO_MEMORY};
  const Answer answer = NewPixels(wish, trouble);
  if (answer.status != PXL_Err_NONE) return answer;
  live = true;
  ownsHandle = !wish.callersHandle;
  flags = FlagsOf(wish);
  bounds = wish.rect;
  depth = wish.depth;
  backing = wish.backing;
  lockCount = 0;
  base = false;
  frame = wish.backing == Backing::Frame;
  purged = false;
  const bool surface = wish.backing == Backing::Surface;
  frameSize = surface ? 0 : FrameBytes(wish.rect, wish.depth);
  blockBytes = frameSize;
  aligned = true;
  rowBytes = surface ? SurfaceRow(wish.rect, wish.depth) : FrameRow(wish.rect, wish.depth);
  if (wish.backing == Backing::Mapped) systemBytes += static_cast<std::int64_t>(frameSize);
  ++worldCount;
  return answer;
}

Answer WorldModel::NewPixels(const Wish& wish, Trouble trouble) {
  if (wish.backing == Backing::Surface) {
    return FailsInTheLayer(trouble) ? Reported(LayerError(trouble)) : Answer{};
  }
  if (IsTooWide(wish.rect, wish.depth)) return Reported(PXL_Err_REFUSED);
  if (wish.backing == Backing::Frame && HasNoFrame(trouble)) return Reported(PXL_Err_NO_MEMORY);
  if (wish.backing == Backing::Mapped && trouble == Trouble::NoFile) {
    return Reported(PXL_Err_NO_MEMORY);
  }
  return {};
}

// A World whose pixels cannot be freed is gone, but counted and kept.
Answer WorldModel::Dispose(Trouble trouble) {
  if (!live) return Reported(PXL_Err_INVALID);
  live = false;
  if (backing == Backing::Mapped) {
    systemBytes -= static_cast<std::int64_t>(frameSize);
    if (trouble == Trouble::ResetThrows) {
      ++lostFiles;
      return Reported(PXL_Err_NO_MEMORY);
    }
  }
  --worldCount;
  return {};
}

Answer WorldModel::Lock(bool asks, Trouble trouble) {
  if (!live) return Reported(PXL_Err_INVALID);
  Answer answer;
  if (backing == Backing::Surface) {
    answer = LockSurface(asks);
  } else if (backing == Backing::Mapped) {
    answer = LockMapped(trouble);
  } else if (frame) {
    ++lockCount;
    if (lockCount == 1) base = true;
  }
  if (asks && answer.first == 9) answer.first = 0;
  return answer;
}

Answer WorldModel::LockSurface(bool asks) {
  ++lockCount;
  if (lockCount != 1) return {};
  if (!purged) {
    base = true;
    return {};
  }
  lockCount = 0;
  if (!asks) return Reported(PXL_Err_PURGED);
  Answer answer;
  answer.first = 1;
  return answer;
}

Answer WorldModel::LockMapped(Trouble trouble) {
  ++lockCount;
  if (lockCount != 1) return {frame ? PXL_Err_NONE : PXL_Err_NO_MEMORY};
  switch (trouble) {
    case Trouble::FirstFrameFails:
      return {PXL_Err_NO_MEMORY};
    case Trouble::NoView:
      frame = false;
      return {PXL_Err_NO_MEMORY, 2};
    case Trouble::NoViewAtFirst:
    case Trouble::ViewThrowsAtFirst:
      // Too late: the view is there, and yet the lock counts as failed.
      frame = true;
      return {PXL_Err_NO_MEMORY, 2};
    case Trouble::FrameWithCode:
      frame = true;
      return {PXL_Err_NO_MEMORY};
    default:
      frame = true;
      systemBytes -= static_cast<std::int64_t>(frameSize);
      applicationBytes += static_cast<std::int64_t>(frameSize);
      return {};
  }
}

Answer WorldModel::LoadLock(bool asksLoaded, bool asksReloaded, Trouble trouble) {
  Answer answer = Lock(true, trouble);
  const bool reloads = answer.status == PXL_Err_NONE && answer.first == 1;
  bool reloaded = false;
  answer.first = 9;
  if (!reloads) {
    if (asksLoaded) answer.first = 1;
  } else {
    answer = Reload(asksLoaded, trouble);
    if (answer.status == PXL_Err_NONE && answer.first != 0) {
      const Answer again = Lock(false, trouble);
      answer.status = again.status;
      answer.reports += again.reports;
      reloaded = again.status == PXL_Err_NONE;
    }
  }
  answer.second = asksReloaded ? static_cast<int>(reloaded) : 9;
  return answer;
}

Answer WorldModel::Reload(bool asks, Trouble trouble) {
  Answer answer;
  if (trouble == Trouble::SurfaceNoMemory && asks) {
    answer.first = 0;
    return answer;
  }
  if (FailsInTheLayer(trouble)) return Reported(LayerError(trouble));
  purged = trouble == Trouble::PurgedOnceMore;
  if (asks) answer.first = 1;
  return answer;
}

Answer WorldModel::Unlock(Trouble trouble) {
  Answer answer;
  if (!live) {
    answer.reports = 1;
    return answer;
  }
  if (backing == Backing::Surface || frame) {
    --lockCount;
    if (lockCount == 0) base = false;
    if (lockCount == 0 && backing == Backing::Mapped) Unmap(trouble, answer);
  }
  if (lockCount < 0) ++answer.reports;
  return answer;
}

void WorldModel::Unmap(Trouble trouble, Answer& answer) {
  applicationBytes -= static_cast<std::int64_t>(frameSize);
  systemBytes += static_cast<std::int64_t>(frameSize);
  frame = trouble == Trouble::UnmapThrows;
  if (frame) ++answer.reports;
}

Answer WorldModel::Update(int newDepth, const Rect* rect, Trouble trouble) {
  if (!live) return Reported(PXL_Err_INVALID);
  if (lockCount != 0) return Reported(PXL_Err_REFUSED);
  const Rect wanted = rect != nullptr ? *rect : AtOrigin(bounds);
  const int wantedDepth = newDepth != 0 ? newDepth : depth;
  if (backing == Backing::Surface) {
    if (FailsInTheLayer(trouble)) return Reported(LayerError(trouble));
    TakeGeometry(wanted, wantedDepth);
    rowBytes = SurfaceRow(bounds, depth);
    purged = trouble == Trouble::PurgedOnceMore;
    return {};
  }
  if (!frame) return {};
  if (wantedDepth != depth) return Reported(PXL_Err_REFUSED);
  if (WidthOf(wanted) == Width() && HeightOf(wanted) == Height()) return {};
  if (IsTooWide(wanted, depth)) return Reported(PXL_Err_REFUSED);
  return Resize(wanted, trouble);
}

// The size that is asked for is kept in any case; geometry only goes with a
// frame for it.
Answer WorldModel::Resize(const Rect& rect, Trouble trouble) {
  const std::uint64_t oldSize = frameSize;
  frameSize = FrameBytes(rect, depth);
  if (trouble == Trouble::NoMemory) {
    frame = false;
    flags |= PXL_Flag_PURGEABLE;
    Answer answer = Reported(PXL_Err_NO_MEMORY);
    answer.beeps = 2;
    return answer;
  }
  if (trouble == Trouble::FirstFrameFails || trouble == Trouble::FrameWithCode) {
    blockBytes = oldSize;
    aligned = false;
    if (trouble == Trouble::FirstFrameFails) return Reported(PXL_Err_NO_MEMORY);
    ++lostBlocks;
    return {9};
  }
  blockBytes = frameSize;
  aligned = true;
  TakeGeometry(rect, depth);
  rowBytes = FrameRow(bounds, depth);
  return {};
}

void WorldModel::TakeGeometry(const Rect& rect, int newDepth) {
  bounds = AtOrigin(rect);
  depth = newDepth;
}

Answer WorldModel::GetOrder() const {
  Answer answer;
  answer.first = backing != Backing::Surface && (flags & PXL_Flag_ALT_ORDER) != 0 ? 1 : 0;
  return answer;
}

Answer WorldModel::SetOrder(int order) {
  if (depth != PXL_Depth_32) return Reported(PXL_Err_REFUSED);
  if (backing != Backing::Surface) AssumeOrder(order);
  return {};
}

void WorldModel::AssumeOrder(int order) {
  flags &= ~std::uint32_t{PXL_Flag_ALT_ORDER};
  if (order != 0) flags |= PXL_Flag_ALT_ORDER;
}

bool WorldModel::HasAddress() const {
  return live && (backing == Backing::Surface || frame);
}

bool WorldModel::CanWrite() const {
  if (!HasAddress()) return false;
  if (backing == Backing::Surface) return true;
  return blockBytes >= FrameBytes(bounds, depth);
}

bool WorldModel::HasStrandedView() const {
  return live && backing == Backing::Mapped && frame;
}
