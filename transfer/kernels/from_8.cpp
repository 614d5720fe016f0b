#include <cstdint>

#include "transfer/kernels/Kernels.h"
#include "transfer/kernels/conversion_tables.h"

namespace {

template <class Table>
void Widen(const Table& table, const void* source, void* destination, std::size_t channels) {
  const auto* from = static_cast<const std::uint8_t*>(source);
  auto* to = static_cast<typename Table::value_type*>(destination);
  for (std::size_t i = 0; i < channels; ++i) to[i] = table[from[i]];
}

}  // namespace

void PXLp_Row8to16(const void* source, void* destination, std::size_t channels) {
  Widen(PXLp_table8to16, source, destination, channels);
}

void PXLp_Row8toF(const void* source, void* destination, std::size_t channels) {
  Widen(PXLp_table8toF, source, destination, channels);
}
