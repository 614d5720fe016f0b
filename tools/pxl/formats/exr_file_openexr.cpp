#include <ImfChannelList.h>
#include <ImfChromaticitiesAttribute.h>
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfIO.h>
#include <ImfInputFile.h>
#include <ImfOutputFile.h>
#include <ImfStandardAttributes.h>
#include <ImfVersion.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <istream>
#include <ostream>

#include "tools/pxl/formats/exr_file.h"
#include "tools/pxl/formats/reading.h"
#include "tools/pxl/pictures/colour_tags.h"
#include "tools/pxl/system/failure.h"

namespace pxl {
namespace {

constexpr std::size_t kPixelBytes = PixelBytes(SampleType::Float);

// Far above any picture, and low enough that no table the library makes for a
// data window or a tile can hurt.
constexpr std::int64_t kLargestSide = 131072;
constexpr std::int64_t kLargestTile = 1 << 26;  // pixels

class InputStream : public Imf::IStream {
 public:
  explicit InputStream(std::istream& stream) : Imf::IStream("picture"), stream_(stream) {}

  bool read(char* data, int count) override {
    errno = 0;
    stream_.read(data, count);
    if (stream_.bad()) KeepTrouble();
    if (!stream_) throw Failure("the file ends too early");
    return stream_.peek() != std::istream::traits_type::eof();
  }
  std::uint64_t tellg() override { return static_cast<std::uint64_t>(stream_.tellg()); }
  void seekg(std::uint64_t position) override {
    stream_.clear();
    errno = 0;
    stream_.seekg(static_cast<std::streamoff>(position));
    // Without a reason of the system's it is a place that the file has not got.
    if (!stream_ && errno != 0) KeepTrouble();
  }
  void clear() override { stream_.clear(); }

  // Throws Failure if the system failed to read, whatever the library made of it.
  void RefuseUnreadable() const {
    if (!trouble_.empty()) throw Failure("cannot read: " + trouble_);
  }

 private:
  void KeepTrouble() {
    if (trouble_.empty()) trouble_ = SystemReason();
  }

  std::istream& stream_;
  std::string trouble_;
};

class OutputStream : public Imf::OStream {
 public:
  explicit OutputStream(std::ostream& stream) : Imf::OStream("picture"), stream_(stream) {}

  void write(const char* data, int count) override {
    errno = 0;
    stream_.write(data, count);
    if (!stream_) throw Failure(errno != 0 ? std::strerror(errno) : "the stream takes no more");
  }
  // Throws nothing: the library asks in a destructor as well.
  std::uint64_t tellp() override {
    const std::ostream::pos_type place = stream_.tellp();
    placesKnown_ = placesKnown_ && place != std::ostream::pos_type(-1);
    return static_cast<std::uint64_t>(std::streamoff{place});
  }
  void seekp(std::uint64_t position) override {
    stream_.seekp(static_cast<std::streamoff>(position));
  }

  // Whether tellp could always tell.
  bool PlacesKnown() const { return placesKnown_; }

 private:
  std::ostream& stream_;
  bool placesKnown_ = true;
};

// The library's exceptions, in one form.
template <typename Work>
void Guarded(const std::string& what, const Work& work) {
  try {
    work();
  } catch (const std::bad_alloc&) {
    throw Failure("not enough memory");
  } catch (const std::exception& problem) {
    throw Failure(what + ": " + problem.what());
  }
}

// A window of pixels, both edges inclusive, in numbers that do not overflow.
struct Window {
  std::int64_t left, top, right, bottom;

  std::int64_t Width() const { return right - left + 1; }
  std::int64_t Height() const { return bottom - top + 1; }
  bool operator==(const Window&) const = default;
};

Window WindowOf(const Imath::Box2i& box) {
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

// For the reason's sake: the library itself would fail deep inside.
void CheckSizes(const Imf::Header& header, const Window& data) {
  if (data.Width() < 1 || data.Height() < 1) throw Failure("damaged OpenEXR: empty data window");
  if (data.Width() > kLargestSide || data.Height() > kLargestSide) {
    throw Failure("a data window of " + std::to_string(data.Width()) + " x " +
                  std::to_string(data.Height()) + " pixels is too large");
  }
  if (!header.hasTileDescription()) return;
  const Imf::TileDescription& tile = header.tileDescription();
  if (tile.xSize > kLargestSide || tile.ySize > kLargestSide ||
      std::int64_t{tile.xSize} * tile.ySize > kLargestTile ||
      data.Width() * tile.ySize > kLargestTile) {
    throw Failure("tiles of " + std::to_string(tile.xSize) + " x " + std::to_string(tile.ySize) +
                  " pixels are too large");
  }
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
    if (display_.Width() < 1 || display_.Height() < 1) {
      throw Failure("damaged OpenEXR: empty display window");
    }
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
  // Only the header, by itself: opening the file would make tables of whatever
  // size the header asks for.
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
      Guarded("damaged OpenEXR", work);
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
    CheckSizes(header, data_);
  }

  void ReadRows(const PixelRows& rows) {
    Imf::InputFile file(adapter_);
    // The line has room for what the header said when it was first read.
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

  // Every scan line goes to the same place: the stride of rows is 0.
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

  InputStream adapter_;
  Window display_{};
  Window data_{};
  bool grey_ = false;
  bool tiled_ = false;
  PictureHeader header_;
};

Imf::Header HeaderToWrite(const PictureHeader& picture) {
  Imf::Header header(static_cast<int>(picture.width), static_cast<int>(picture.height));
  header.compression() = Imf::ZIP_COMPRESSION;
  for (const char* name : {"R", "G", "B", "A"}) {
    header.channels().insert(name, Imf::Channel(Imf::FLOAT));
  }
  std::optional<Chromaticities> values = picture.colour.chromaticities;
  if (const PngChunk* chunk = FindChunk(picture.colour, "cHRM")) {
    values = ChromaticitiesOfChunk(*chunk);
  }
  if (values) {
    const auto point = [&](std::size_t i) {
      return Imath::V2f(static_cast<float>(values->at(2 * i)),
                        static_cast<float>(values->at(2 * i + 1)));
    };
    Imf::addChromaticities(header, Imf::Chromaticities(point(1), point(2), point(3), point(0)));
  }
  return header;
}

Imf::FrameBuffer RowToWrite(const std::byte* row) {
  // The library takes a pointer to changeable memory and only reads it.
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
  char* const base = const_cast<char*>(reinterpret_cast<const char*>(row));
  Imf::FrameBuffer buffer;
  std::ptrdiff_t channel = 0;
  for (const char* name : {"A", "R", "G", "B"}) {
    buffer.insert(name, Imf::Slice(Imf::FLOAT, base + 4 * channel++, kPixelBytes, 0));
  }
  return buffer;
}

void WriteRows(OutputStream& output, const PictureHeader& header, const RowSource& rows) {
  Imf::OutputFile file(output, HeaderToWrite(header));
  for (std::int64_t y = 0; y < header.height; ++y) {
    file.setFrameBuffer(RowToWrite(rows(y)));
    file.writePixels(1);
  }
}

// The library keeps to itself what goes wrong with the last rows, and when it
// writes the places of all of them at the end.
void RefuseIncomplete(const OutputStream& output, std::istream& stream) {
  stream.seekg(0);
  InputStream input(stream);
  if (!output.PlacesKnown() || !Imf::InputFile(input).isComplete()) {
    throw Failure("rows are missing in the file; there may be too little memory");
  }
}

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

void WriteExr(std::iostream& stream, const PictureHeader& header, const RowSource& rows) {
  Guarded("cannot write", [&] {
    OutputStream output(stream);
    WriteRows(output, header, rows);
    RefuseIncomplete(output, stream);
  });
}

}  // namespace pxl
