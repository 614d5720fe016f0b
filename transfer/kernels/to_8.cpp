#include <cstdint>

#include "transfer/kernels/Kernels.h"
#include "transfer/kernels/channel_formulas.h"

namespace {

template <class Channel, class Formula>
void Narrow(const void* source, void* destination, std::size_t channels, Formula formula) {
  const auto* from = static_cast<const Channel*>(source);
  auto* to = static_cast<std::uint8_t*>(destination);
  for (std::size_t i = 0; i < channels; ++i) to[i] = formula(from[i]);
}

}  // namespace

void PXLp_Row16to8(const void* source, void* destination, std::size_t channels) {
  Narrow<std::uint16_t>(source, destination, channels, PXLp_Channel16to8);
}

void PXLp_RowFto8(const void* source, void* destination, std::size_t channels) {
  Narrow<float>(source, destination, channels, PXLp_TruncateFto8);
}
