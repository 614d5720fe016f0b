// The operations of a mapped provider.
#include "memory/mapped_provider.h"

#include <memory>
#include <string>

#include "memory/caught_exception.h"
#include "memory/mapped_provider_reset.h"
#include "platform/K.h"
#include "platform/vetrix.h"
#include "state/messages/reports.h"

namespace {

constinit std::uint32_t nextFileNumber = 1;

using File = vetrix::MemoryMappedFile;

constexpr std::uint32_t kFileMode = 101;

// Translations are filed under this key, so its spelling stays.
constexpr const char* kMappingFailed =
    "$$$/ov/PXL_MemMappedFile/MapFailre=Unable to map buffer into application memory.";

// K accounts for a file with the low 32 bits of its size.
std::int32_t Booked(std::uint64_t size) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(size));
}

std::int32_t Unbooked(std::uint64_t size) {
  return static_cast<std::int32_t>(0U - static_cast<std::uint32_t>(size));
}

// Runs an operation and catches its exceptions: any code but 0 counts as lack of
// memory.
template <typename Operation>
std::int32_t Guarded(Operation operation) {
  try {
    return operation();
  } catch (...) {
    return PXLp_TranslateCaughtException() != 0 ? PXL_Err_NO_MEMORY : PXL_Err_NONE;
  }
}

// The context of an attempt in the purge loop. The status is never cleared: after
// one failed attempt the later ones count as failed too, even if they map the
// file.
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
    K_ReportError(0, PXLp_kClassMapping, K_ZStringToUTF16String(kMappingFailed));
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

// Does not change the application total: bytes that are still mapped stay in it.
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

// After the largest positive number the names continue with the negative ones.
std::string NextFileName() {
  std::string name = "zelk.ov.pxlmapfile.";
  name += std::to_string(static_cast<std::int32_t>(nextFileNumber));
  ++nextFileNumber;
  return name;
}

}  // namespace

std::uint32_t& PXLp_AccessNextFileNumber() {
  return nextFileNumber;
}

std::int32_t PXLp_NewMappedProvider(std::uint64_t byteCount, PXL_PixelProvider** slot) {
  return Guarded([&] {
    auto* provider =
        new PXL_PixelProvider{MapPixels, UnmapPixels, ResetFile, ReleaseProvider, nullptr};
    // Stored at once: the owner of the slot releases it after a failure too.
    *slot = provider;
    const std::string name = NextFileName();
    auto file = std::make_unique<File>();
    file->Init(name, byteCount, kFileMode);
    K_AccountSystemAllocation(Booked(byteCount));
    provider->context = file.release();
    return std::int32_t{PXL_Err_NONE};
  });
}
