#include "host/vetrix/files/mapped_folder.h"

namespace vetrix {

// Not /tmp: that is often memory, which mapped files are meant to spare.
std::string DefaultMappedFolder() {
  return "/var/tmp";
}

}  // namespace vetrix
