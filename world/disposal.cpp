// PXL_DisposeWorld and the release of a World's parts.
#include "world/disposal.h"

#include "memory/frame_allocator.h"
#include "platform/K.h"
#include "platform/QDE.h"
#include "platform/record_access.h"
#include "world/record/validity.h"

std::int32_t PXL_DisposeWorld(PXL_WorldHandle worldH) {
  std::int32_t status = PXLp_CheckWorld(PXLp_Site::DisposeWorld, worldH);
  if (status != PXL_Err_NONE) return status;
  status = PXLp_ReleaseWorld(worldH);
  // A World whose pixels could not be released is disposed of, but stays counted.
  if (status == PXL_Err_NONE) --PXLp_G.worldCount;
  return status;
}

std::int32_t PXLp_ReleaseWorld(PXL_WorldHandle worldH) {
  if (worldH == nullptr) return PXL_Err_NONE;
  HLock(AsHandle(worldH));
  std::int32_t status = PXL_Err_NONE;
  if (RecordOf(worldH)->hasFrame != 0) status = PXLp_ReleasePixels(&RecordOf(worldH)->pixels);

  const PXL_World& world = *RecordOf(worldH);
  if (world.hasGWorld != 0 && world.gworld != nullptr) DisposeGWorld(world.gworld);

  RecordOf(worldH)->headMark = 0;
  RecordOf(worldH)->tailMark = 0;
  if (RecordOf(worldH)->ownsHandle != 0) {
    K_FreeHandle(AsHandle(worldH));
  } else {
    HUnlock(AsHandle(worldH));
  }
  return status;
}

std::int32_t PXLp_ReleasePixels(PXL_PixelBuffer* pixels) {
  std::int32_t status = PXL_Err_NONE;
  PXL_PixelProvider* provider = pixels->provider;
  if (provider != nullptr) {
    status = provider->freePixels(provider->context, &pixels->frame);
  } else {
    // Called for a null frame too: a geometry-only World has none.
    PXLp_ReleaseFrame(pixels->frame, pixels->frameSize);
  }
  pixels->baseAddr = nullptr;
  // The provider is read again, since freePixels is the host's code and may have
  // cleared or replaced it. After an error it is kept: it still has its pixels.
  if (pixels->provider != nullptr && status == PXL_Err_NONE) {
    status = pixels->provider->release(&pixels->provider);
  }
  return status;
}
