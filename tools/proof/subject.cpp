// The routines of a level, each with its plain loop.
#include "tools/proof/subject.h"

#include <cstdint>
#include <cstring>

#include "simd/processor_level.h"
#include "simd/routines.h"
#include "simd/streaming.h"
#include "transfer/kernels/kernel_set.h"
#include "transfer/kernels/plain_rows.h"
#include "transfer/kernels/selection.h"

namespace proof {
namespace {

constexpr const char* kCaching = "caching";
constexpr const char* kStreaming = "streaming";

// A side without a source has one alignment.
constexpr Side kNone = {0, 64};
constexpr Side kBytes = {1, 1};
constexpr Side kWords = {4, 1};
constexpr Side k8 = {1, 1};
constexpr Side k16 = {2, 2};
constexpr Side kFloat = {4, 4};

std::string Name(simd::Level level, const std::string& routine, const std::string& variant = "") {
  return std::string(simd::NameOf(level)) + " " + routine + (variant.empty() ? "" : ", " + variant);
}

// Streaming is finished before the result is read; without streaming the call has no
// effect.
Run ConvertWith(PXLp_RowKernel kernel) {
  return [kernel](const void* source, void* destination, std::size_t count) {
    kernel(source, destination, count);
    simd::FinishStreaming();
  };
}

// Each count has its own value, so that bytes of the run before are noticed.
std::uint32_t ValueToFillWith(std::size_t count) {
  return 0x01020304U + static_cast<std::uint32_t>(count) * 0x9E3779B9U;
}

Run FillWith(void (*fill)(void*, std::uint32_t, std::size_t)) {
  return [fill](const void*, void* destination, std::size_t count) {
    fill(destination, ValueToFillWith(count), count);
    simd::FinishStreaming();
  };
}

Run CopyWith(void (*copy)(void*, const void*, std::size_t)) {
  return [copy](const void* source, void* destination, std::size_t count) {
    copy(destination, source, count);
    simd::FinishStreaming();
  };
}

// The routine works in place, on a copy of the source.
Run ReverseWith(void (*reverse)(void*, std::size_t)) {
  return [reverse](const void* source, void* destination, std::size_t count) {
    std::memcpy(destination, source, count * sizeof(std::uint32_t));
    reverse(destination, count);
  };
}

void PlainCopy(const void* source, void* destination, std::size_t count) {
  std::memmove(destination, source, count);
}

void PlainFill(const void* /*source*/, void* destination, std::size_t count) {
  const std::uint32_t value = ValueToFillWith(count);
  auto* bytes = static_cast<unsigned char*>(destination);
  for (std::size_t i = 0; i < count; ++i) std::memcpy(bytes + i * 4, &value, 4);
}

void PlainReverse(const void* source, void* destination, std::size_t count) {
  const auto* from = static_cast<const unsigned char*>(source);
  auto* to = static_cast<unsigned char*>(destination);
  for (std::size_t i = 0; i < count * 4; ++i) to[i] = from[i ^ 3];
}

}  // namespace

std::vector<simd::Level> LevelsHere() {
  std::vector<simd::Level> levels;
  for (const simd::Level level : simd::kAllLevels) {
    if (level <= simd::ProcessorLevel()) levels.push_back(level);
  }
  return levels;
}

std::vector<Subject> ConversionSubjects(simd::Level level) {
  const PXLp_KernelSet& kernels = PXLp_GetKernels(level);
  const struct {
    const char* name;
    PXLp_KernelPair pair;
    PXLp_RowKernel plain;
    Side source, destination;
  } conversions[] = {{"8 to 16", kernels.from8to16, PXLp_ConvertRow8to16, k8, k16},
                     {"8 to float", kernels.from8toF, PXLp_ConvertRow8toF, k8, kFloat},
                     {"16 to 8", kernels.from16to8, PXLp_ConvertRow16to8, k16, k8},
                     {"float to 8", kernels.fromFto8, PXLp_ConvertRowFto8, kFloat, k8}};
  std::vector<Subject> subjects;
  for (const auto& c : conversions) {
    subjects.push_back({level, Name(level, c.name, kCaching), Kind::Conversion,
                        ConvertWith(c.pair.caching), c.plain, c.source, c.destination});
    subjects.push_back({level, Name(level, c.name, kStreaming), Kind::Conversion,
                        ConvertWith(c.pair.streaming), c.plain, c.source, c.destination});
  }
  return subjects;
}

std::vector<Subject> RoutineSubjects(simd::Level level) {
  const simd::Routines& routines = simd::RoutinesOf(level);
  return {{level, Name(level, "copy", kCaching), Kind::Copy, CopyWith(routines.copy), PlainCopy,
           kBytes, kBytes},
          {level, Name(level, "copy", kStreaming), Kind::Copy, CopyWith(routines.streamingCopy),
           PlainCopy, kBytes, kBytes},
          {level, Name(level, "fill", kCaching), Kind::Store, FillWith(routines.fill32), PlainFill,
           kNone, kWords},
          {level, Name(level, "fill", kStreaming), Kind::Store, FillWith(routines.streamingFill32),
           PlainFill, kNone, kWords},
          {level,
           Name(level, "reversal of bytes"),
           Kind::Conversion,
           ReverseWith(routines.reverseBytes32),
           PlainReverse,
           {4, 64},
           kWords}};
}

std::vector<Subject> SubjectsOf(simd::Level level) {
  std::vector<Subject> subjects = ConversionSubjects(level);
  for (Subject& routine : RoutineSubjects(level)) subjects.push_back(std::move(routine));
  return subjects;
}

}  // namespace proof
