#ifndef TOOLS_PXL_MODULE_PACKAGE_VERSION_H
#define TOOLS_PXL_MODULE_PACKAGE_VERSION_H

#include <string>

namespace pxl {

// Interface and revision of the library: "31.14".
std::string PackageVersion();

}  // namespace pxl

#endif
