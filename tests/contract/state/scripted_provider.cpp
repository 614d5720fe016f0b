// A provider of pixels whose answers a test chooses.
#include "tests/contract/state/scripted_provider.h"

#include "platform/record_access.h"
#include "tests/support/recorder/recorder.h"

ScriptedProvider::ScriptedProvider(PXL_WorldHandle worldH)
    : worldH_(worldH), provider_{Map, Unmap, nullptr, nullptr, this} {
  RecordOf(worldH)->pixels.provider = &provider_;
}

// Logs whose frame the operation was given.
ScriptedProvider& ScriptedProvider::Enter(const char* name, void* context, void** frame) {
  auto& self = *static_cast<ScriptedProvider*>(context);
  const bool own = frame == &RecordOf(self.worldH_)->pixels.frame;
  recorder::Current().Enter(name, own ? "the World's frame" : "another frame");
  return self;
}

std::int32_t ScriptedProvider::Map(void* context, void** frame) {
  ScriptedProvider& self = Enter("mapPixels", context, frame);
  if (self.mapStatus == 0 || self.mapsAnyway) *frame = self.Pixels();
  return self.mapStatus;
}

std::int32_t ScriptedProvider::Unmap(void* context, void** frame) {
  ScriptedProvider& self = Enter("unmapPixels", context, frame);
  if (self.unmapStatus == 0) *frame = nullptr;
  return self.unmapStatus;
}
