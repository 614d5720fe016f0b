// Pictures into Worlds, Worlds into others, Worlds into files.
#ifndef TOOLS_PXL_TRANSFER_H
#define TOOLS_PXL_TRANSFER_H

#include <cstddef>
#include <cstdint>
#include <filesystem>

#include "tools/pxl/picture_file.h"
#include "tools/pxl/world.h"

namespace pxl {

// A World of the picture's own depth and that backing with its pixels. Integer16 channels are
// scaled from 0..65535 to 0..32768. Nothing is decoded unless the World is
// there. Throws Failure.
World LoadWorld(Module& module, InputPicture& picture, Backing backing = Backing::Frame);
// The same of a picture in memory, in a frame.
World LoadWorld(Module& module, const Picture& picture);

enum class Route {
  AnyWay,   // what the blit does not do goes pixel by pixel
  BlitOnly  // what the blit refuses is a failure
};

// A World of another depth, or of the same, with the same backing and picture.
// Throws Failure.
World ConvertWorld(const World& source, std::int32_t depth, Route route);

// Converts a row of `width` pixels of a World of the depth to floats, to
// 8 bits or to 16 bits (full scale 32768), with the module's pixel functions.
void RowToFloat(std::int32_t depth, const std::byte* row, std::byte* floats, std::size_t width);
void RowTo8(std::int32_t depth, const std::byte* row, std::byte* bytes, std::size_t width);
void RowTo16(std::int32_t depth, const std::byte* row, std::byte* words, std::size_t width);

// Writes the World. PNG gets 8 bits a channel from a World of 32 bits, else 16
// (scaled from 0..32768 to 0..65535, floats by way of PXL_PixelFto16); OpenEXR
// gets floats. Throws Failure.
void SaveWorld(const World& world, const std::filesystem::path& path, FileFormat format,
               const ColourTags& colour);

}  // namespace pxl

#endif
