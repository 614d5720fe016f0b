// Allocates, finds and pins blocks of pixels in K's store.
#include "host/QDE/surfaces/pixel_block.h"

#include <utility>

#include "K_host.h"

namespace qde {
namespace {

struct Request {
  std::uint64_t size;
  Handle handle;
};

std::int32_t TryToAllocate(void* context, std::uint8_t* done) {
  auto* request = static_cast<Request*>(context);
  request->handle = K_NewHandle(request->size);
  *done = request->handle != nullptr ? 1 : 0;
  return 0;
}

}  // namespace

void FreeBlock::operator()(Handle handle) const {
  K_FreeHandle(handle);
}

PixelBlock NewPixelBlock(std::uint64_t size, bool purgeable) {
  Request request{size, nullptr};
  K_PurgeLoop(size, TryToAllocate, &request, 1);
  if (request.handle != nullptr && purgeable) K_SetHandlePurgeable(request.handle, 1);
  return PixelBlock(request.handle);
}

Handle HandleIn(Ptr baseAddr) {
  return K_IsHandle(baseAddr) != 0 ? reinterpret_cast<Handle>(baseAddr) : nullptr;
}

Ptr PixelsOf(Handle handle, std::uint64_t size) {
  return handle != nullptr && K_GetHandleSize(handle) >= size ? *handle : nullptr;
}

Pin::Pin(Handle handle) {
  if (K_IsHandleLocked(handle) != 0) return;
  K_LockHandle(handle);
  handle_ = handle;
}

Pin::Pin(Pin&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {
}

Pin& Pin::operator=(Pin&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

Pin::~Pin() {
  K_UnlockHandle(handle_);
}

}  // namespace qde
