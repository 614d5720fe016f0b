// Libraries that are loaded while the program runs.
#ifndef TESTS_SUPPORT_SYSTEM_SHARED_LIBRARY_H
#define TESTS_SUPPORT_SYSTEM_SHARED_LIBRARY_H

#include <string>

// Null, with the reason in `problem`, when it cannot be loaded.
void* LoadSharedLibrary(const char* file, std::string& problem);
// The function or the data of that name; null when there is none.
void* FindExported(void* library, const char* name);

#endif
