// A pixel provider that logs its calls and returns what a test sets.
#ifndef TESTS_CONTRACT_STATE_SCRIPTED_PROVIDER_H
#define TESTS_CONTRACT_STATE_SCRIPTED_PROVIDER_H

#include <array>
#include <cstdint>

#include "PXL.h"

class ScriptedProvider {
 public:
  // Becomes the provider of a World that has no pixels.
  explicit ScriptedProvider(PXL_WorldHandle worldH);
  ScriptedProvider(const ScriptedProvider&) = delete;
  ScriptedProvider& operator=(const ScriptedProvider&) = delete;

  void* Pixels() { return pixels_.data(); }

  // The results of the operations. A failing map operation leaves no frame unless
  // a test sets one.
  std::int32_t mapStatus = 0;
  std::int32_t unmapStatus = 0;
  bool mapsAnyway = false;

 private:
  static std::int32_t Map(void* context, void** frame);
  static std::int32_t Unmap(void* context, void** frame);
  static ScriptedProvider& Enter(const char* name, void* context, void** frame);

  PXL_WorldHandle worldH_;
  PXL_PixelProvider provider_;
  std::array<unsigned char, 4096> pixels_{};
};

#endif
