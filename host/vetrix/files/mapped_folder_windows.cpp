#include "host/utf8_path.h"
#include "host/vetrix/files/mapped_folder.h"

namespace vetrix {

std::string DefaultMappedFolder() {
  return Utf8OfPath(std::filesystem::temp_directory_path());
}

}  // namespace vetrix
