// Takes the place of the processor's own answer in copies of the libraries, so
// that they work as they would on a smaller processor.
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "simd/processor_level.h"

namespace {

// What CTest takes for "skipped".
constexpr int kSkipped = 77;

int questions = 0;

bool Has(simd::Level level) {
  __builtin_cpu_init();
  switch (level) {
    case simd::Level::Sse41:
      return __builtin_cpu_supports("sse4.1");
    case simd::Level::Avx2:
      return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
    case simd::Level::Avx512:
      return __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl") &&
             __builtin_cpu_supports("avx512dq");
    default:
      return true;
  }
}

[[noreturn]] void Leave(int status, const char* name, const char* reason) {
  std::fprintf(stderr, "PXL_TESTED_LEVEL=%s: %s\n", name, reason);
  std::_Exit(status);
}

simd::Level ChosenLevel() {
  const char* name = std::getenv("PXL_TESTED_LEVEL");
  if (name == nullptr) Leave(1, "", "has to name a level");
  for (const simd::Level level : simd::kAllLevels) {
    if (std::string_view(name) != simd::NameOf(level)) continue;
    if (!Has(level)) Leave(kSkipped, name, "this processor has no such level");
    return level;
  }
  Leave(1, name, "there is no such level");
}

}  // namespace

simd::Level simd::ProcessorLevel() {
  static const Level level = ChosenLevel();
  ++questions;
  return level;
}

// Looked up in each library: how often it has asked for the level here.
extern "C" __attribute__((visibility("default"))) int CountLevelQuestions() {
  return questions;
}
