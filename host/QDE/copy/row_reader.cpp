// Reads source rows, and keeps the last scaled row for repeated use.
#include "host/QDE/copy/row_reader.h"

namespace qde {

RowReader::RowReader(const Image& source, const Axis& columns, bool copied)
    : source_(source), start_(columns.SourceOf(columns.First())), copied_(copied) {
  if (!columns.IsScaled() && !copied) return;
  const std::int32_t bytes = BytesPerPixel(source.layout.depth);
  const std::int32_t count = columns.Last() - columns.First();
  scaler_.emplace(columns, bytes);
  run_.resize(static_cast<std::size_t>(count) * static_cast<std::size_t>(bytes));
}

const std::uint8_t* RowReader::Read(std::int32_t y) {
  const std::uint8_t* row = source_.At(start_, y);
  if (!scaler_) return row;
  if (copied_ || read_ != y) scaler_->Scale(row, run_.data());
  read_ = y;
  return run_.data();
}

}  // namespace qde
