// Reads rows of a source, scaled along the row, as runs of pixels.
#ifndef QDE_ROW_READER_H
#define QDE_ROW_READER_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "axis.h"
#include "image.h"

namespace qde {

class RowReader {
 public:
  // `copied`: rows are handed out as copies, even where they need no scaling.
  RowReader(const Image& source, const Axis& columns, bool copied);

  // The pixels that the columns show of row y, valid until the next call.
  const std::uint8_t* Read(std::int32_t y);

 private:
  using Gather = void (*)(const std::uint8_t* row, const std::vector<std::uint32_t>& offsets,
                          std::uint8_t* run);

  const Image& source_;
  std::int32_t start_;                  // the first source column
  Gather gather_ = nullptr;             // when scaled
  std::vector<std::uint32_t> offsets_;  // when scaled: bytes from the first column on
  std::vector<std::uint8_t> run_;       // when scaled or copied
};

}  // namespace qde

#endif
