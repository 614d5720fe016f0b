// Conversion of pictures to Worlds, of Worlds to other depths, and of Worlds to files.
#ifndef TOOLS_PXL_MODULE_TRANSFER_H
#define TOOLS_PXL_MODULE_TRANSFER_H

#include <cstddef>
#include <cstdint>
#include <filesystem>

#include "tools/pxl/formats/picture_file.h"
#include "tools/pxl/module/world.h"

namespace pxl {

// A World with the picture's pixels, of the picture's own depth and that backing.
// Integer16 channels are scaled from 0..65535 to 0..32768. The World is made before
// anything is decoded. Throws Failure.
World LoadWorld(Module& module, InputPicture& picture, Backing backing = Backing::Frame);
// The same of a picture in memory.
World LoadWorld(Module& module, const Picture& picture, Backing backing);

struct Route {
  bool blitOnly = false;  // fail where the blit does not convert, instead of converting pixels
  bool dither = false;    // when converting to 8 bits
};

// A World of another depth, or of the same, with the same backing and picture.
// 8 bits are converted to and from 32 only. A World converted from 8 bits is opaque.
// Throws Failure.
World ConvertWorld(const World& source, std::int32_t depth, Route route);

// Whether all pixels of a World of 32 bits are opaque. Throws Failure.
bool IsOpaque(const World& world);

// Converts a row of `width` pixels of a World of the depth to floats, to
// 8 bits or to 16 bits (full scale 32768) a channel, with the module's pixel
// functions. Indices become opaque standard colours.
void RowToFloat(std::int32_t depth, const std::byte* row, std::byte* floats, std::size_t width);
void RowTo8(std::int32_t depth, const std::byte* row, std::byte* bytes, std::size_t width);
void RowTo16(std::int32_t depth, const std::byte* row, std::byte* words, std::size_t width);

// Writes the World. PNG gets indices from a World of 8 bits, 8 bits a channel
// from one of 32, else 16 (scaled from 0..32768 to 0..65535, floats by way of
// PXL_PixelFto16); OpenEXR gets floats. Throws Failure.
void SaveWorld(const World& world, const std::filesystem::path& path, FileFormat format,
               const ColourTags& colour);

}  // namespace pxl

#endif
