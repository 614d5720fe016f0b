// Pictures within the tool: the header of a picture file, the interface of a file
// being read, and a picture in memory. The headers of the file formats (png_file.h,
// exr_reader.h, exr_writer.h) do not depend on the libraries behind them.
#ifndef TOOLS_PXL_PICTURES_PICTURE_H
#define TOOLS_PXL_PICTURES_PICTURE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pxl {

// The type of a channel. Four channels make a pixel, in the order alpha, red,
// green, blue. The tool treats alpha as straight: it never multiplies or divides
// colour by alpha.
enum class SampleType {
  Integer8,   // 0..255
  Integer16,  // 0..65535, in the machine's byte order
  Float       // 32 bits
};

// Bytes of a pixel.
constexpr std::size_t PixelBytes(SampleType type) {
  return type == SampleType::Integer8 ? 4 : type == SampleType::Integer16 ? 8 : 16;
}

// CIE x and y of white, red, green and blue, in this order.
using Chromaticities = std::array<double, 8>;

// A chunk of a PNG file, unchanged.
struct PngChunk {
  std::string name;
  std::vector<std::uint8_t> data;
};

// The tags of a file that define the meaning of its colours.
struct ColourTags {
  std::vector<PngChunk> chunks;                  // gAMA, cHRM, sRGB, iCCP; from PNG only
  bool greyProfile = false;                      // iCCP holds a profile for grey pictures
  std::optional<Chromaticities> chromaticities;  // from OpenEXR only
};

// Up to 256 colours: red, green, blue.
using Palette = std::vector<std::array<std::uint8_t, 3>>;

// The channels of a file. Missing ones are derived: grey becomes red, green and
// blue, and a picture without alpha is opaque.
struct ChannelSet {
  bool grey = false;  // instead of red, green and blue
  bool alpha = true;

  bool operator==(const ChannelSet&) const = default;
};

struct PictureHeader {
  std::int64_t width = 0;  // pixels; the number in the file, not checked
  std::int64_t height = 0;
  // The part in the file, where it may differ from the picture: the data window of
  // OpenEXR.
  std::optional<std::array<std::int64_t, 2>> window;  // width and height
  SampleType samples = SampleType::Integer8;
  ChannelSet channels;
  std::string format;  // for people: "PNG, 16 bits a channel, RGB"
  ColourTags colour;
  Palette palette;  // of a picture to be written: rows hold an index a pixel
};

// The default limit of a picture: 16384 x 16384.
constexpr std::uint64_t kMostPixels = std::uint64_t{1} << 28;

// Throws Failure when the header has more pixels than `most`, in its picture or its
// window. Call it before memory is allocated by the header.
void RefuseMorePixels(const PictureHeader& header, std::uint64_t most);

// "480 x 320 pixels".
std::string SizeText(const PictureHeader& header);

// The place of the rows of a picture.
struct PixelRows {
  std::byte* base = nullptr;
  std::ptrdiff_t rowBytes = 0;

  std::byte* Row(std::int64_t y) const { return base + rowBytes * static_cast<std::ptrdiff_t>(y); }
};

// A picture file whose header was read. Its stream must outlive it.
class PictureReader {
 public:
  PictureReader() = default;
  PictureReader(const PictureReader&) = delete;
  PictureReader& operator=(const PictureReader&) = delete;
  virtual ~PictureReader() = default;

  virtual const PictureHeader& header() const = 0;
  // Decodes the whole picture into rows with room for it. Call it once. Throws
  // Failure; rows may then be written in part.
  virtual void Read(const PixelRows& rows) = 0;
};

// Returns row y of a picture being written; called once a row, from the top.
using RowSource = std::function<const std::byte*(std::int64_t y)>;

// A picture in memory, rows without padding.
struct Picture {
  PictureHeader header;
  std::vector<std::byte> pixels;

  std::size_t RowBytes() const {
    return static_cast<std::size_t>(header.width) * PixelBytes(header.samples);
  }
  PixelRows Rows() { return {pixels.data(), static_cast<std::ptrdiff_t>(RowBytes())}; }
  const std::byte* Row(std::int64_t y) const {
    return pixels.data() + RowBytes() * static_cast<std::size_t>(y);
  }
};

// An unset picture of the given size.
Picture NewPicture(std::int64_t width, std::int64_t height, SampleType samples);
// The whole picture of a reader.
Picture ReadPicture(PictureReader& reader);

}  // namespace pxl

#endif
