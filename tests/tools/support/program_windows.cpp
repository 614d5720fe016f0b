// Runs the program by CreateProcess.
#include <windows.h>

#include <vector>

#include "host/utf8_path.h"
#include "tests/support/system/variables.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

namespace {

std::wstring Wide(const std::string& utf8) {
  return PathOfUtf8(utf8).wstring();
}

// Quotes an argument as the program parses it. Quotes, and backslashes before them,
// do not occur in these tests.
std::wstring CommandLine(const std::vector<std::string>& arguments) {
  std::wstring line = L"\"" + Wide(PXL_PROGRAM) + L"\"";
  for (const std::string& argument : arguments) line += L" \"" + Wide(argument) + L"\"";
  return line;
}

// A file that the program inherits for one of its streams.
class OutputTo {
 public:
  explicit OutputTo(const std::filesystem::path& path) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    handle_ = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                          0, nullptr);
  }
  OutputTo(const OutputTo&) = delete;
  OutputTo& operator=(const OutputTo&) = delete;
  ~OutputTo() { CloseHandle(handle_); }
  HANDLE Handle() const { return handle_; }

 private:
  HANDLE handle_;
};

// Its exit code; -1 when it cannot be run.
int Run(std::wstring line, HANDLE output, HANDLE errors) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = output;
  start.hStdError = errors;
  PROCESS_INFORMATION process{};
  if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                     &process) == 0) {
    return -1;
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code = 0;
  GetExitCodeProcess(process.hProcess, &code);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return static_cast<int>(code);
}

}  // namespace

Outcome RunPxl(const std::vector<std::string>& arguments, const std::vector<Setting>& environment) {
  SetVariable("PXL_SCRAMBLE", "1");
  for (const Setting& setting : environment) SetVariable(setting.variable, setting.value);
  const TemporaryFolder folder;
  int code = -1;
  {
    const OutputTo output(folder / "output");
    const OutputTo errors(folder / "errors");
    code = Run(CommandLine(arguments), output.Handle(), errors.Handle());
  }
  for (const Setting& setting : environment) UnsetVariable(setting.variable);
  return {code, ReadBytes(folder / "output"), ReadBytes(folder / "errors")};
}
