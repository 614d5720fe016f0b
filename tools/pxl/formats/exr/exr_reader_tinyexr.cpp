// OpenEXR files read by tinyexr, which works on whole files in memory.
#include <tinyexr.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <istream>
#include <iterator>

#include "tools/pxl/formats/exr/exr_layout.h"
#include "tools/pxl/formats/exr/exr_reader.h"
#include "tools/pxl/formats/exr/exr_window.h"
#include "tools/pxl/formats/exr/tinyexr_message.h"
#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/stream_errors.h"

namespace pxl {
namespace {

constexpr std::size_t kPixelBytes = PixelBytes(SampleType::Float);
constexpr std::array<char, 4> kMagic = {'\x76', '\x2F', '\x31', '\x01'};

// The library throws exceptions of the standard library, always because of the file.
template <typename Work>
void Guarded(const Work& work) {
  try {
    work();
  } catch (const Failure&) {
    throw;
  } catch (const std::bad_alloc&) {
    throw Failure("damaged OpenEXR: not enough memory");
  } catch (const std::exception& problem) {
    throw Failure(std::string("damaged OpenEXR: ") + problem.what());
  }
}

// The library's structures, which release their memory.
struct Header : EXRHeader {
  Header() : EXRHeader() { InitEXRHeader(this); }
  Header(const Header&) = delete;
  Header& operator=(const Header&) = delete;
  ~Header() { FreeEXRHeader(this); }
};

struct Image : EXRImage {
  Image() : EXRImage() { InitEXRImage(this); }
  Image(const Image&) = delete;
  Image& operator=(const Image&) = delete;
  ~Image() { FreeEXRImage(this); }
};

ExrWindow WindowOf(const EXRBox2i& box) {
  return {box.min_x, box.min_y, box.max_x, box.max_y};
}

// The index of the channel of that name, or -1.
int FindChannel(const EXRHeader& header, const char* name) {
  for (int i = 0; i < header.num_channels; ++i) {
    if (std::strcmp(header.channels[i].name, name) == 0) return i;
  }
  return -1;
}

void CheckChannel(const EXRChannelInfo& channel) {
  const std::string name = channel.name;
  if (channel.pixel_type == TINYEXR_PIXELTYPE_UINT) {
    throw Failure("channel " + name + " holds whole numbers; half or float is needed");
  }
  if (channel.x_sampling != 1 || channel.y_sampling != 1) {
    throw Failure("channel " + name + " is subsampled, which is not supported");
  }
}

int NeedChannel(const EXRHeader& header, const char* name) {
  const int channel = FindChannel(header, name);
  if (channel < 0)
    throw Failure(std::string("no channel ") + name + "; R, G and B or Y are needed");
  CheckChannel(header.channels[channel]);
  return channel;
}

// The library allocates its table of tiles before it looks for them in the file, which
// has 8 bytes for each.
void CheckTileCount(const EXRHeader& header, const ExrWindow& data, std::size_t fileSize) {
  const std::int64_t columns = (data.Width() - 1) / header.tile_size_x + 1;
  const std::int64_t lines = (data.Height() - 1) / header.tile_size_y + 1;
  if (columns * lines > static_cast<std::int64_t>(fileSize / 8)) {
    throw Failure("damaged OpenEXR: more tiles than the file holds");
  }
}

std::string RestOf(std::istream& stream) {
  try {
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  } catch (const std::ios_base::failure&) {
    throw Failure("cannot read: " + SystemReason());
  }
}

class ExrReader : public PictureReader {
 public:
  explicit ExrReader(std::istream& stream) : file_(RestOf(stream)) {
    RefuseKinds();
    table_ = CheckExrHeader(file_);
    Guarded([this] { ParseHeader(); });
    display_ = WindowOf(exr_.display_window);
    data_ = WindowOf(exr_.data_window);
    CheckDisplayWindow(display_);
    ChooseChannels();
    FillHeader();
    CheckDataWindow(data_);
    if (exr_.tiled != 0) CheckTileSize(data_, exr_.tile_size_x, exr_.tile_size_y);
    // The library would trust it, however large, more than the window.
    exr_.chunk_count = 0;
  }

  const PictureHeader& header() const override { return header_; }

  void Read(const PixelRows& rows) override {
    if (exr_.tiled != 0) CheckTileCount(exr_, data_, file_.size());
    for (std::int64_t y = 0; y < header_.height; ++y) {
      std::memset(rows.Row(y), 0, kPixelBytes * static_cast<std::size_t>(header_.width));
    }
    CheckExrChunks(file_, table_, Layout());
    Image image;
    Guarded([&] { Load(image); });
    if (image.images != nullptr) {
      Put(rows, {image.images, data_.left, data_.top, image.width, image.height});
    }
    for (int i = 0; i < image.num_tiles; ++i) PutTile(rows, image.tiles[i]);
  }

 private:
  // A rectangle of all channels: a tile, or the whole data window.
  struct Block {
    unsigned char** planes;
    std::int64_t left, top, width, height;  // in the file's coordinates
  };

  const unsigned char* Bytes() const {
    return reinterpret_cast<const unsigned char*>(file_.data());
  }

  void RefuseKinds() {
    if (ParseEXRVersionFromMemory(&version_, Bytes(), file_.size()) != TINYEXR_SUCCESS) {
      throw Failure("damaged OpenEXR: no usable version");
    }
    if (version_.non_image != 0) throw Failure("deep OpenEXR files are not supported");
    if (version_.multipart != 0) {
      throw Failure("OpenEXR files of several parts are not supported");
    }
  }

  void ParseHeader() {
    TinyExrMessage message;
    message.Check(
        ParseEXRHeaderFromMemory(&exr_, &version_, Bytes(), file_.size(), message.Place()),
        "damaged OpenEXR");
  }

  void Load(Image& image) {
    TinyExrMessage message;
    const int status =
        LoadEXRImageFromMemory(&image, &exr_, Bytes(), file_.size(), message.Place());
    // After a failure the library leaves pointers to memory that it has freed.
    if (status != TINYEXR_SUCCESS) InitEXRImage(&image);
    message.Check(status, "damaged OpenEXR");
  }

  ExrLayout Layout() const {
    constexpr std::int64_t kHalf = 2;
    constexpr std::int64_t kOther = 4;
    std::int64_t bytes = 0;
    for (int i = 0; i < exr_.num_channels; ++i) {
      bytes += exr_.channels[i].pixel_type == TINYEXR_PIXELTYPE_HALF ? kHalf : kOther;
    }
    return {data_.top,
            data_.Width(),
            data_.Height(),
            bytes,
            exr_.compression_type,
            exr_.chunk_count,
            exr_.tiled != 0,
            exr_.tile_size_x,
            exr_.tile_size_y,
            exr_.tile_level_mode,
            exr_.tile_rounding_mode != 0};
  }

  void ChooseChannels() {
    if (FindChannel(exr_, "RY") >= 0 || FindChannel(exr_, "BY") >= 0) {
      throw Failure("luminance/chroma OpenEXR files are not supported");
    }
    grey_ = FindChannel(exr_, "Y") >= 0 && FindChannel(exr_, "R") < 0;
    const std::array<const char*, 3> names =
        grey_ ? std::array{"Y", "Y", "Y"} : std::array{"R", "G", "B"};
    for (std::size_t i = 0; i < names.size(); ++i) channels_[i + 1] = NeedChannel(exr_, names[i]);
    channels_[0] = FindChannel(exr_, "A");
    if (channels_[0] >= 0) CheckChannel(exr_.channels[channels_[0]]);
    for (int i = 0; i < exr_.num_channels; ++i) {
      if (exr_.pixel_types[i] == TINYEXR_PIXELTYPE_HALF) {
        exr_.requested_pixel_types[i] = TINYEXR_PIXELTYPE_FLOAT;
      }
    }
  }

  void FillHeader() {
    header_.width = display_.Width();
    header_.height = display_.Height();
    header_.window = {data_.Width(), data_.Height()};
    header_.samples = SampleType::Float;
    const bool half = exr_.channels[channels_[1]].pixel_type == TINYEXR_PIXELTYPE_HALF;
    header_.channels = {grey_, channels_[0] >= 0};
    header_.format = std::string(half ? "OpenEXR, half, " : "OpenEXR, float, ") +
                     (grey_ ? "Y" : "RGB") + (channels_[0] >= 0 ? "A" : "") +
                     (version_.tiled != 0 ? ", tiled" : "");
    for (int i = 0; i < exr_.num_custom_attributes; ++i)
      TakeChromaticities(exr_.custom_attributes[i]);
  }

  void TakeChromaticities(const EXRAttribute& attribute) {
    std::array<float, 8> values{};  // red, green, blue, white
    if (attribute.name != kTinyExrChromaticities || attribute.type != kTinyExrChromaticities ||
        attribute.size != sizeof values) {
      return;
    }
    std::memcpy(values.data(), attribute.value, sizeof values);
    header_.colour.chromaticities = {values[6], values[7], values[0], values[1],
                                     values[2], values[3], values[4], values[5]};
  }

  void PutTile(const PixelRows& rows, const EXRTile& tile) const {
    Put(rows,
        {tile.images, data_.left + std::int64_t{tile.offset_x} * exr_.tile_size_x,
         data_.top + std::int64_t{tile.offset_y} * exr_.tile_size_y, tile.width, tile.height});
  }

  // Copies the part of the block that lies in the picture. The rows of a block have
  // the width of a tile even where the picture ends within it.
  void Put(const PixelRows& rows, const Block& block) const {
    const std::int64_t stride = version_.tiled != 0 ? exr_.tile_size_x : block.width;
    const std::int64_t right = std::min({block.left + block.width - 1, display_.right});
    const std::int64_t bottom = std::min({block.top + block.height - 1, display_.bottom});
    for (std::int64_t y = std::max(block.top, display_.top); y <= bottom; ++y) {
      for (std::int64_t x = std::max(block.left, display_.left); x <= right; ++x) {
        const std::int64_t from = (y - block.top) * stride + (x - block.left);
        std::byte* to =
            rows.Row(y - display_.top) + kPixelBytes * static_cast<std::size_t>(x - display_.left);
        PutPixel(block.planes, from, to);
      }
    }
  }

  void PutPixel(unsigned char** planes, std::int64_t from, std::byte* to) const {
    std::array<float, 4> pixel = {1.0F, 0.0F, 0.0F, 0.0F};
    for (std::size_t i = 0; i < pixel.size(); ++i) {
      if (channels_[i] < 0) continue;
      const auto* plane = reinterpret_cast<const float*>(planes[channels_[i]]);
      pixel[i] = plane[from];
    }
    std::memcpy(to, pixel.data(), sizeof pixel);
  }

  std::string file_;
  std::size_t table_ = 0;  // of chunks: where it begins
  EXRVersion version_{};
  Header exr_;
  ExrWindow display_{};
  ExrWindow data_{};
  bool grey_ = false;
  std::array<int, 4> channels_{};  // alpha (-1: none), red, green, blue
  PictureHeader header_;
};

}  // namespace

bool IsExr(std::istream& stream) {
  std::array<char, 4> start{};
  stream.read(start.data(), start.size());
  ReturnToStart(stream);
  return start == kMagic;
}

std::unique_ptr<PictureReader> OpenExr(std::istream& stream) {
  return std::make_unique<ExrReader>(stream);
}

}  // namespace pxl
