// The loaded libraries, as the dynamic linker lists them.
#include <link.h>

#include "tests/support/system/loaded_files.h"

std::vector<std::filesystem::path> LoadedFiles() {
  std::vector<std::filesystem::path> files;
  const auto note = [](dl_phdr_info* info, std::size_t, void* context) {
    static_cast<std::vector<std::filesystem::path>*>(context)->emplace_back(info->dlpi_name);
    return 0;
  };
  dl_iterate_phdr(note, &files);
  return files;
}
