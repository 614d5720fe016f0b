// OpenEXR files being written.
#ifndef TOOLS_PXL_FORMATS_EXR_EXR_WRITER_H
#define TOOLS_PXL_FORMATS_EXR_EXR_WRITER_H

#include <iosfwd>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

// Writes R, G, B and A as floats, with the chromaticities of the colour tags, and
// checks that the file has all rows. Throws Failure.
void WriteExr(std::iostream& stream, const PictureHeader& header, const RowSource& rows);

}  // namespace pxl

#endif
