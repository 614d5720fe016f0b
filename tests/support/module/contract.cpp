// The module as it is when it has just been loaded.
#include "tests/support/module/contract.h"

#include <cstring>

#include "memory/frame_settings_reset.h"
#include "memory/mapped_provider_reset.h"
#include "transfer/kernels/conversion_tables.h"
#include "transfer/kernels/kernel_set.h"
#include "transfer/kernels/selection.h"
#include "world/version_check_reset.h"

namespace {

// The module's state as it was loaded, before any test could change it.
struct LoadedState {
  PXL_ModuleState module = PXLp_G;
  PXLp_FrameSettings frameSettings = PXLp_AccessFrameSettings();
  std::uint32_t nextMappedFile = PXLp_AccessNextFileNumber();
  bool librariesChecked = PXLp_AccessLibrariesChecked();
  PXLp_KernelSet kernels = PXLp_selectedKernels;
};
const LoadedState kLoaded;

}  // namespace

// Steps that happen once a process happen once a test.
void Contract::UnloadModule() {
  PXLp_G = kLoaded.module;
  PXLp_AccessFrameSettings() = kLoaded.frameSettings;
  PXLp_AccessNextFileNumber() = kLoaded.nextMappedFile;
  PXLp_AccessLibrariesChecked() = kLoaded.librariesChecked;
  PXLp_selectedKernels = kLoaded.kernels;
  PXLp_table8to16.fill(0);
  PXLp_table8toF.fill(0.0F);
  Kp_G_err_buf = -1;
  std::memset(Kp_G_buffer, 0, sizeof Kp_G_buffer);
}

Contract::Contract() : recorder_(recorder::Current()) {
  Unload();
}

Contract::~Contract() {
  recorder_.Reset();
}

void Contract::Unload() {
  recorder_.Reset();
  UnloadModule();
}

void Contract::BeBorn() {
  PXL_Birth(0);
  ForgetLog();
}

void Contract::ForgetLog() {
  recorder_.log.clear();
}

const std::vector<std::string>& Contract::Log() const {
  return recorder_.log;
}

PXL_WorldHandle Contract::Make(std::int32_t depth, const Rect& rect, std::uint32_t flags) {
  PXL_WorldHandle worldH = nullptr;
  PXL_NewWorld(nullptr, flags, &rect, depth, 0, nullptr, &worldH);
  return worldH;
}

PXL_WorldHandle Contract::CallerHandle() {
  Handle handle = recorder_.NewHandle(sizeof(PXL_World));
  std::memset(*handle, 0x5A, sizeof(PXL_World));
  recorder_.Name(handle, "caller");
  return reinterpret_cast<PXL_WorldHandle>(handle);
}

Rect Sized(int width, int height) {
  return {0, 0, static_cast<std::int16_t>(height), static_cast<std::int16_t>(width)};
}
