// What is checked of an OpenEXR file before tinyexr gets it, which believes sizes and
// places that it reads: the header's attributes, and where the chunks of pixels are.
#ifndef TOOLS_PXL_FORMATS_EXR_LAYOUT_H
#define TOOLS_PXL_FORMATS_EXR_LAYOUT_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace pxl {

// Where the table of chunks begins: behind the header of a file of one part. Throws
// Failure unless each attribute is there once, whole, and of the size of its kind.
std::size_t CheckExrHeader(std::string_view file);

// What the header says of the pixels.
struct ExrLayout {
  std::int64_t top, width, height;  // of the data window, not empty
  std::int64_t pixelBytes;          // of all channels
  int compression;                  // by its number in the file
  std::int64_t chunks;              // as the header counts them; 0 when it does not
  bool tiled;
  std::int64_t tileWidth, tileHeight;  // both above 0
  int levels;                          // by their number in the file: none, mipmap, ripmap
  bool roundsUp;                       // the sizes of levels
};

// Throws Failure unless every chunk of pixels lies in the file, where the picture
// has room for it.
void CheckExrChunks(std::string_view file, std::size_t table, const ExrLayout& layout);

}  // namespace pxl

#endif
