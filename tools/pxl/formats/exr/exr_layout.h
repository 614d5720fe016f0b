// Checks of an OpenEXR file before tinyexr reads it, which trusts the sizes and places
// in a file: the attributes of the header, and the places of the chunks of pixels.
#ifndef TOOLS_PXL_FORMATS_EXR_LAYOUT_H
#define TOOLS_PXL_FORMATS_EXR_LAYOUT_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace pxl {

// Returns the offset of the table of chunks, which follows the header of a file of one
// part. Throws Failure unless each attribute occurs once, is complete, and has the size
// of its kind.
std::size_t CheckExrHeader(std::string_view file);

// The layout of the pixels according to the header.
struct ExrLayout {
  std::int64_t top, width, height;  // of the data window, not empty
  std::int64_t pixelBytes;          // of all channels
  int compression;                  // by its number in the file
  std::int64_t chunks;              // the header's count; 0 if it has none
  bool tiled;
  std::int64_t tileWidth, tileHeight;  // both above 0
  int levels;                          // by their number in the file: none, mipmap, ripmap
  bool roundsUp;                       // the sizes of levels
};

// Throws Failure unless every chunk of pixels lies within the file and within the
// picture.
void CheckExrChunks(std::string_view file, std::size_t table, const ExrLayout& layout);

}  // namespace pxl

#endif
