// Chooses and runs the scaling routine for a row.
#include "host/QDE/copy/row_scaler.h"

#include <cstring>

#include "simd/processor_level.h"

namespace qde {

RowScaler::RowScaler(const Axis& columns, std::int32_t bytesPerPixel)
    : routines_(ScalingRoutinesOf(simd::ProcessorLevel())),
      way_(WayOf(columns, bytesPerPixel)),
      count_(static_cast<std::size_t>(columns.Last() - columns.First())),
      bytes_(count_ * static_cast<std::size_t>(bytesPerPixel)),
      startsAtTwin_(columns.First() % 2 != 0) {
  if (way_ != Way::Gather && way_ != Way::GatherBytes) return;
  positions_.resize(count_);
  Axis::Steps steps(columns);
  const std::int32_t start = steps.Source();
  for (std::uint32_t& position : positions_) {
    position = static_cast<std::uint32_t>(steps.Source() - start);
    steps.Advance();
  }
}

RowScaler::Way RowScaler::WayOf(const Axis& columns, std::int32_t bytesPerPixel) {
  if (!columns.IsScaled()) return Way::Copy;
  if (bytesPerPixel == 1) return Way::GatherBytes;
  if (columns.IsHalved()) return Way::Halve;
  return columns.IsDoubled() ? Way::Twice : Way::Gather;
}

void RowScaler::Scale(const std::uint8_t* row, std::uint8_t* run) const {
  switch (way_) {
    case Way::Copy:
      std::memcpy(run, row, bytes_);
      break;
    case Way::Halve:
      routines_.halve(row, run, count_);
      break;
    case Way::Twice:
      if (startsAtTwin_) std::memcpy(run, row, 4);
      routines_.twice(row + (startsAtTwin_ ? 4 : 0), run + (startsAtTwin_ ? 4 : 0),
                      count_ - (startsAtTwin_ ? 1 : 0));
      break;
    case Way::Gather:
      routines_.gather(row, positions_.data(), run, count_);
      break;
    case Way::GatherBytes:
      for (std::size_t i = 0; i < count_; ++i) run[i] = row[positions_[i]];
      break;
  }
}

}  // namespace qde
