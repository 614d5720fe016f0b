// OpenEXR files being read.
#ifndef TOOLS_PXL_FORMATS_EXR_EXR_READER_H
#define TOOLS_PXL_FORMATS_EXR_EXR_READER_H

#include <iosfwd>
#include <memory>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

// Whether the stream, at its start, begins as an OpenEXR file does. Leaves the
// stream at its start. Throws Failure if it cannot be read.
bool IsExr(std::istream& stream);

// Reads the header. Accepted are single-part scan-line and tiled files with the
// channels R, G, B or Y, each with or without A, of type half or float. The
// picture is the display window; its pixels outside of the data window are
// transparent black. OpenEXR's colours are premultiplied by convention; the
// values are used unchanged. Throws Failure, with the reason, for any other
// file.
std::unique_ptr<PictureReader> OpenExr(std::istream& stream);

}  // namespace pxl

#endif
