#include "tools/pxl/colour_tags.h"
#include "tools/pxl/exr_file.h"

namespace pxl {

std::string ColourTagsLostInExr(const ColourTags& colour) {
  std::vector<std::string> names;
  for (const PngChunk& chunk : colour.chunks) {
    if (chunk.name != "cHRM") names.push_back(chunk.name);
  }
  return JoinNames(names);
}

}  // namespace pxl
