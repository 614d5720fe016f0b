// Colour chunks of PNG files: checked, kept and made from colour tags.
#include "tools/pxl/formats/png/png_colour_chunks.h"

#include <utility>

#include "tools/pxl/pictures/colour_tags.h"

namespace pxl {

bool IsSoundColourChunk(const PngChunk& chunk) {
  if (chunk.name == "gAMA") return chunk.data.size() == 4;
  if (chunk.name == "cHRM") return chunk.data.size() == 32;
  if (chunk.name == "sRGB") return chunk.data.size() == 1;
  return chunk.name == "iCCP" && !chunk.data.empty();
}

void KeepColourChunk(ColourTags& colour, PngChunk chunk) {
  const bool first = FindChunk(colour, chunk.name) == nullptr;
  if (first && IsSoundColourChunk(chunk)) colour.chunks.push_back(std::move(chunk));
}

std::vector<PngChunk> ColourChunksToWrite(const ColourTags& colour) {
  std::vector<PngChunk> chunks;
  for (const PngChunk& chunk : colour.chunks) {
    if (!(chunk.name == "iCCP" && colour.greyProfile)) chunks.push_back(chunk);
  }
  if (colour.chromaticities && FindChunk(colour, "cHRM") == nullptr) {
    const auto chunk = ChunkOfChromaticities(*colour.chromaticities);
    if (chunk) chunks.push_back(*chunk);
  }
  return chunks;
}

const char* NameOfPngColourType(int type) {
  switch (type) {
    case 0:
      return "grey";
    case 4:
      return "grey and alpha";
    case 3:
      return "palette";
    case 2:
      return "RGB";
    default:
      return "RGBA";
  }
}

}  // namespace pxl
