// PNG files.
#ifndef TOOLS_PXL_FORMATS_PNG_FILE_H
#define TOOLS_PXL_FORMATS_PNG_FILE_H

#include <iosfwd>
#include <memory>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

// Whether the stream, at its start, begins as a PNG file does. Leaves the
// stream at its start. Throws Failure if it cannot be read.
bool IsPng(std::istream& stream);

// Reads the header. Every colour type, depth and interlacing is accepted: less
// than 8 bits, palettes and greys become Integer8 RGB, 16 bits stay Integer16,
// tRNS becomes alpha, and a picture without alpha is opaque. Throws Failure.
std::unique_ptr<PictureReader> OpenPng(std::istream& stream);

// Whether WritePng accepts Integer16 rows.
bool CanWrite16BitPng();

// Writes RGBA with 8 or 16 bits a channel, or indices if there is a palette, with
// the colour tags that PNG can hold. Throws Failure. A library without palettes
// writes their colours.
void WritePng(std::ostream& stream, const PictureHeader& header, const RowSource& rows);

}  // namespace pxl

#endif
