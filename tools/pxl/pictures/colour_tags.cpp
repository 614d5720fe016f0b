// Colour tags converted between PNG chunks and chromaticities.
#include "tools/pxl/pictures/colour_tags.h"

#include <algorithm>
#include <cmath>

namespace pxl {
namespace {

constexpr double kChunkUnit = 100000.0;
constexpr double kChunkMaximum = 2147483647.0;

void AppendBigEndian(std::vector<std::uint8_t>& data, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    data.push_back(static_cast<std::uint8_t>(value >> shift));
  }
}

std::uint32_t BigEndianAt(const std::vector<std::uint8_t>& data, std::size_t offset) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) value = value << 8 | data.at(offset + i);
  return value;
}

}  // namespace

const PngChunk* FindChunk(const ColourTags& colour, const std::string& name) {
  const auto found = std::find_if(colour.chunks.begin(), colour.chunks.end(),
                                  [&](const PngChunk& chunk) { return chunk.name == name; });
  return found == colour.chunks.end() ? nullptr : &*found;
}

std::optional<PngChunk> ChunkOfChromaticities(const Chromaticities& values) {
  PngChunk chunk{"cHRM", {}};
  for (const double value : values) {
    const double units = std::round(value * kChunkUnit);
    // Written so that NaN fails as well.
    if (!(units >= 0.0 && units <= kChunkMaximum)) return std::nullopt;
    AppendBigEndian(chunk.data, static_cast<std::uint32_t>(units));
  }
  return chunk;
}

Chromaticities ChromaticitiesOfChunk(const PngChunk& chunk) {
  Chromaticities values{};
  for (std::size_t i = 0; i < values.size(); ++i) {
    values.at(i) = BigEndianAt(chunk.data, 4 * i) / kChunkUnit;
  }
  return values;
}

std::string JoinNames(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) text += i + 1 == names.size() ? " and " : ", ";
    text += names[i];
  }
  return text;
}

std::string ColourTagsLostInExr(const ColourTags& colour) {
  std::vector<std::string> names;
  for (const PngChunk& chunk : colour.chunks) {
    if (chunk.name != "cHRM") names.push_back(chunk.name);
  }
  return JoinNames(names);
}

std::string ColourTagsLostInPng(const ColourTags& colour) {
  if (colour.greyProfile) return "the grey iCCP profile";
  if (colour.chromaticities && !ChunkOfChromaticities(*colour.chromaticities)) {
    return "the chromaticities";
  }
  return "";
}

}  // namespace pxl
