// Limits, sizes and allocation of pictures.
#include "tools/pxl/pictures/picture.h"

#include "tools/pxl/system/failure.h"

namespace pxl {
namespace {

std::string SizeText(std::int64_t width, std::int64_t height) {
  return std::to_string(width) + " x " + std::to_string(height) + " pixels";
}

// Sides that are not positive are refused elsewhere.
bool HasMore(std::int64_t width, std::int64_t height, std::uint64_t most) {
  if (width < 1 || height < 1) return false;
  // The product might overflow.
  return static_cast<std::uint64_t>(width) > most / static_cast<std::uint64_t>(height);
}

}  // namespace

void RefuseMorePixels(const PictureHeader& header, std::uint64_t most) {
  const std::string limit = ", more than the " + std::to_string(most) + " that --max-pixels allows";
  if (HasMore(header.width, header.height, most)) throw Failure(SizeText(header) + limit);
  if (!header.window) return;
  const auto [width, height] = *header.window;
  if (HasMore(width, height, most)) {
    throw Failure("a data window of " + SizeText(width, height) + limit);
  }
}

std::string SizeText(const PictureHeader& header) {
  return SizeText(header.width, header.height);
}

Picture NewPicture(std::int64_t width, std::int64_t height, SampleType samples) {
  Picture picture;
  picture.header.width = width;
  picture.header.height = height;
  picture.header.samples = samples;
  picture.pixels.resize(picture.RowBytes() * static_cast<std::size_t>(height));
  return picture;
}

Picture ReadPicture(PictureReader& reader) {
  Picture picture =
      NewPicture(reader.header().width, reader.header().height, reader.header().samples);
  picture.header = reader.header();
  reader.Read(picture.Rows());
  return picture;
}

}  // namespace pxl
