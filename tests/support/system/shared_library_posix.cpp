// Loads libraries with dlopen.
#include <dlfcn.h>

#include "tests/support/system/shared_library.h"

void* LoadSharedLibrary(const char* file, std::string& problem) {
  void* library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) problem = dlerror();
  return library;
}

void* FindExported(void* library, const char* name) {
  return dlsym(library, name);
}
