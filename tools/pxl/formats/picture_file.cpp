// Opens, detects and writes picture files of both formats.
#include "tools/pxl/formats/picture_file.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <system_error>

#include "tools/pxl/formats/exr/exr_reader.h"
#include "tools/pxl/formats/exr/exr_writer.h"
#include "tools/pxl/formats/png/png_file.h"
#include "tools/pxl/pictures/colour_tags.h"
#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/output_file.h"

namespace pxl {
namespace {

namespace fs = std::filesystem;

std::ifstream OpenInput(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (fs::is_directory(status)) throw Failure("is a folder");
  // Pictures are read at random places, which a pipe does not allow.
  if (fs::exists(status) && !fs::is_regular_file(status)) throw Failure("is not a regular file");
  errno = 0;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw Failure(std::strerror(errno != 0 ? errno : ENOENT));
  return stream;
}

std::unique_ptr<PictureReader> OpenReader(std::istream& stream) {
  if (IsPng(stream)) return OpenPng(stream);
  if (IsExr(stream)) return OpenExr(stream);
  throw Failure("is neither a PNG nor an OpenEXR file");
}

}  // namespace

std::optional<FileFormat> FormatOfName(const fs::path& path) {
  std::string ending = path.extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  if (ending == ".png") return FileFormat::Png;
  if (ending == ".exr") return FileFormat::Exr;
  return std::nullopt;
}

InputPicture::InputPicture(const fs::path& path, std::uint64_t maxPixels) try
    : stream_(OpenInput(path)), reader_(OpenReader(stream_)) {
  RefuseMorePixels(reader_->header(), maxPixels);
} catch (const Failure& failure) {
  throw Failure(path.string(), failure.what());
} catch (const std::bad_alloc&) {
  throw Failure(path.string(), "not enough memory");
}

void WritePictureFile(const fs::path& path, FileFormat format, const PictureHeader& header,
                      const RowSource& rows) {
  OutputFile file(path);
  try {
    if (format == FileFormat::Png) {
      WritePng(file.stream(), header, rows);
    } else {
      WriteExr(file.stream(), header, rows);
    }
  } catch (const Failure& failure) {
    throw Failure(path.string(), failure.what());
  } catch (const std::bad_alloc&) {
    throw Failure(path.string(), "not enough memory");
  }
  file.Commit();
}

std::string ColourTagsLost(FileFormat format, const ColourTags& colour) {
  return format == FileFormat::Png ? ColourTagsLostInPng(colour) : ColourTagsLostInExr(colour);
}

}  // namespace pxl
