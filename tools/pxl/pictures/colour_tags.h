// Primaries and white of a picture in PNG and OpenEXR files.
#ifndef TOOLS_PXL_PICTURES_COLOUR_TAGS_H
#define TOOLS_PXL_PICTURES_COLOUR_TAGS_H

#include <optional>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

// The chunk of that name, or null.
const PngChunk* FindChunk(const ColourTags& colour, const std::string& name);

// The cHRM chunk for the chromaticities: eight numbers in units of 1/100000.
// None if one of them is not finite, negative or too large for the chunk.
std::optional<PngChunk> ChunkOfChromaticities(const Chromaticities& values);

// The chromaticities in a cHRM chunk of 32 bytes.
Chromaticities ChromaticitiesOfChunk(const PngChunk& chunk);

// "A", "A and B", "A, B and C".
std::string JoinNames(const std::vector<std::string>& names);

// The names of the colour tags that a file of the format cannot keep, for people;
// empty if there are none.
std::string ColourTagsLostInExr(const ColourTags& colour);
std::string ColourTagsLostInPng(const ColourTags& colour);

}  // namespace pxl

#endif
