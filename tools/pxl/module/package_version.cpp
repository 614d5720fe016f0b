#include "tools/pxl/module/package_version.h"

#include <cstdint>

#include "PXL.h"

namespace pxl {

std::string PackageVersion() {
  const std::uint32_t version = PXL_PkgObjectVersion();
  return std::to_string(version >> 16) + "." + std::to_string(version & 0xFFFFU);
}

}  // namespace pxl
