// The chunks of a PNG file, for stb, which neither returns nor checks them.
#ifndef TOOLS_PXL_FORMATS_PNG_CHUNKS_H
#define TOOLS_PXL_FORMATS_PNG_CHUNKS_H

#include <array>
#include <iosfwd>
#include <string>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

inline constexpr std::array<char, 8> kPngSignature = {'\x89', 'P',  'N',    'G',
                                                      '\r',   '\n', '\x1A', '\n'};

// The contents of the first chunk.
struct PngStart {
  std::uint32_t width, height;
  int bits;        // a channel
  int colourType;  // 0 grey, 2 RGB, 3 palette, 4 grey and alpha, 6 RGBA
};
// Throws Failure for values that PNG does not allow.
PngStart StartOf(const PngChunk& chunk);

// Reads a chunk. Throws Failure when the file ends within it or its checksum is wrong.
// Allocates no more than the file has.
PngChunk ReadChunk(std::istream& stream);

// The bytes of the chunk in a file.
std::string ChunkBytes(const PngChunk& chunk);

}  // namespace pxl

#endif
