// Reads rows of a source, scaled along the row, as runs of pixels.
#ifndef QDE_ROW_READER_H
#define QDE_ROW_READER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "host/QDE/copy/axis.h"
#include "host/QDE/copy/row_scaler.h"
#include "host/QDE/pixels/image.h"

namespace qde {

class RowReader {
 public:
  // `copied`: rows are returned as copies, also unscaled ones, and are read again at
  // each call.
  RowReader(const Image& source, const Axis& columns, bool copied);

  // The pixels that the columns show of row y, valid until the next call.
  const std::uint8_t* Read(std::int32_t y);

 private:
  const Image& source_;
  std::int32_t start_;  // the first source column
  bool copied_;
  std::optional<RowScaler> scaler_;   // when scaled or copied
  std::vector<std::uint8_t> run_;     // likewise
  std::optional<std::int32_t> read_;  // the row that the run shows
};

}  // namespace qde

#endif
