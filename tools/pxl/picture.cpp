#include "tools/pxl/picture.h"

namespace pxl {

std::string SizeText(const PictureHeader& header) {
  return std::to_string(header.width) + " x " + std::to_string(header.height) + " pixels";
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
