// Frames from the heap or from K's recycled pool.
#include "memory/frame_allocator.h"

#include <cstdlib>

#include "PXL.h"
#include "memory/frame_settings.h"
#include "platform/K.h"
#include "state/messages/reports.h"

namespace {

// The name of the frames in K's lists.
constexpr const char* kPoolLabel = "PXL WORLD";

// The context of an attempt in the purge loop.
struct FrameRequest {
  std::uint64_t size;
  void* address;
};

void* PoolFrame(std::uint64_t size) {
  const std::uint32_t owner = PXLp_MakeReportCode(PXLp_Site::NewWorld);
  // A null reference has a null address.
  return K_GetRecycledPtrBaseAddress(K_AllocateRecycledPtr(owner, kPoolLabel, size));
}

std::int32_t AttemptFrame(void* context, std::uint8_t* done) {
  auto& request = *static_cast<FrameRequest*>(context);
  request.address =
      PXLp_IsPoolFrame(request.size) ? PoolFrame(request.size) : std::malloc(request.size);
  *done = request.address != nullptr ? 1 : 0;
  return PXL_Err_NONE;
}

}  // namespace

std::int32_t PXLp_AcquireFrame(std::uint64_t size, void** frame) {
  PXLp_LoadFrameSettings();
  FrameRequest request{size, nullptr};
  const std::int32_t status = K_PurgeLoop(size, AttemptFrame, &request, 1);
  *frame = request.address;
  return request.address == nullptr ? std::int32_t{PXL_Err_NO_MEMORY} : status;
}

void PXLp_ReleaseFrame(void* frame, std::uint64_t size) {
  if (PXLp_IsPoolFrame(size)) {
    K_FreeRecycledPtr(frame);
  } else {
    std::free(frame);
  }
}

std::int32_t PXL_AllocateFrameQuiet(std::uint64_t size, std::uint64_t /*reserved*/, void** frame) {
  return PXLp_AcquireFrame(size, frame);
}

std::int32_t PXL_FreeFrame(void* frame, std::uint64_t size) {
  PXLp_ReleaseFrame(frame, size);
  return PXL_Err_NONE;
}
