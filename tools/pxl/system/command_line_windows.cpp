#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <memory>

#include "host/utf8_path.h"
#include "tools/pxl/system/command_line.h"

namespace pxl {

// Those of main are in the encoding of the system's language, which may lack
// letters that names of files have.
std::vector<std::string> CommandLine(int, const char* const*) {
  int count = 0;
  const std::unique_ptr<LPWSTR[], decltype(&LocalFree)> wide(
      CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
  std::vector<std::string> arguments;
  for (int i = 0; i < count; ++i) arguments.push_back(Utf8OfPath(wide[i]));
  return arguments;
}

void PrepareOutput() {
  SetConsoleOutputCP(CP_UTF8);
  for (std::FILE* stream : {stdout, stderr}) {
    const int descriptor = _fileno(stream);
    if (descriptor < 0) continue;  // closed
    _setmode(descriptor, _O_BINARY);
    auto* handle = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    DWORD mode = 0;
    if (GetConsoleMode(handle, &mode) != 0) {
      SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
  }
}

}  // namespace pxl
