// The chunks of PNG files that describe colours.
#ifndef TOOLS_PXL_FORMATS_PNG_COLOUR_CHUNKS_H
#define TOOLS_PXL_FORMATS_PNG_COLOUR_CHUNKS_H

#include <vector>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

// Whether the chunk has the length of its kind.
bool IsSoundColourChunk(const PngChunk& chunk);

// Keeps the first sound chunk of each kind.
void KeepColourChunk(ColourTags& colour, PngChunk chunk);

// The colour tags as chunks of a file with red, green and blue.
std::vector<PngChunk> ColourChunksToWrite(const ColourTags& colour);

// "grey", "RGBA" and the like, for the number in the file.
const char* NameOfPngColourType(int type);

}  // namespace pxl

#endif
