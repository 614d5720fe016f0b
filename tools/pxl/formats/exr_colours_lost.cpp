#include "tools/pxl/formats/exr_file.h"
#include "tools/pxl/pictures/colour_tags.h"

namespace pxl {

std::string ColourTagsLostInExr(const ColourTags& colour) {
  std::vector<std::string> names;
  for (const PngChunk& chunk : colour.chunks) {
    if (chunk.name != "cHRM") names.push_back(chunk.name);
  }
  return JoinNames(names);
}

}  // namespace pxl
