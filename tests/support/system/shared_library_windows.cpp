// Loads libraries with LoadLibrary.
#include <windows.h>

#include <filesystem>

#include "tests/support/system/shared_library.h"

void* LoadSharedLibrary(const char* file, std::string& problem) {
  const std::filesystem::path path = std::filesystem::path(file).make_preferred();
  HMODULE library = LoadLibraryW(path.c_str());
  if (library == nullptr) problem = "system error " + std::to_string(GetLastError());
  return library;
}

void* FindExported(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}
