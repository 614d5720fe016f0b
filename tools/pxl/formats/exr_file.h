// OpenEXR files.
#ifndef TOOLS_PXL_FORMATS_EXR_FILE_H
#define TOOLS_PXL_FORMATS_EXR_FILE_H

#include <iosfwd>
#include <memory>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

// Whether the stream, at its start, begins as an OpenEXR file does. Leaves the
// stream at its start. Throws Failure if it cannot be read.
bool IsExr(std::istream& stream);

// Reads the header. Accepted are single-part scan-line and tiled files with the
// channels R, G, B or Y, each with or without A, of type half or float. The
// picture is the display window; what the data window does not cover is
// transparent black. OpenEXR's colours are premultiplied by convention; the
// values are taken as they are. Throws Failure, with the reason, for any other
// file.
std::unique_ptr<PictureReader> OpenExr(std::istream& stream);

// Writes R, G, B and A as floats, with the chromaticities that the colour tags
// give, and looks whether all rows are there. Throws Failure.
void WriteExr(std::iostream& stream, const PictureHeader& header, const RowSource& rows);

// In words, which of the colour tags WriteExr leaves out; empty if none.
std::string ColourTagsLostInExr(const ColourTags& colour);

}  // namespace pxl

#endif
