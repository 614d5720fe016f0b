// Which kernel a blit hands its rows to, and with what.
#include "simd/processor_caches.h"
#include "simd/streaming.h"
#include "tests/contract/transfer/image.h"
#include "tests/support/module/contract.h"
#include "transfer/kernels/kernel_set.h"
#include "transfer/kernels/selection.h"

using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

struct Call {
  const void* source;
  void* destination;
  std::size_t channels;
};
std::vector<Call> theCachingCalls;
std::vector<Call> theStreamingCalls;

void NoteCaching(const void* source, void* destination, std::size_t channels) {
  theCachingCalls.push_back({source, destination, channels});
}
void NoteStreaming(const void* source, void* destination, std::size_t channels) {
  theStreamingCalls.push_back({source, destination, channels});
}

constexpr PXLp_KernelPair kNoting = {NoteCaching, NoteStreaming};

// One of the four conversions, which alone is replaced.
using KernelsOfADepth = PXLp_KernelPair PXLp_KernelSet::*;

struct Conversion {
  std::int32_t from;
  std::int32_t to;
  KernelsOfADepth kernels;
};

class BlitKernels : public Contract, public ::testing::WithParamInterface<Conversion> {
 protected:
  BlitKernels() {
    BeBorn();
    theCachingCalls.clear();
    theStreamingCalls.clear();
    PXLp_selectedKernels.*GetParam().kernels = kNoting;
  }

  static void Blit(int width, int height) {
    BareWorld sourceWorld(GetParam().from, width, height);
    BareWorld destinationWorld(GetParam().to, width, height);
    Image source(sourceWorld.Handle(), 0);
    Image destination(destinationWorld.Handle(), 0);
    ASSERT_EQ(PXL_Blit(sourceWorld.Handle(), destinationWorld.Handle(), nullptr, nullptr, 0),
              PXL_Err_NONE);
    for (const auto* calls : {&theCachingCalls, &theStreamingCalls}) {
      for (std::size_t y = 0; y < calls->size(); ++y) {
        EXPECT_EQ((*calls)[y].source, source.Row(y));
        EXPECT_EQ((*calls)[y].destination, destination.Row(y));
        EXPECT_EQ((*calls)[y].channels, static_cast<std::size_t>(width) * 4);
      }
    }
  }
};

INSTANTIATE_TEST_SUITE_P(
    AllConversions, BlitKernels,
    ::testing::Values(Conversion{.from = 32, .to = 64, .kernels = &PXLp_KernelSet::from8to16},
                      Conversion{.from = 32, .to = 128, .kernels = &PXLp_KernelSet::from8toF},
                      Conversion{.from = 64, .to = 32, .kernels = &PXLp_KernelSet::from16to8},
                      Conversion{.from = 128, .to = 32, .kernels = &PXLp_KernelSet::fromFto8}),
    [](const auto& conversion) {
      return std::to_string(conversion.param.from) + "To" + std::to_string(conversion.param.to);
    });

TEST_P(BlitKernels, StoreSmallWorldsThroughTheCaches) {
  Blit(7, 3);
  EXPECT_THAT(theCachingCalls, SizeIs(3));
  EXPECT_THAT(theStreamingCalls, IsEmpty());
}

// The rows are as small; only the whole counts.
TEST_P(BlitKernels, StoreLargeWorldsPastTheCaches) {
  const std::size_t pixelBytes = static_cast<std::size_t>(GetParam().from + GetParam().to) / 8;
  const auto height = static_cast<int>(simd::ProcessorCaches().own / (512 * pixelBytes)) + 1;
  Blit(512, height);
  EXPECT_THAT(theCachingCalls, IsEmpty());
  EXPECT_THAT(theStreamingCalls, SizeIs(static_cast<std::size_t>(height)));
}

TEST_P(BlitKernels, StoreThroughTheCachesWhatJustFits) {
  const std::size_t pixelBytes = static_cast<std::size_t>(GetParam().from + GetParam().to) / 8;
  const auto height = static_cast<int>(simd::ProcessorCaches().own / (512 * pixelBytes));
  Blit(512, height);
  EXPECT_THAT(theCachingCalls, SizeIs(static_cast<std::size_t>(height)));
  EXPECT_THAT(theStreamingCalls, IsEmpty());
}

}  // namespace
