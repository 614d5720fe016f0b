// PNG files by stb, which decodes every kind of file and encodes 8 bits a channel. It
// checks no checksums and ignores the chunks that describe colours; both are handled
// here.
#include <stb/stb_image.h>
#include <stb/stb_image_write.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <istream>
#include <limits>
#include <ostream>

#include "tools/pxl/formats/png/png_chunks.h"
#include "tools/pxl/formats/png/png_colour_chunks.h"
#include "tools/pxl/formats/png/png_file.h"
#include "tools/pxl/pictures/colour_tags.h"
#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/stream_errors.h"

namespace pxl {
namespace {

constexpr int kChannels = 4;
constexpr std::int64_t kMostBytes = std::numeric_limits<int>::max();

// The library's pixels are red, green, blue, alpha.
template <typename Channel>
void CopyAlphaFirst(const Channel* from, std::byte* to, std::int64_t width) {
  for (std::int64_t x = 0; x < width; ++x, from += kChannels, to += kChannels * sizeof *from) {
    const std::array<Channel, kChannels> pixel = {from[3], from[0], from[1], from[2]};
    std::memcpy(to, pixel.data(), sizeof pixel);
  }
}

// Pixels that the library has allocated.
template <typename Channel>
using Decoded = std::unique_ptr<Channel, decltype(&stbi_image_free)>;

class PngReader : public PictureReader {
 public:
  explicit PngReader(std::istream& stream) : stream_(stream) {
    if (!IsPng(stream_)) throw Failure("damaged PNG: no signature");
    stream_.seekg(kPngSignature.size());
    const PngStart start = StartOf(ReadChunk(stream_));
    header_.width = start.width;
    header_.height = start.height;
    header_.samples = start.bits == 16 ? SampleType::Integer16 : SampleType::Integer8;
    header_.format = "PNG, " + std::to_string(start.bits) + " bits a channel, " +
                     NameOfPngColourType(start.colourType);
    constexpr int kHasColours = 2;
    constexpr int kHasAlpha = 4;
    header_.channels.grey = (start.colourType & kHasColours) == 0;
    header_.channels.alpha = (start.colourType & kHasAlpha) != 0;
    TakeColourChunks();
    header_.colour.greyProfile =
        header_.channels.grey && FindChunk(header_.colour, "iCCP") != nullptr;
  }

  const PictureHeader& header() const override { return header_; }

  void Read(const PixelRows& rows) override {
    const std::string file = WholeFile();
    if (header_.samples == SampleType::Integer16) {
      Decode(file, stbi_load_16_from_memory, rows);
    } else {
      Decode(file, stbi_load_from_memory, rows);
    }
  }

 private:
  void TakeColourChunks() {
    for (PngChunk chunk = ReadChunk(stream_); chunk.name != "IDAT"; chunk = ReadChunk(stream_)) {
      if (chunk.name == "IEND") throw Failure("damaged PNG: no image data");
      if (chunk.name == "tRNS") header_.channels.alpha = true;
      KeepColourChunk(header_.colour, std::move(chunk));
    }
  }

  // All chunks, for the library; their checksums are correct.
  std::string WholeFile() {
    stream_.clear();
    stream_.seekg(kPngSignature.size());
    std::string file(kPngSignature.begin(), kPngSignature.end());
    PngChunk chunk;
    do {
      chunk = ReadChunk(stream_);
      file += ChunkBytes(chunk);
    } while (chunk.name != "IEND");
    if (file.size() > std::size_t{kMostBytes}) throw Failure("a PNG file too large to read");
    return file;
  }

  template <typename Channel>
  void Decode(const std::string& file, Channel* (*load)(const stbi_uc*, int, int*, int*, int*, int),
              const PixelRows& rows) const {
    int width = 0;
    int height = 0;
    int channels = 0;
    const auto* bytes = reinterpret_cast<const stbi_uc*>(file.data());
    const Decoded<Channel> pixels(
        load(bytes, static_cast<int>(file.size()), &width, &height, &channels, kChannels),
        &stbi_image_free);
    if (pixels == nullptr) throw Failure(std::string("damaged PNG: ") + stbi_failure_reason());
    // The rows have room for the size in the header as it was first read.
    if (width != header_.width || height != header_.height) {
      throw Failure("the file was changed while it was read");
    }
    for (std::int64_t y = 0; y < height; ++y) {
      CopyAlphaFirst(pixels.get() + y * width * kChannels, rows.Row(y), width);
    }
  }

  std::istream& stream_;
  PictureHeader header_;
};

// Appends a row as red, green, blue, alpha; indices are replaced by their colours.
void AppendRow(std::vector<std::uint8_t>& pixels, const PictureHeader& header,
               const std::byte* row) {
  const auto value = [row](std::int64_t i) { return std::to_integer<std::uint8_t>(row[i]); };
  for (std::int64_t x = 0; x < header.width; ++x) {
    if (header.palette.empty()) {
      pixels.insert(pixels.end(),
                    {value(4 * x + 1), value(4 * x + 2), value(4 * x + 3), value(4 * x)});
    } else {
      const auto& colour = header.palette.at(value(x));
      pixels.insert(pixels.end(), {colour[0], colour[1], colour[2], 0xFF});
    }
  }
}

std::string Encoded(const PictureHeader& header, const std::vector<std::uint8_t>& pixels) {
  std::string file;
  const auto append = [](void* context, void* data, int size) {
    static_cast<std::string*>(context)->append(static_cast<const char*>(data),
                                               static_cast<std::size_t>(size));
  };
  const auto width = static_cast<int>(header.width);
  if (stbi_write_png_to_func(append, &file, width, static_cast<int>(header.height), kChannels,
                             pixels.data(), kChannels * width) == 0) {
    throw Failure("cannot write: not enough memory");
  }
  return file;
}

// The colour chunks follow the header.
std::string WithColourChunks(std::string file, const ColourTags& colour) {
  constexpr std::size_t kHeaderEnd = 33;
  std::string chunks;
  for (const PngChunk& chunk : ColourChunksToWrite(colour)) chunks += ChunkBytes(chunk);
  return file.insert(kHeaderEnd, chunks);
}

}  // namespace

bool IsPng(std::istream& stream) {
  std::array<char, 8> start{};
  stream.read(start.data(), start.size());
  ReturnToStart(stream);
  return start == kPngSignature;
}

std::unique_ptr<PictureReader> OpenPng(std::istream& stream) {
  return std::make_unique<PngReader>(stream);
}

bool CanWrite16BitPng() {
  return false;
}

void WritePng(std::ostream& stream, const PictureHeader& header, const RowSource& rows) {
  if (header.palette.empty() && header.samples == SampleType::Integer16) {
    throw Failure("PNG of 16 bits a channel cannot be written on this system; OpenEXR can");
  }
  if (header.width * header.height > kMostBytes / kChannels) {
    throw Failure("a picture of " + SizeText(header) + " is too large for PNG on this system");
  }
  std::vector<std::uint8_t> pixels;
  pixels.reserve(static_cast<std::size_t>(header.width * header.height * kChannels));
  for (std::int64_t y = 0; y < header.height; ++y) AppendRow(pixels, header, rows(y));
  const std::string file = WithColourChunks(Encoded(header, pixels), header.colour);
  errno = 0;
  stream.write(file.data(), static_cast<std::streamsize>(file.size()));
  if (!stream) throw Failure("cannot write: " + WriteReason());
}

}  // namespace pxl
