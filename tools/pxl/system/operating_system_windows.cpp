// Arguments, standard streams and new files on Windows.
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

#include <cerrno>
#include <cstdio>
#include <memory>

#include "host/utf8_path.h"
#include "tools/pxl/system/operating_system.h"

namespace pxl {

// Those of main are in the encoding of the system's language, which may lack
// letters that occur in names of files.
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

bool StandardErrorIsTerminal() {
  return _isatty(_fileno(stderr)) != 0;
}

int CreateNewFile(const std::filesystem::path& path) {
  errno = 0;
  constexpr int kNewOnly = _O_CREAT | _O_EXCL | _O_RDWR | _O_BINARY;
  return _wopen(path.c_str(), kNewOnly, _S_IREAD | _S_IWRITE);
}

}  // namespace pxl
