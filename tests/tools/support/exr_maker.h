// OpenEXR files for tests, made with the library itself.
#ifndef TESTS_TOOLS_SUPPORT_EXR_MAKER_H
#define TESTS_TOOLS_SUPPORT_EXR_MAKER_H

#include <ImathBox.h>
#include <ImfChannelList.h>
#include <ImfHeader.h>
#include <ImfPixelType.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/pxl/pictures/picture.h"

struct ExrRecipe {
  Imath::Box2i display{{0, 0}, {0, 0}};
  std::optional<Imath::Box2i> data;  // the display window if none
  Imf::PixelType type = Imf::FLOAT;
  std::vector<std::string> channels = {"R", "G", "B"};
  Imf::Compression compression = Imf::ZIP_COMPRESSION;
  bool tiled = false;
  bool mipmap = false;  // tiled as well
  std::optional<pxl::Chromaticities> chromaticities;
  // The value of a channel at x, y of the picture's coordinates.
  std::function<float(int x, int y, const std::string& channel)> value;
};

std::string MakeExr(const ExrRecipe& recipe);

// A file of one part with channels of any kind, all values 0; for refusals.
std::string MakeExrOfChannels(const std::vector<std::pair<std::string, Imf::Channel>>& channels);
std::string MakeLuminanceChromaExr();
std::string MakeMultiPartExr();
std::string MakeDeepExr();

// The file with another window in its header: "displayWindow" or "dataWindow".
std::string WithWindow(std::string file, const std::string& name, const Imath::Box2i& window);

// The file with other sides of its tiles.
std::string WithTiles(std::string file, unsigned width, unsigned height);

// The file, of one block of scan lines, with a count of blocks in its header.
std::string WithChunkCount(std::string file, int count);

#endif
