// Picture files of both formats: that of an input is detected from its content, that
// of an output from the ending of its name.
#ifndef TOOLS_PXL_FORMATS_PICTURE_FILE_H
#define TOOLS_PXL_FORMATS_PICTURE_FILE_H

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

enum class FileFormat { Png, Exr };

// By the ending, .png or .exr in any case; none for any other.
std::optional<FileFormat> FormatOfName(const std::filesystem::path& path);

// An open picture file.
class InputPicture {
 public:
  // Reads the header. Throws Failure, named after the path; also when the header has
  // more than `maxPixels`.
  explicit InputPicture(const std::filesystem::path& path, std::uint64_t maxPixels = kMostPixels);

  const PictureHeader& header() const { return reader_->header(); }
  void Read(const PixelRows& rows) { reader_->Read(rows); }
  // The whole picture.
  Picture Read() { return ReadPicture(*reader_); }

 private:
  std::ifstream stream_;
  std::unique_ptr<PictureReader> reader_;
};

// Writes the picture: Integer8 or Integer16 rows for PNG, Float for OpenEXR.
// The file appears when it is complete, or not at all. Throws Failure, named after
// the path.
void WritePictureFile(const std::filesystem::path& path, FileFormat format,
                      const PictureHeader& header, const RowSource& rows);

// The names of the colour tags that a file of that format cannot keep, for people;
// empty if there are none.
std::string ColourTagsLost(FileFormat format, const ColourTags& colour);

}  // namespace pxl

#endif
