// PNG files for tests, made with libpng and by hand.
#ifndef TESTS_TOOLS_SUPPORT_PNG_MAKER_H
#define TESTS_TOOLS_SUPPORT_PNG_MAKER_H

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tools/pxl/pictures/picture.h"

struct PngRecipe {
  std::uint32_t width = 1;
  std::uint32_t height = 1;
  int bits = 8;
  int colourType = 2;  // as in the file: 0, 2, 3, 4 or 6
  bool interlaced = false;
  std::vector<std::array<std::uint8_t, 3>> palette;
  std::string transparency;           // the content of tRNS; empty for none
  std::vector<pxl::PngChunk> chunks;  // put right after the header
  // Channel c of pixel x, y, in 0 .. 2^bits - 1.
  std::function<unsigned(std::uint32_t x, std::uint32_t y, int c)> sample;
};

// Channels of a pixel of that colour type in the file.
int ChannelsOf(int colourType);

std::string MakePng(const PngRecipe& recipe);

// A file that ends after its header, with any contents.
std::string MakePngHeader(std::uint32_t width, std::uint32_t height, int bits, int colourType);

// Four bytes, the highest first.
std::string BigEndian(std::uint32_t value);

#endif
