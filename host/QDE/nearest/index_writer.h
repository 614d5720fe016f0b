// Turns rows of colours into indices of a table.
#ifndef QDE_INDEX_WRITER_H
#define QDE_INDEX_WRITER_H

#include <cstddef>
#include <cstdint>
#include <memory>

#include "host/QDE/nearest/inverse_colors.h"
#include "host/QDE/pixels/image.h"

namespace qde {

struct IndexTarget {
  std::shared_ptr<const InverseColors> colors;
  Format format;  // of the pixels that come
  // A pixel that comes in the colour of the index that is there leaves it there,
  // even where another index has the same colour.
  bool keepsIndices;
};

class IndexWriter {
 public:
  IndexWriter() = default;
  virtual ~IndexWriter() = default;
  IndexWriter(const IndexWriter&) = delete;
  IndexWriter& operator=(const IndexWriter&) = delete;

  virtual void Write(const std::uint8_t* pixels, std::uint8_t* indices, std::size_t count) = 0;
};

// The nearest colour of each pixel. Rows of up to `width` pixels, or of any length
// where indices are not kept.
std::unique_ptr<IndexWriter> MakeNearestWriter(IndexTarget target, std::size_t width);

// Spreads what the nearest colours miss over the pixels to come: the next one
// gets 7 sixteenths, the three below 3, 5 and 1, from left to right. Pixels of
// a colour of the table get just that, and hand on what came to them. Rows have
// to come from the top down, each of `count` pixels.
std::unique_ptr<IndexWriter> MakeDitheringWriter(IndexTarget target, std::size_t count);

}  // namespace qde

#endif
