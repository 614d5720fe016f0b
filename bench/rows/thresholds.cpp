// The size from which streaming stores are faster: both kinds of a kernel at each
// size. Ours is the kind that the module chooses.
#include "bench/rows/thresholds.h"

#include <fmt/format.h>

#include <cstring>
#include <memory>

#include "bench/harness/session.h"
#include "bench/rows/rows.h"
#include "bench/subjects/own_picture.h"
#include "simd/processor_level.h"
#include "simd/routines.h"
#include "simd/streaming.h"
#include "transfer/kernels/kernel_set.h"
#include "transfer/kernels/selection.h"

namespace bench {
namespace {

using Buffer = std::shared_ptr<OwnPicture>;

// Touches all pages; the bytes are small numbers in every depth.
Buffer MakeBuffer(std::size_t bytes) {
  auto buffer = std::make_shared<OwnPicture>(static_cast<int>(bytes / 4), 1, 4);
  std::memset(buffer->View().pixels, 0x3E, buffer->View().Bytes());
  return buffer;
}

struct Manners {
  std::size_t read;  // bytes, for each one written times `per`
  std::size_t per;
  std::function<void(std::uint8_t* to, const std::uint8_t* from, std::size_t written)> caching;
  std::function<void(std::uint8_t* to, const std::uint8_t* from, std::size_t written)> streaming;
};

Manners KernelManners(const PXLp_KernelPair& pair, std::size_t fromBytes, std::size_t toBytes) {
  const auto run = [toBytes](PXLp_RowKernel kernel) {
    return [=](std::uint8_t* to, const std::uint8_t* from, std::size_t written) {
      kernel(from, to, written / toBytes);
    };
  };
  return {fromBytes, toBytes, run(pair.caching), run(pair.streaming)};
}

Manners CopyManners() {
  const simd::Routines& routines = simd::BestRoutines();
  return {1, 1, routines.copy, routines.streamingCopy};
}

Manners FillManners() {
  const auto run = [](void (*fill)(void*, std::uint32_t, std::size_t)) {
    return [=](std::uint8_t* to, const std::uint8_t*, std::size_t written) {
      fill(to, 0x804020C0, written / 4);
    };
  };
  const simd::Routines& routines = simd::BestRoutines();
  return {0, 1, run(routines.fill32), run(routines.streamingFill32)};
}

std::vector<Contender> SetUpManners(const Manners& manners, std::size_t written) {
  const std::size_t read = written * manners.read / manners.per;
  const Buffer source = MakeBuffer(read + 64);
  const Buffer destination = MakeBuffer(written);
  const bool streams = simd::StoresFor(read, written) == simd::Stores::Streaming;
  return {
      {streams ? Role::Reference : Role::Ours, "caching", Repeat([=, work = manners.caching] {
         work(destination->View().pixels, source->View().pixels, written);
       })},
      {streams ? Role::Ours : Role::Reference, "streaming", Repeat([=, work = manners.streaming] {
         work(destination->View().pixels, source->View().pixels, written);
         simd::FinishStreaming();
       })}};
}

std::string SizeText(std::size_t bytes) {
  return bytes < 1 << 20 ? fmt::format("{} KiB", bytes >> 10) : fmt::format("{} MiB", bytes >> 20);
}

void Add(const char* work, const Manners& manners) {
  const std::size_t most = (CurrentSession().quick ? std::size_t{16} : std::size_t{128}) << 20;
  for (std::size_t written = std::size_t{64} * 1024; written <= most; written *= 2) {
    AddRow({work, SizeText(written), static_cast<double>(written)},
           [=] { return SetUpManners(manners, written); });
  }
}

}  // namespace

void AddThresholds() {
  const PXLp_KernelSet& kernels = PXLp_GetKernels(simd::ProcessorLevel());
  Add("stores 8 to float", KernelManners(kernels.from8toF, 1, 4));
  Add("stores float to 8", KernelManners(kernels.fromFto8, 4, 1));
  Add("stores copy", CopyManners());
  Add("stores fill", FillManners());
}

}  // namespace bench
