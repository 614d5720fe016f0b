// OpenEXR files written by the OpenEXR library.
#include <ImfChannelList.h>
#include <ImfChromaticitiesAttribute.h>
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfInputFile.h>
#include <ImfOutputFile.h>
#include <ImfStandardAttributes.h>

#include <istream>
#include <optional>

#include "tools/pxl/formats/exr/exr_writer.h"
#include "tools/pxl/formats/exr/openexr_streams.h"
#include "tools/pxl/pictures/colour_tags.h"
#include "tools/pxl/system/failure.h"

namespace pxl {
namespace {

constexpr std::size_t kPixelBytes = PixelBytes(SampleType::Float);

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

void WriteRows(ExrOutput& output, const PictureHeader& header, const RowSource& rows) {
  Imf::OutputFile file(output, HeaderToWrite(header));
  for (std::int64_t y = 0; y < header.height; ++y) {
    file.setFrameBuffer(RowToWrite(rows(y)));
    file.writePixels(1);
  }
}

// The library reports no errors of the last rows, and none of the table of offsets
// that it writes at the end.
void RefuseIncomplete(const ExrOutput& output, std::istream& stream) {
  stream.seekg(0);
  ExrInput input(stream);
  if (!output.PlacesKnown() || !Imf::InputFile(input).isComplete()) {
    throw Failure("rows are missing in the file; there may be too little memory");
  }
}

}  // namespace

void WriteExr(std::iostream& stream, const PictureHeader& header, const RowSource& rows) {
  CallOpenExr("cannot write", [&] {
    ExrOutput output(stream);
    WriteRows(output, header, rows);
    RefuseIncomplete(output, stream);
  });
}

}  // namespace pxl
