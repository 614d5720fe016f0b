#include "memory/Memory.h"
#include "platform/K.h"
#include "platform/QDE.h"
#include "platform/record_access.h"
#include "world/creation.h"
#include "world/record/validity.h"

std::int32_t PXL_DisposeWorld(PXL_WorldHandle worldH) {
  std::int32_t status = PXLp_CheckWorld(PXLp_Site::DisposeWorld, worldH);
  if (status != PXL_Err_NONE) return status;
  status = PXLp_ReleaseWorld(worldH);
  // A World whose pixels could not be released is gone, but stays counted.
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

// The pixels are part of a locked record.
std::int32_t PXLp_ReleasePixels(PXL_PixelBuffer* pixels) {
  std::int32_t status = PXL_Err_NONE;
  PXL_PixelProvider* provider = pixels->provider;
  if (provider != nullptr) {
    status = provider->freePixels(provider->context, &pixels->frame);
  } else {
    // Also without a frame, as a geometry-only World is.
    status = PXLp_FreeFrame(pixels->frame, pixels->frameSize);
  }
  pixels->baseAddr = nullptr;
  // A provider that could not free its pixels is kept: they are still there.
  if (pixels->provider != nullptr && status == PXL_Err_NONE) {
    status = pixels->provider->release(&pixels->provider);
  }
  return status;
}
