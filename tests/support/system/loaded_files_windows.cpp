// The loaded libraries, as the system lists them.
#include <windows.h>
// Builds upon the header above.
#include <psapi.h>

#include <array>

#include "tests/support/system/loaded_files.h"

namespace {

// Test programs lie where paths are shorter.
constexpr DWORD kLongestPath = 1024;

std::filesystem::path FileOf(HMODULE library) {
  std::array<wchar_t, kLongestPath> path{};
  const DWORD length = GetModuleFileNameW(library, path.data(), kLongestPath);
  return std::wstring(path.data(), length);
}

}  // namespace

std::vector<std::filesystem::path> LoadedFiles() {
  std::array<HMODULE, 256> libraries{};
  DWORD bytes = 0;
  EnumProcessModules(GetCurrentProcess(), libraries.data(), sizeof libraries, &bytes);
  std::vector<std::filesystem::path> files;
  for (std::size_t k = 0; k < bytes / sizeof(HMODULE) && k < libraries.size(); ++k) {
    files.push_back(FileOf(libraries.at(k)));
  }
  return files;
}
