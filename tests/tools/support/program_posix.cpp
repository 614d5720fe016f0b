// Runs the program by a shell.
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <sstream>

#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

namespace {

std::string Quoted(const std::string& text) {
  std::ostringstream quoted;
  quoted << '\'';
  for (const char c : text) c == '\'' ? quoted << "'\\''" : quoted << c;
  quoted << '\'';
  return quoted.str();
}

// A shell that runs the line; 0 if there can be none.
pid_t Start(std::string line) {
  std::string shell = "/bin/sh";
  std::string option = "-c";
  char* const arguments[] = {shell.data(), option.data(), line.data(), nullptr};
  pid_t process = 0;
  const int error = posix_spawn(&process, arguments[0], nullptr, nullptr, arguments, environ);
  return error == 0 ? process : 0;
}

int Wait(pid_t process) {
  int status = -1;
  if (process != 0) waitpid(process, &status, 0);
  return status;
}

Outcome RunShell(const std::string& command) {
  const TemporaryFolder folder;
  std::ostringstream line;
  line << "{ " << command << "; } >" << Quoted((folder / "output").string()) << " 2>"
       << Quoted((folder / "errors").string());
  const int status = Wait(Start(line.str()));
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return {code, ReadBytes(folder / "output"), ReadBytes(folder / "errors")};
}

std::string CommandLine(const std::vector<std::string>& arguments,
                        const std::vector<Setting>& environment) {
  std::ostringstream command;
  command << "PXL_SCRAMBLE=1";
  for (const Setting& setting : environment) {
    command << ' ' << setting.variable << '=' << Quoted(setting.value);
  }
  command << ' ' << Quoted(PXL_PROGRAM);
  for (const std::string& argument : arguments) command << ' ' << Quoted(argument);
  return command.str();
}

}  // namespace

Outcome RunPxl(const std::vector<std::string>& arguments, const std::vector<Setting>& environment) {
  return RunShell(CommandLine(arguments, environment));
}

Outcome RunPxlInShell(const std::string& preparation, const std::vector<std::string>& arguments,
                      const std::string& redirection) {
  return RunShell(preparation + " " + CommandLine(arguments, {}) + " " + redirection);
}

Outcome RunPxlOnATerminal(const std::vector<std::string>& arguments) {
  return RunShell("script -qec " + Quoted(CommandLine(arguments, {})) + " /dev/null </dev/null");
}
