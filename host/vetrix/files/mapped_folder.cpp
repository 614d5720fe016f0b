// The folder in which mapped files are made.
#include <utility>

#include "host/vetrix/system/environment.h"
#include "vetrix_host.h"

namespace vetrix::host {

MappedFolder FindMappedFolder() {
  for (const char* variable : {"VETRIX_MAPPED_DIR", "TMPDIR"}) {
    std::string folder = Variable(variable);
    if (!folder.empty()) return {std::move(folder), variable};
  }
  return {FolderForLargeFiles(), ""};
}

}  // namespace vetrix::host
