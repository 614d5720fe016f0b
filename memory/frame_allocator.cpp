#include <cstdlib>

#include "memory/Memory.h"
#include "memory/frame_settings.h"
#include "platform/K.h"

namespace {

// How K names the frames in its own lists.
constexpr const char* POOL_LABEL = "PXL WORLD";

// What travels through the purge loop.
struct FrameRequest {
  std::uint64_t size;
  void* address;
};

void* PoolFrame(std::uint64_t size) {
  const std::uint32_t owner = PXLp_ReportCode(PXLp_Site::NewWorld);
  // A null reference gives a null address.
  return K_GetRecycledPtrBaseAddress(K_AllocateRecycledPtr(owner, POOL_LABEL, size));
}

std::int32_t AttemptFrame(void* context, std::uint8_t* done) {
  auto& request = *static_cast<FrameRequest*>(context);
  request.address =
      PXLp_IsPoolFrame(request.size) ? PoolFrame(request.size) : std::malloc(request.size);
  *done = request.address != nullptr ? 1 : 0;
  return PXL_Err_NONE;
}

}  // namespace

std::int32_t PXLp_AllocateFrameQuiet(std::uint64_t size, std::uint64_t /*reserved*/, void** frame) {
  PXLp_LoadFrameSettings();
  FrameRequest request{size, nullptr};
  const std::int32_t status = K_PurgeLoop(size, AttemptFrame, &request, 1);
  *frame = request.address;
  return request.address == nullptr ? std::int32_t{PXL_Err_NO_MEMORY} : status;
}

std::int32_t PXLp_FreeFrame(void* frame, std::uint64_t size) {
  if (PXLp_IsPoolFrame(size)) {
    K_FreeRecycledPtr(frame);
  } else {
    std::free(frame);
  }
  return PXL_Err_NONE;
}

std::int32_t PXL_AllocateFrameQuiet(std::uint64_t size, std::uint64_t reserved, void** frame) {
  return PXLp_AllocateFrameQuiet(size, reserved, frame);
}

std::int32_t PXL_FreeFrame(void* frame, std::uint64_t size) {
  return PXLp_FreeFrame(frame, size);
}
