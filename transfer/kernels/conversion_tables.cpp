// The construction of the conversion tables.
#include "transfer/kernels/conversion_tables.h"

#include "transfer/kernels/channel_formulas.h"

constinit std::array<std::uint16_t, 256> PXLp_table8to16{};
constinit std::array<float, 256> PXLp_table8toF{};

void PXLp_BuildConversionTables() {
  // Entry i is (128 + 32768 i) / 255; the numerator is kept as a running sum.
  std::uint32_t numerator = 128;
  for (auto& entry : PXLp_table8to16) {
    entry = static_cast<std::uint16_t>(numerator / PXLp_kFullScale8);
    numerator += PXLp_kFullScale16;
  }
  double value = 0.0;
  for (float& entry : PXLp_table8toF) {
    entry = static_cast<float>(value * PXLp_kReciprocal255);
    value += 1.0;
  }
}
