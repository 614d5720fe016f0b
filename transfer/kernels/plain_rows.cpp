// The plain loops over a row.
#include "transfer/kernels/plain_rows.h"

#include <cstdint>

#include "transfer/kernels/channel_formulas.h"
#include "transfer/kernels/conversion_tables.h"

namespace {

template <typename Table>
void Widen(const Table& table, const void* source, void* destination, std::size_t channels) {
  const auto* from = static_cast<const std::uint8_t*>(source);
  auto* to = static_cast<typename Table::value_type*>(destination);
  for (std::size_t i = 0; i < channels; ++i) to[i] = table[from[i]];
}

template <typename Channel, typename Formula>
void Narrow(const void* source, void* destination, std::size_t channels, Formula formula) {
  const auto* from = static_cast<const Channel*>(source);
  auto* to = static_cast<std::uint8_t*>(destination);
  for (std::size_t i = 0; i < channels; ++i) to[i] = formula(from[i]);
}

}  // namespace

void PXLp_ConvertRow8to16(const void* source, void* destination, std::size_t channels) {
  Widen(PXLp_table8to16, source, destination, channels);
}

void PXLp_ConvertRow8toF(const void* source, void* destination, std::size_t channels) {
  Widen(PXLp_table8toF, source, destination, channels);
}

void PXLp_ConvertRow16to8(const void* source, void* destination, std::size_t channels) {
  Narrow<std::uint16_t>(source, destination, channels, PXLp_ConvertChannel16to8);
}

void PXLp_ConvertRowFto8(const void* source, void* destination, std::size_t channels) {
  Narrow<float>(source, destination, channels, PXLp_TruncateFto8);
}
