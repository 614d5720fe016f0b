#include "row_reader.h"

#include <cstring>

namespace qde {
namespace {

template <std::size_t bytes>
void GatherPixels(const std::uint8_t* row, const std::vector<std::uint32_t>& offsets,
                  std::uint8_t* run) {
  for (const std::uint32_t offset : offsets) {
    std::memcpy(run, row + offset, bytes);
    run += bytes;
  }
}

}  // namespace

RowReader::RowReader(const Image& source, const Axis& columns, bool copied)
    : source_(source), start_(columns.SourceOf(columns.First())) {
  const std::int32_t bytes = BytesPerPixel(source.layout.depth);
  if (columns.IsScaled()) {
    gather_ = bytes == 1 ? GatherPixels<1> : GatherPixels<4>;
    for (std::int32_t i = columns.First(); i < columns.Last(); ++i) {
      offsets_.push_back(static_cast<std::uint32_t>((columns.SourceOf(i) - start_) * bytes));
    }
  }
  if (columns.IsScaled() || copied) {
    const std::int32_t count = columns.Last() - columns.First();
    run_.resize(static_cast<std::size_t>(count) * static_cast<std::size_t>(bytes));
  }
}

const std::uint8_t* RowReader::Read(std::int32_t y) {
  const std::uint8_t* row = source_.At(start_, y);
  if (run_.empty()) return row;
  if (gather_ != nullptr) {
    gather_(row, offsets_, run_.data());
  } else {
    std::memcpy(run_.data(), row, run_.size());
  }
  return run_.data();
}

}  // namespace qde
