// The conversions of single pixels, next to an exported call that does nothing.
#include "bench/rows/pixels.h"

#include "PXL.h"
#include "bench/rows/empty_call.h"
#include "bench/rows/rows.h"

namespace bench {
namespace {

template <typename From, typename To>
using Convert = std::int32_t (*)(const From*, To*);

// The function is a template argument, so that it is called as hosts call it: through
// the table of imported functions.
template <typename From, typename To, Convert<From, To> kConvert>
std::vector<Contender> SetUpPixel() {
  static From source{};
  static To destination{};
  return {{Role::Ours, "PXL", Repeat([] { kConvert(&source, &destination); })},
          {Role::Reference, "empty call", Repeat([] { BENCH_EmptyCall(&source, &destination); })}};
}

std::vector<Contender> SetUpClip() {
  static PXL_PixelF pixel = {{0.5F, -1.0F, 2.0F, 1.0F}};
  return {{Role::Ours, "PXL", Repeat([] { PXL_ClipPixelF(&pixel); })},
          {Role::Reference, "empty call", Repeat([] { BENCH_EmptyCall(&pixel, &pixel); })}};
}

void Add(const char* work, const Setup& setUp) {
  AddRow({work, "1x1", 1}, setUp);
}

}  // namespace

void AddPixels() {
  Add("pixel 8 to 16", SetUpPixel<PXL_Pixel8, PXL_Pixel16, PXL_Pixel8to16>);
  Add("pixel 8 to float", SetUpPixel<PXL_Pixel8, PXL_PixelF, PXL_Pixel8toF>);
  Add("pixel 16 to 8", SetUpPixel<PXL_Pixel16, PXL_Pixel8, PXL_Pixel16to8>);
  Add("pixel 16 to float", SetUpPixel<PXL_Pixel16, PXL_PixelF, PXL_Pixel16toF>);
  Add("pixel float to 8", SetUpPixel<PXL_PixelF, PXL_Pixel8, PXL_PixelFto8>);
  Add("pixel float to 16", SetUpPixel<PXL_PixelF, PXL_Pixel16, PXL_PixelFto16>);
  Add("pixel float clipped", SetUpClip);
}

}  // namespace bench
