// OpenEXR files read by the OpenEXR library.
#include <ImfChannelList.h>
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfInputFile.h>
#include <ImfStandardAttributes.h>
#include <ImfVersion.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <istream>

#include "tools/pxl/formats/exr/exr_reader.h"
#include "tools/pxl/formats/exr/exr_window.h"
#include "tools/pxl/formats/exr/openexr_streams.h"
#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/stream_errors.h"

namespace pxl {
namespace {

constexpr std::size_t kPixelBytes = PixelBytes(SampleType::Float);

ExrWindow WindowOf(const Imath::Box2i& box) {
  return {box.min.x, box.min.y, box.max.x, box.max.y};
}

void RefuseKinds(int version) {
  if (Imf::isNonImage(version)) throw Failure("deep OpenEXR files are not supported");
  if (Imf::isMultiPart(version)) throw Failure("OpenEXR files of several parts are not supported");
}

void CheckChannel(const std::string& name, const Imf::Channel& channel) {
  if (channel.type == Imf::UINT) {
    throw Failure("channel " + name + " holds whole numbers; half or float is needed");
  }
  if (channel.xSampling != 1 || channel.ySampling != 1) {
    throw Failure("channel " + name + " is subsampled, which is not supported");
  }
}

// Whether the file is grey (Y) rather than RGB.
bool ChooseChannels(const Imf::ChannelList& channels) {
  if (channels.findChannel("RY") != nullptr || channels.findChannel("BY") != nullptr) {
    throw Failure("luminance/chroma OpenEXR files are not supported");
  }
  const bool grey = channels.findChannel("Y") != nullptr && channels.findChannel("R") == nullptr;
  const std::vector<std::string> needed =
      grey ? std::vector<std::string>{"Y"} : std::vector<std::string>{"R", "G", "B"};
  for (const std::string& name : needed) {
    const Imf::Channel* channel = channels.findChannel(name);
    if (channel == nullptr) throw Failure("no channel " + name + "; R, G and B or Y are needed");
    CheckChannel(name, *channel);
  }
  if (const Imf::Channel* alpha = channels.findChannel("A")) CheckChannel("A", *alpha);
  return grey;
}

std::string Describe(const Imf::Header& header, bool grey, bool tiled) {
  const Imf::ChannelList& channels = header.channels();
  const Imf::Channel* first = channels.findChannel(grey ? "Y" : "R");
  std::string text = first->type == Imf::HALF ? "OpenEXR, half, " : "OpenEXR, float, ";
  text += grey ? "Y" : "RGB";
  if (channels.findChannel("A") != nullptr) text += "A";
  return text + (tiled ? ", tiled" : "");
}

class ExrReader : public PictureReader {
 public:
  explicit ExrReader(std::istream& stream) : adapter_(stream) {
    Imf::Header header;
    int version = 0;
    Decode([&] { ReadHeader(header, version); });
    RefuseKinds(version);
    Decode([&] {
      // Missing attributes throw here.
      display_ = WindowOf(header.displayWindow());
      data_ = WindowOf(header.dataWindow());
      header.channels();
    });
    CheckDisplayWindow(display_);
    grey_ = ChooseChannels(header.channels());
    tiled_ = Imf::isTiled(version);
    Fill(header);
  }

  const PictureHeader& header() const override { return header_; }

  void Read(const PixelRows& rows) override {
    for (std::int64_t y = 0; y < header_.height; ++y) {
      std::memset(rows.Row(y), 0, kPixelBytes * static_cast<std::size_t>(header_.width));
    }
    adapter_.seekg(0);
    Decode([&] { ReadRows(rows); });
  }

 private:
  // Only the header: opening the file would allocate tables by the sizes in the
  // header, which are not checked yet.
  void ReadHeader(Imf::Header& header, int& version) {
    int magic = 0;
    adapter_.read(reinterpret_cast<char*>(&magic), 4);
    adapter_.read(reinterpret_cast<char*>(&version), 4);
    if (Imf::isNonImage(version) || Imf::isMultiPart(version)) return;
    header.readFrom(adapter_, version);
  }

  template <typename Work>
  void Decode(const Work& work) {
    try {
      CallOpenExr("damaged OpenEXR", work);
    } catch (const Failure&) {
      adapter_.RefuseUnreadable();
      throw;
    }
  }

  void Fill(const Imf::Header& header) {
    header_.width = display_.Width();
    header_.height = display_.Height();
    header_.window = {data_.Width(), data_.Height()};
    header_.samples = SampleType::Float;
    header_.channels = {grey_, header.channels().findChannel("A") != nullptr};
    header_.format = Describe(header, grey_, tiled_);
    if (Imf::hasChromaticities(header)) {
      const Imf::Chromaticities& c = Imf::chromaticities(header);
      header_.colour.chromaticities = {c.white.x, c.white.y, c.red.x,  c.red.y,
                                       c.green.x, c.green.y, c.blue.x, c.blue.y};
    }
    CheckDataWindow(data_);
    if (!header.hasTileDescription()) return;
    CheckTileSize(data_, header.tileDescription().xSize, header.tileDescription().ySize);
  }

  void ReadRows(const PixelRows& rows) {
    Imf::InputFile file(adapter_);
    // The line has room for the data window of the header as it was first read.
    if (WindowOf(file.header().dataWindow()) != data_) {
      throw Failure("the file was changed while it was read");
    }
    if (!file.isComplete()) throw Failure("the file is incomplete");
    std::vector<std::byte> line(kPixelBytes * static_cast<std::size_t>(data_.Width()));
    file.setFrameBuffer(LineBuffer(line));
    const std::int64_t last = std::min(data_.bottom, display_.bottom);
    for (std::int64_t y = std::max(data_.top, display_.top); y <= last; ++y) {
      file.readPixels(static_cast<int>(y));
      if (grey_) SpreadGrey(line);
      CopyOverlap(line, rows.Row(y - display_.top));
    }
  }

  // Every scan line is read to the same place: the stride of rows is 0.
  Imf::FrameBuffer LineBuffer(std::vector<std::byte>& line) const {
    char* const origin = reinterpret_cast<char*>(line.data()) -
                         data_.left * static_cast<std::ptrdiff_t>(kPixelBytes);
    Imf::FrameBuffer buffer;
    const auto insert = [&](const char* name, int channel, double missing) {
      buffer.insert(name, Imf::Slice(Imf::FLOAT, origin + std::ptrdiff_t{4} * channel, kPixelBytes,
                                     0, 1, 1, missing));
    };
    insert("A", 0, 1.0);
    insert(grey_ ? "Y" : "R", 1, 0.0);
    if (!grey_) insert("G", 2, 0.0);
    if (!grey_) insert("B", 3, 0.0);
    return buffer;
  }

  static void SpreadGrey(std::vector<std::byte>& line) {
    for (std::size_t i = 0; i < line.size(); i += kPixelBytes) {
      std::memcpy(&line[i + 8], &line[i + 4], 4);
      std::memcpy(&line[i + 12], &line[i + 4], 4);
    }
  }

  void CopyOverlap(const std::vector<std::byte>& line, std::byte* row) const {
    const std::int64_t left = std::max(data_.left, display_.left);
    const std::int64_t right = std::min(data_.right, display_.right);
    if (left > right) return;
    std::memcpy(row + kPixelBytes * static_cast<std::size_t>(left - display_.left),
                &line[kPixelBytes * static_cast<std::size_t>(left - data_.left)],
                kPixelBytes * static_cast<std::size_t>(right - left + 1));
  }

  ExrInput adapter_;
  ExrWindow display_{};
  ExrWindow data_{};
  bool grey_ = false;
  bool tiled_ = false;
  PictureHeader header_;
};

}  // namespace

bool IsExr(std::istream& stream) {
  std::array<char, 4> start{};
  stream.read(start.data(), start.size());
  ReturnToStart(stream);
  return Imf::isImfMagic(start.data());
}

std::unique_ptr<PictureReader> OpenExr(std::istream& stream) {
  return std::make_unique<ExrReader>(stream);
}

}  // namespace pxl
