// Pixels in memory, in the common form of all libraries.
#ifndef BENCH_SUBJECTS_PICTURE_H
#define BENCH_SUBJECTS_PICTURE_H

#include <cstddef>
#include <cstdint>

namespace bench {

struct Picture {
  std::uint8_t* pixels;
  std::size_t rowBytes;
  int width;
  int height;
  int pixelBytes;

  std::size_t UsedRowBytes() const {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(pixelBytes);
  }
  std::size_t Rows() const { return static_cast<std::size_t>(height); }
  std::size_t Bytes() const { return rowBytes * Rows(); }
  bool IsDense() const { return rowBytes == UsedRowBytes(); }
  std::uint8_t* Row(int y) const { return pixels + rowBytes * static_cast<std::size_t>(y); }
};

}  // namespace bench

#endif
