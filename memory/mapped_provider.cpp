#include "memory/mapped_provider.h"

#include <memory>
#include <string>

#include "memory/Memory.h"
#include "memory/caught_code.h"
#include "platform/K.h"
#include "platform/vetrix.h"

constinit std::uint32_t PXLp_nextMappedFile = 1;

namespace {

using File = vetrix::MemoryMappedFile;

constexpr std::uint32_t FILE_MODE = 101;

// Translations are filed under this key, so its spelling stays.
constexpr const char* MAPPING_FAILED =
    "$$$/ov/PXL_MemMappedFile/MapFailre=Unable to map buffer into application memory.";

// The bytes of a file as K books them: the low 32 bits of the size.
std::int32_t Booked(std::uint64_t size) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(size));
}

std::int32_t Unbooked(std::uint64_t size) {
  return static_cast<std::int32_t>(0U - static_cast<std::uint32_t>(size));
}

// Runs an operation. No exception leaves it, and any code that one carries
// counts as lack of memory, unless it is 0.
template <class Operation>
std::int32_t Guarded(Operation operation) {
  try {
    return operation();
  } catch (...) {
    return PXLp_CaughtCode() != 0 ? PXL_Err_NO_MEMORY : PXL_Err_NONE;
  }
}

// What travels through the purge loop of a mapping. The status is set once and
// never cleared: when one attempt has failed, the later ones count as failed
// too, even if they map the file.
struct MappingRequest {
  File* file;
  void** frame;
  std::int32_t status;
};

void MapOnce(MappingRequest& request) {
  void* address = nullptr;
  try {
    address = request.file->GetAddress();
  } catch (...) {
    request.status = PXL_Err_NO_MEMORY;
    return;
  }
  *request.frame = address;
  if (address == nullptr) request.status = PXL_Err_NO_MEMORY;
}

std::int32_t AttemptMapping(void* context, std::uint8_t* done) {
  auto& request = *static_cast<MappingRequest*>(context);
  MapOnce(request);
  *done = request.status == PXL_Err_NONE ? 1 : 0;
  if (*done == 0) {
    K_ReportError(0, PXLp_Class_MAPPING, K_ZStringToUTF16String(MAPPING_FAILED));
  }
  return PXL_Err_NONE;
}

std::int32_t Map(File& file, void** frame) {
  MappingRequest request{&file, frame, PXL_Err_NONE};
  const std::int32_t loop = K_PurgeLoop(file.Size(), AttemptMapping, &request, 1);
  if (loop != PXL_Err_NONE || request.status != PXL_Err_NONE || *frame == nullptr) {
    return PXL_Err_NO_MEMORY;
  }
  K_AccountSystemAllocation(Unbooked(file.Size()));
  K_AccountAllocation(Booked(file.Size()));
  return PXL_Err_NONE;
}

std::int32_t MapPixels(void* context, void** frame) {
  if (context == nullptr) return PXL_Err_NONE;
  return Guarded([&] { return Map(*static_cast<File*>(context), frame); });
}

std::int32_t UnmapPixels(void* context, void** frame) {
  if (context == nullptr || *frame == nullptr) return PXL_Err_NONE;
  return Guarded([&] {
    auto& file = *static_cast<File*>(context);
    K_AccountAllocation(Unbooked(file.Size()));
    K_AccountSystemAllocation(Booked(file.Size()));
    file.UnmapMemory();
    file.CloseFileHandleIfPossible();
    *frame = nullptr;
    return std::int32_t{PXL_Err_NONE};
  });
}

// Leaves the application total alone: bytes still mapped stay booked there.
std::int32_t ResetFile(void* context, void** frame) {
  if (context == nullptr) return PXL_Err_NONE;
  return Guarded([&] {
    auto& file = *static_cast<File*>(context);
    K_AccountSystemAllocation(Unbooked(file.Size()));
    file.Reset();
    *frame = nullptr;
    return std::int32_t{PXL_Err_NONE};
  });
}

std::int32_t ReleaseProvider(PXL_PixelProvider** slot) {
  if (slot == nullptr || *slot == nullptr) return PXL_Err_NONE;
  return Guarded([&] {
    delete static_cast<File*>((*slot)->context);
    delete *slot;
    *slot = nullptr;
    return std::int32_t{PXL_Err_NONE};
  });
}

// Past the largest positive number the names go on with the negative ones.
std::string NextFileName() {
  std::string name = "zelk.ov.pxlmapfile.";
  name += std::to_string(static_cast<std::int32_t>(PXLp_nextMappedFile));
  ++PXLp_nextMappedFile;
  return name;
}

}  // namespace

std::int32_t PXLp_NewMappedProvider(std::uint64_t byteCount, PXL_PixelProvider** slot) {
  return Guarded([&] {
    auto* provider =
        new PXL_PixelProvider{MapPixels, UnmapPixels, ResetFile, ReleaseProvider, nullptr};
    // Stored at once: whoever owns the slot releases it, whatever comes next.
    *slot = provider;
    const std::string name = NextFileName();
    auto file = std::make_unique<File>();
    file->Init(name, byteCount, FILE_MODE);
    K_AccountSystemAllocation(Booked(byteCount));
    provider->context = file.release();
    return std::int32_t{PXL_Err_NONE};
  });
}
