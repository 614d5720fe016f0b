// A model of one World: the promises of each call, in the terms of the public
// header, independent of the module's code.
#ifndef TESTS_MODEL_WORLD_MODEL_H
#define TESTS_MODEL_WORLD_MODEL_H

#include <cstdint>

#include "PXL.h"

// A failure around a call; it has an effect only if the call reaches it.
enum class Trouble {
  None,
  NoHandle,           // no handle for a record
  NoMemory,           // no frame, however often it is tried
  FirstTryFails,      // a frame only after memory was freed
  FirstFrameFails,    // the first request for a frame or a view fails
  FrameWithCode,      // the first request succeeds and returns code 9
  SurfaceFails,       // the drawing layer's error -50
  SurfaceNoMemory,    // the drawing layer's error -108
  PurgedOnceMore,     // pixels vanish again as soon as they are re-created
  NoFile,             // the mapped file cannot be made
  NoViewAtFirst,      // the first attempt to map returns null, the second works
  ViewThrowsAtFirst,  // the same with an exception
  NoView,             // no attempt to map succeeds
  UnmapThrows,
  ResetThrows,
  Count
};

enum class Backing { Surface, Frame, Geometry, Mapped };

struct Wish {
  Backing backing = Backing::Surface;
  std::int32_t depth = 32;
  bool callersHandle = false;
  bool clear = false;
  bool alternate = false;  // of a 32-bit frame
  Rect rect{};
};

// The results of a call. The flags are 9 where they are not written.
struct Answer {
  std::int32_t status = 0;
  int reports = 0;
  int first = 9;   // purged, loaded, canSet, or the order
  int second = 9;  // reloaded
  int beeps = 0;
};
bool operator==(const Answer& a, const Answer& b);

struct WorldModel {
  // The record.
  bool live = false;
  bool ownsHandle = false;
  std::uint32_t flags = 0;
  Rect bounds{};
  int depth = 0;
  Backing backing = Backing::Surface;
  int lockCount = 0;
  bool frame = false;
  bool base = false;
  std::uint64_t frameSize = 0;
  int rowBytes = 0;
  // Beside it.
  int worldCount = 0;
  int lostBlocks = 0;
  int lostFiles = 0;
  bool purged = false;           // the surface's pixels
  std::uint64_t blockBytes = 0;  // what the frame's block really holds
  bool aligned = false;          // a block of the old size keeps the old offset
  std::int64_t applicationBytes = 0;
  std::int64_t systemBytes = 0;

  Answer New(const Wish& wish, Trouble trouble);
  Answer Dispose(Trouble trouble);
  Answer Lock(bool asks, Trouble trouble);
  Answer LoadLock(bool asksLoaded, bool asksReloaded, Trouble trouble);
  Answer Unlock(Trouble trouble);
  // A null rectangle keeps the size.
  Answer Update(int newDepth, const Rect* rect, Trouble trouble);
  Answer GetOrder() const;
  Answer SetOrder(int order);
  void AssumeOrder(int order);

  [[nodiscard]] int Width() const { return bounds.right - bounds.left; }
  [[nodiscard]] int Height() const { return bounds.bottom - bounds.top; }
  // Whether the pixels can be asked for, and written in the World's geometry.
  [[nodiscard]] bool HasAddress() const;
  [[nodiscard]] bool CanWrite() const;
  // Whether an unlocked World still has the view of its mapped file, which could
  // not be unmapped. Such a World must not be updated to another size.
  [[nodiscard]] bool HasStrandedView() const;

 private:
  Answer NewPixels(const Wish& wish, Trouble trouble);
  Answer LockSurface(bool asks);
  Answer LockMapped(Trouble trouble);
  Answer Reload(bool asks, Trouble trouble);
  void Unmap(Trouble trouble, Answer& answer);
  Answer Resize(const Rect& rect, Trouble trouble);
  void TakeGeometry(const Rect& rect, int newDepth);
};

#endif
