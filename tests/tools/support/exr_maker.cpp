// Makes OpenEXR files and changes their bytes.
#include "tests/tools/support/exr_maker.h"

#include <ImfChromaticitiesAttribute.h>
#include <ImfDeepFrameBuffer.h>
#include <ImfDeepScanLineOutputFile.h>
#include <ImfFrameBuffer.h>
#include <ImfMultiPartOutputFile.h>
#include <ImfOutputFile.h>
#include <ImfOutputPart.h>
#include <ImfPartType.h>
#include <ImfRgbaFile.h>
#include <ImfStandardAttributes.h>
#include <ImfStdIO.h>
#include <ImfTiledOutputFile.h>
#include <half.h>

#include <cstring>
#include <map>
#include <stdexcept>

namespace {

using Planes = std::map<std::string, std::vector<char>>;

// Four rows of four floats.
constexpr std::size_t kPlaneBytes = 64;

struct Layout {
  Imath::Box2i window;
  std::size_t sampleBytes = 4;

  int Width() const { return window.max.x - window.min.x + 1; }
  int Height() const { return window.max.y - window.min.y + 1; }
};

std::vector<char> MakePlane(const ExrRecipe& recipe, const Layout& layout,
                            const std::string& channel) {
  std::vector<char> plane;
  for (int y = layout.window.min.y; y <= layout.window.max.y; ++y) {
    for (int x = layout.window.min.x; x <= layout.window.max.x; ++x) {
      const float value = recipe.value(x, y, channel);
      const half small(value);
      const char* bytes = recipe.type == Imf::HALF ? reinterpret_cast<const char*>(&small)
                                                   : reinterpret_cast<const char*>(&value);
      plane.insert(plane.end(), bytes, bytes + layout.sampleBytes);
    }
  }
  return plane;
}

Imf::FrameBuffer BufferOf(Planes& planes, const Layout& layout, Imf::PixelType type) {
  Imf::FrameBuffer buffer;
  for (auto& [name, plane] : planes) {
    buffer.insert(name,
                  Imf::Slice::Make(type, plane.data(), layout.window, layout.sampleBytes,
                                   layout.sampleBytes * static_cast<std::size_t>(layout.Width())));
  }
  return buffer;
}

Imf::Header HeaderOf(const ExrRecipe& recipe) {
  Imf::Header header(recipe.display, recipe.data.value_or(recipe.display));
  header.compression() = recipe.compression;
  for (const std::string& name : recipe.channels) {
    header.channels().insert(name, Imf::Channel(recipe.type));
  }
  if (recipe.tiled || recipe.mipmap) {
    header.setTileDescription(
        Imf::TileDescription(5, 3, recipe.mipmap ? Imf::MIPMAP_LEVELS : Imf::ONE_LEVEL));
  }
  if (recipe.chromaticities) {
    const auto& c = *recipe.chromaticities;
    const auto point = [&](std::size_t i) {
      return Imath::V2f(static_cast<float>(c.at(2 * i)), static_cast<float>(c.at(2 * i + 1)));
    };
    Imf::addChromaticities(header, Imf::Chromaticities(point(1), point(2), point(3), point(0)));
  }
  return header;
}

void WriteTiled(Imf::OStream& stream, const Imf::Header& header, const Imf::FrameBuffer& buffer) {
  Imf::TiledOutputFile file(stream, header);
  file.setFrameBuffer(buffer);
  for (int level = 0; level < file.numLevels(); ++level) {
    file.writeTiles(0, file.numXTiles(level) - 1, 0, file.numYTiles(level) - 1, level);
  }
}

// The start of an attribute of the header.
std::string AttributeStart(const std::string& name, const std::string& type, std::uint32_t size) {
  std::string start = name + '\0' + type + '\0';
  return start.append(reinterpret_cast<const char*>(&size), sizeof size);
}

// The offset of an attribute's value.
std::size_t PlaceOf(const std::string& file, const std::string& name, const std::string& type,
                    std::uint32_t size) {
  const std::string start = AttributeStart(name, type, size);
  const std::size_t place = file.find(start);
  if (place == std::string::npos) throw std::logic_error("no such attribute");
  return place + start.size();
}

// The offset of the block in a file of one block: the eight bytes before it hold it.
std::size_t PlaceOfBlock(const std::string& file) {
  for (std::size_t place = 16; place < file.size(); ++place) {
    std::uint64_t stored = 0;
    std::memcpy(&stored, &file[place - sizeof stored], sizeof stored);
    if (stored == place) return place;
  }
  throw std::logic_error("no block");
}

}  // namespace

std::string MakeExr(const ExrRecipe& recipe) {
  const Layout layout{recipe.data.value_or(recipe.display), recipe.type == Imf::HALF ? 2U : 4U};
  Planes planes;
  for (const std::string& name : recipe.channels) planes[name] = MakePlane(recipe, layout, name);
  const Imf::FrameBuffer buffer = BufferOf(planes, layout, recipe.type);
  Imf::StdOSStream stream;
  if (recipe.tiled || recipe.mipmap) {
    WriteTiled(stream, HeaderOf(recipe), buffer);
  } else {
    Imf::OutputFile file(stream, HeaderOf(recipe));
    file.setFrameBuffer(buffer);
    file.writePixels(layout.Height());
  }
  return stream.str();
}

std::string MakeExrOfChannels(const std::vector<std::pair<std::string, Imf::Channel>>& channels) {
  Imf::Header header(4, 4);
  Imf::FrameBuffer buffer;
  std::vector<char> zeros(kPlaneBytes);
  for (const auto& [name, channel] : channels) {
    header.channels().insert(name, channel);
    buffer.insert(
        name, Imf::Slice(channel.type, zeros.data(), 4, 16, channel.xSampling, channel.ySampling));
  }
  Imf::StdOSStream stream;
  {
    Imf::OutputFile file(stream, header);
    file.setFrameBuffer(buffer);
    file.writePixels(4);
  }
  return stream.str();
}

std::string MakeLuminanceChromaExr() {
  Imf::StdOSStream stream;
  const std::vector<Imf::Rgba> pixels(16, Imf::Rgba(0.5F, 0.25F, 0.125F));
  {
    Imf::RgbaOutputFile file(stream, Imf::Header(4, 4), Imf::WRITE_YC);
    file.setFrameBuffer(pixels.data(), 1, 4);
    file.writePixels(4);
  }
  return stream.str();
}

std::string MakeMultiPartExr() {
  std::vector<Imf::Header> headers(2, Imf::Header(4, 4));
  for (std::size_t i = 0; i < headers.size(); ++i) {
    headers[i].setName("part" + std::to_string(i));
    headers[i].setType(Imf::SCANLINEIMAGE);
    headers[i].channels().insert("R", Imf::Channel(Imf::FLOAT));
  }
  std::vector<char> zeros(kPlaneBytes);
  Imf::FrameBuffer buffer;
  buffer.insert("R", Imf::Slice(Imf::FLOAT, zeros.data(), 4, 16));
  Imf::StdOSStream stream;
  {
    Imf::MultiPartOutputFile file(stream, headers.data(), 2);
    for (int i = 0; i < 2; ++i) {
      Imf::OutputPart part(file, i);
      part.setFrameBuffer(buffer);
      part.writePixels(4);
    }
  }
  return stream.str();
}

std::string MakeDeepExr() {
  Imf::Header header(4, 4);
  header.setType(Imf::DEEPSCANLINE);
  header.compression() = Imf::ZIPS_COMPRESSION;
  header.channels().insert("R", Imf::Channel(Imf::FLOAT));
  std::vector<unsigned> counts(16, 0);
  std::vector<char*> samples(16, nullptr);
  Imf::DeepFrameBuffer buffer;
  buffer.insertSampleCountSlice(
      Imf::Slice(Imf::UINT, reinterpret_cast<char*>(counts.data()), 4, 16));
  buffer.insert("R", Imf::DeepSlice(Imf::FLOAT, reinterpret_cast<char*>(samples.data()),
                                    sizeof(char*), 4 * sizeof(char*), 4));
  Imf::StdOSStream stream;
  {
    Imf::DeepScanLineOutputFile file(stream, header);
    file.setFrameBuffer(buffer);
    file.writePixels(4);
  }
  return stream.str();
}

std::string WithWindow(std::string file, const std::string& name, const Imath::Box2i& window) {
  const int values[] = {window.min.x, window.min.y, window.max.x, window.max.y};
  std::memcpy(&file[PlaceOf(file, name, "box2i", sizeof values)], values, sizeof values);
  return file;
}

std::string WithTiles(std::string file, unsigned width, unsigned height) {
  const unsigned sides[] = {width, height};
  constexpr std::uint32_t kDescription = 9;
  std::memcpy(&file[PlaceOf(file, "tiles", "tiledesc", kDescription)], sides, sizeof sides);
  return file;
}

std::string WithChunkCount(std::string file, int count) {
  std::string attribute = AttributeStart("chunkCount", "int", sizeof count);
  attribute.append(reinterpret_cast<const char*>(&count), sizeof count);
  // The table of blocks, here of one, has the offset of the block in the file.
  const std::size_t table = PlaceOfBlock(file) - sizeof(std::uint64_t);
  const std::uint64_t block = PlaceOfBlock(file) + attribute.size();
  std::memcpy(&file[table], &block, sizeof block);
  constexpr std::size_t kFirstAttribute = 8;
  return file.insert(kFirstAttribute, attribute);
}
