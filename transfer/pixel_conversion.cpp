// The exported conversions of one pixel. Each reads the whole source before it
// writes, so that source and destination may share their memory.
#include "PXL.h"
#include "transfer/kernels/channel_formulas.h"

namespace {

// Returns the pixel with clamped channels.
PXL_PixelF Clipped(const PXL_PixelF& pixel) {
  PXL_PixelF clipped = pixel;
  for (float& c : clipped.channel) c = PXLp_ClipChannel(c);
  return clipped;
}

template <typename Destination, typename Source, typename Formula>
void Convert(const Source& source, Destination* destination, Formula formula) {
  const Source copy = source;
  for (int k = 0; k < 4; ++k) destination->channel[k] = formula(copy.channel[k]);
}

}  // namespace

std::int32_t PXL_ClipPixelF(PXL_PixelF* pixel) {
  *pixel = Clipped(*pixel);
  return PXL_Err_NONE;
}

std::int32_t PXL_PixelFto16(const PXL_PixelF* source, PXL_Pixel16* destination) {
  Convert(Clipped(*source), destination,
          [](float c) { return static_cast<std::uint16_t>(PXLp_ScaleAndRound(c, 32768.0F)); });
  return PXL_Err_NONE;
}

std::int32_t PXL_PixelFto8(const PXL_PixelF* source, PXL_Pixel8* destination) {
  Convert(Clipped(*source), destination,
          [](float c) { return static_cast<std::uint8_t>(PXLp_ScaleAndRound(c, 255.0F)); });
  return PXL_Err_NONE;
}

std::int32_t PXL_Pixel16toF(const PXL_Pixel16* source, PXL_PixelF* destination) {
  Convert(*source, destination, PXLp_ConvertChannel16toF);
  return PXL_Err_NONE;
}

std::int32_t PXL_Pixel8toF(const PXL_Pixel8* source, PXL_PixelF* destination) {
  Convert(*source, destination, PXLp_ConvertChannel8toF);
  return PXL_Err_NONE;
}

std::int32_t PXL_Pixel16to8(const PXL_Pixel16* source, PXL_Pixel8* destination) {
  Convert(*source, destination, PXLp_ConvertChannel16to8);
  return PXL_Err_NONE;
}

std::int32_t PXL_Pixel8to16(const PXL_Pixel8* source, PXL_Pixel16* destination) {
  Convert(*source, destination, PXLp_ConvertChannel8to16);
  return PXL_Err_NONE;
}
