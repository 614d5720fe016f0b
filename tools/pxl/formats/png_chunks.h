// The chunks that a PNG file is made of, where the library behind the pixels
// knows nothing of them.
#ifndef TOOLS_PXL_FORMATS_PNG_CHUNKS_H
#define TOOLS_PXL_FORMATS_PNG_CHUNKS_H

#include <array>
#include <iosfwd>
#include <string>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

inline constexpr std::array<char, 8> kPngSignature = {'\x89', 'P',  'N',    'G',
                                                      '\r',   '\n', '\x1A', '\n'};

// What the first chunk says.
struct PngStart {
  std::uint32_t width, height;
  int bits;        // a channel
  int colourType;  // 0 grey, 2 RGB, 3 palette, 4 grey and alpha, 6 RGBA
};
// Throws Failure for what no PNG file may say.
PngStart StartOf(const PngChunk& chunk);

// Takes a chunk off the stream. Throws Failure when the file ends within it or
// its checksum is wrong, before it holds more than the file does.
PngChunk ReadChunk(std::istream& stream);

// The chunk as it stands in a file.
std::string ChunkBytes(const PngChunk& chunk);

}  // namespace pxl

#endif
