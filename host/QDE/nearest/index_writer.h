// Converts rows of colours to indices of a table.
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
  Format format;  // of the pixels
  // If the old index has the colour of the new pixel, it stays, even if another index
  // of the same colour would be found.
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

// Writes the nearest colour of each pixel. Rows have up to `width` pixels, or any
// number if indices are not kept.
std::unique_ptr<IndexWriter> MakeNearestWriter(IndexTarget target, std::size_t width);

// Distributes the error of each nearest colour to later pixels: 7 sixteenths to the
// next one; 3, 5 and 1 to the three below, from left to right. A pixel whose colour is
// in the table is drawn in it and passes its received error on unchanged. Rows have to
// be written from the top down, each with `count` pixels.
std::unique_ptr<IndexWriter> MakeDitheringWriter(IndexTarget target, std::size_t count);

}  // namespace qde

#endif
