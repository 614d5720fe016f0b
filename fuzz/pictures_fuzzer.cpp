// Picture files: any input is read or refused with one line, and a picture that was
// read stays the same when it is written and read again. The program that this is
// linked into chooses the libraries behind the readers.
#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/demand.h"
#include "tools/pxl/formats/exr_file.h"
#include "tools/pxl/formats/png_file.h"
#include "tools/pxl/pictures/picture.h"
#include "tools/pxl/system/failure.h"

namespace {

using fuzz::Demand;
using pxl::Picture;
using pxl::PictureHeader;

// Sizes that a file declares above this are the limits' affair, and of no use here.
constexpr std::int64_t kMostPixels = 1 << 14;

// ---- What OpenEXR files declare before they are opened

std::int64_t IntAt(std::string_view file, std::size_t place) {
  std::int32_t value = 0;
  std::memcpy(&value, file.data() + place, sizeof value);
  return value;
}

// Behind the name of the type, its end and the size of the value.
template <typename Visit>
void ForEachAttribute(std::string_view file, std::string_view type, std::size_t bytes,
                      Visit visit) {
  for (std::size_t at = file.find(type); at != std::string_view::npos;
       at = file.find(type, at + 1)) {
    const std::size_t value = at + type.size() + 1 + 4;
    if (value + bytes <= file.size()) visit(value);
  }
}

bool DeclaresSmallExr(std::string_view file) {
  bool small = true;
  ForEachAttribute(file, "box2i", 16, [&](std::size_t at) {
    const std::int64_t width = IntAt(file, at + 8) - IntAt(file, at) + 1;
    const std::int64_t height = IntAt(file, at + 12) - IntAt(file, at + 4) + 1;
    small =
        small && (width < 1 || height < 1 ||
                  (width < kMostPixels && height < kMostPixels && width * height < kMostPixels));
  });
  ForEachAttribute(file, "tiledesc", 8, [&](std::size_t at) {
    const std::int64_t width = std::abs(IntAt(file, at));
    const std::int64_t height = std::abs(IntAt(file, at + 4));
    small = small && width < kMostPixels && height < kMostPixels && width * height < kMostPixels;
  });
  return small;
}

// ---- Reading

using Opener = std::unique_ptr<pxl::PictureReader> (*)(std::istream&);

// Nothing when the file is refused. Any other exception ends the program.
std::optional<Picture> Read(const std::string& file, Opener open) {
  std::istringstream stream(file);
  try {
    const auto reader = open(stream);
    const PictureHeader& header = reader->header();
    Demand(header.width > 0 && header.height > 0, "a picture without pixels");
    if (header.width > kMostPixels || header.height > kMostPixels / header.width) return {};
    return ReadPicture(*reader);
  } catch (const pxl::Failure& failure) {
    const std::string_view reason = failure.what();
    if (reason.empty() || reason.find(0x0A) != std::string_view::npos) {
      fuzz::Stop("a reason that is no line: " + std::string(reason));
    }
    return {};
  }
}

// ---- And back

using Writer = std::function<void(std::iostream&, const PictureHeader&, const pxl::RowSource&)>;

Picture WrittenAndRead(const Picture& picture, const Writer& write, Opener open) {
  std::stringstream stream;
  write(stream, picture.header, [&picture](std::int64_t y) { return picture.Row(y); });
  std::optional<Picture> back = Read(stream.str(), open);
  Demand(back.has_value(), "a written picture cannot be read");
  return *std::move(back);
}

std::vector<std::pair<std::string, std::vector<std::uint8_t>>> ChunksOf(const Picture& picture) {
  std::vector<std::pair<std::string, std::vector<std::uint8_t>>> chunks;
  for (const pxl::PngChunk& chunk : picture.header.colour.chunks) {
    const bool grey = chunk.name == "iCCP" && picture.header.colour.greyProfile;
    if (!grey) chunks.emplace_back(chunk.name, chunk.data);
  }
  std::ranges::sort(chunks);
  return chunks;
}

bool SameChromaticities(const PictureHeader& a, const PictureHeader& b) {
  const auto& first = a.colour.chromaticities;
  const auto& second = b.colour.chromaticities;
  if (!first || !second) return !first && !second;
  // By their bits, since a file may hold NaN.
  const auto same = [](double x, double y) {
    return std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(y);
  };
  return std::ranges::equal(*first, *second, same);
}

void CheckWayBack(const Picture& picture, const Writer& write, Opener open) {
  const Picture back = WrittenAndRead(picture, write, open);
  Demand(back.header.width == picture.header.width && back.header.height == picture.header.height &&
             back.header.samples == picture.header.samples,
         "a written picture has another size or depth");
  Demand(back.pixels == picture.pixels, "a written picture has other pixels");
  Demand(ChunksOf(back) == ChunksOf(picture), "a written picture has other colour tags");
  Demand(SameChromaticities(back.header, picture.header), "a written picture has other colours");
}

void CheckPng(const std::string& file) {
  const std::optional<Picture> picture = Read(file, pxl::OpenPng);
  if (!picture) return;
  const bool written =
      picture->header.samples != pxl::SampleType::Integer16 || pxl::CanWrite16BitPng();
  if (written) CheckWayBack(*picture, pxl::WritePng, pxl::OpenPng);
}

void CheckExr(const std::string& file) {
  if (!DeclaresSmallExr(file)) return;
  const std::optional<Picture> picture = Read(file, pxl::OpenExr);
  if (picture) CheckWayBack(*picture, pxl::WriteExr, pxl::OpenExr);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string file(reinterpret_cast<const char*>(data), size);
  std::istringstream stream(file);
  if (pxl::IsPng(stream)) {
    CheckPng(file);
  } else if (pxl::IsExr(stream)) {
    CheckExr(file);
  }
  return 0;
}
