// OpenEXR files written by tinyexr, which works on whole files in memory.
#include <tinyexr.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <ostream>
#include <vector>

#include "tools/pxl/formats/exr/exr_writer.h"
#include "tools/pxl/formats/exr/tinyexr_message.h"
#include "tools/pxl/pictures/colour_tags.h"
#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/stream_errors.h"

namespace pxl {
namespace {

constexpr std::size_t kPixelBytes = PixelBytes(SampleType::Float);

// A file stores each channel by itself, in the order of their names.
struct Planes {
  explicit Planes(std::size_t pixels) {
    for (std::vector<float>& plane : values) plane.reserve(pixels);
  }

  void AppendRow(const std::byte* row, std::int64_t width) {
    constexpr std::array<std::size_t, 4> kAlphaBlueGreenRed = {0, 3, 2, 1};
    for (std::int64_t x = 0; x < width; ++x, row += kPixelBytes) {
      std::array<float, 4> pixel{};
      std::memcpy(pixel.data(), row, sizeof pixel);
      for (std::size_t i = 0; i < pixel.size(); ++i) {
        values[i].push_back(pixel[kAlphaBlueGreenRed[i]]);
      }
    }
  }

  std::array<std::vector<float>, 4> values;
};

// The chromaticities as the file holds them: red, green, blue, white.
std::optional<std::array<float, 8>> ChromaticitiesToWrite(const ColourTags& colour) {
  std::optional<Chromaticities> known = colour.chromaticities;
  if (const PngChunk* chunk = FindChunk(colour, "cHRM")) known = ChromaticitiesOfChunk(*chunk);
  if (!known) return std::nullopt;
  std::array<float, 8> values{};
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] = static_cast<float>(known->at((i + 2) % values.size()));
  }
  return values;
}

// The library's structures for a picture to be written. They own nothing, and point
// to each other and to the planes.
class Description {
 public:
  Description(const PictureHeader& picture, Planes& planes)
      : chromaticities_(ChromaticitiesToWrite(picture.colour)) {
    InitEXRHeader(&header_);
    InitEXRImage(&image_);
    DescribeChannels(planes);
    if (chromaticities_) DescribeChromaticities();
    header_.compression_type = TINYEXR_COMPRESSIONTYPE_ZIP;
    image_.width = static_cast<int>(picture.width);
    image_.height = static_cast<int>(picture.height);
  }
  Description(const Description&) = delete;
  Description& operator=(const Description&) = delete;
  ~Description() = default;

  [[nodiscard]] const EXRHeader& header() const { return header_; }
  [[nodiscard]] const EXRImage& image() const { return image_; }

 private:
  void DescribeChannels(Planes& planes) {
    for (std::size_t i = 0; i < channels_.size(); ++i) {
      channels_[i].name[0] = "ABGR"[i];
      types_[i] = TINYEXR_PIXELTYPE_FLOAT;
      images_[i] = reinterpret_cast<unsigned char*>(planes.values[i].data());
    }
    header_.num_channels = static_cast<int>(channels_.size());
    header_.channels = channels_.data();
    header_.pixel_types = types_.data();
    header_.requested_pixel_types = types_.data();
    image_.num_channels = header_.num_channels;
    image_.images = images_.data();
  }

  void DescribeChromaticities() {
    kTinyExrChromaticities.copy(attribute_.name, sizeof attribute_.name);
    kTinyExrChromaticities.copy(attribute_.type, sizeof attribute_.type);
    attribute_.value = reinterpret_cast<unsigned char*>(chromaticities_->data());
    attribute_.size = sizeof *chromaticities_;
    header_.num_custom_attributes = 1;
    header_.custom_attributes = &attribute_;
  }

  std::optional<std::array<float, 8>> chromaticities_;
  std::array<EXRChannelInfo, 4> channels_{};
  std::array<int, 4> types_{};
  std::array<unsigned char*, 4> images_{};
  EXRAttribute attribute_{};
  EXRHeader header_{};
  EXRImage image_{};
};

std::string Encoded(const PictureHeader& picture, Planes& planes) {
  const Description description(picture, planes);
  unsigned char* bytes = nullptr;
  TinyExrMessage message;
  const std::size_t size =
      SaveEXRImageToMemory(&description.image(), &description.header(), &bytes, message.Place());
  if (size == 0) throw Failure("cannot write: " + message.Text());
  const std::unique_ptr<unsigned char, decltype(&std::free)> owner(bytes, &std::free);
  return {reinterpret_cast<const char*>(bytes), size};
}

}  // namespace

void WriteExr(std::iostream& stream, const PictureHeader& header, const RowSource& rows) {
  Planes planes(static_cast<std::size_t>(header.width * header.height));
  for (std::int64_t y = 0; y < header.height; ++y) planes.AppendRow(rows(y), header.width);
  const std::string file = Encoded(header, planes);
  errno = 0;
  stream.write(file.data(), static_cast<std::streamsize>(file.size()));
  if (!stream) throw Failure("cannot write: " + WriteReason());
}

}  // namespace pxl
