// Environment variables and the temporary folder of Windows.
#include <windows.h>

#include "host/utf8_path.h"
#include "host/vetrix/system/environment.h"
#include "platform/vetrix.h"

namespace vetrix {

std::string Variable(const char* name) {
  const std::wstring wideName(name, name + std::char_traits<char>::length(name));
  std::wstring value;
  DWORD length = GetEnvironmentVariableW(wideName.c_str(), nullptr, 0);
  // The value may grow between two calls.
  while (length > value.size()) {
    value.resize(length);
    length = GetEnvironmentVariableW(wideName.c_str(), value.data(), length);
  }
  value.resize(length);
  return utility::UTF16to8({value.begin(), value.end()});
}

std::string FolderForLargeFiles() {
  return Utf8OfPath(std::filesystem::temp_directory_path());
}

}  // namespace vetrix
