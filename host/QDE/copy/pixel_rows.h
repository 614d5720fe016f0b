// Rows of any image as rows of 32-bit pixels.
#ifndef QDE_PIXEL_ROWS_H
#define QDE_PIXEL_ROWS_H

#include <cstddef>
#include <cstdint>
#include <memory>

#include "host/QDE/pixels/image.h"

namespace qde {

class PixelRows {
 public:
  PixelRows() = default;
  virtual ~PixelRows() = default;
  PixelRows(const PixelRows&) = delete;
  PixelRows& operator=(const PixelRows&) = delete;

  // The pixels of a row: the row itself, or memory that holds until the next
  // call.
  virtual const std::uint8_t* Read(const std::uint8_t* row, std::size_t count) = 0;
  // Writes them to memory that does not overlap the row.
  virtual void Copy(const std::uint8_t* row, std::uint8_t* pixels, std::size_t count) = 0;
};

// For rows of an image like this, up to `width` pixels long, as pixels of
// `format`. The fourth byte of a pixel is kept, and 0 for an index. Throws
// std::bad_alloc.
std::unique_ptr<PixelRows> MakePixelRows(const Image& image, Format format, std::size_t width);

}  // namespace qde

#endif
