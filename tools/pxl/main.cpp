// pxl, a command-line host of the bitmap module.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "tools/pxl/arguments.h"
#include "tools/pxl/command_line.h"
#include "tools/pxl/commands.h"
#include "tools/pxl/console.h"
#include "tools/pxl/environment.h"
#include "tools/pxl/failure.h"

namespace {

// A comparison that never began must not end as one that found a difference.
int failureCode = pxl::kExitUsage;

std::terminate_handler otherEnd = nullptr;

// Where memory runs out in a destructor there is no way on but the end. Nothing
// here may need memory.
[[noreturn]] void EndWithoutMemory() {
  try {
    if (std::current_exception() != nullptr) throw;
  } catch (const std::bad_alloc&) {
    std::fputs("pxl: not enough memory\n", stderr);
    std::_Exit(failureCode);
  } catch (...) {
  }
  otherEnd();
  std::abort();
}

// Sets the exit code of a failure once it is known.
int Run(int count, const char* const* arguments) {
  pxl::PrepareOutput();
  const pxl::Command command = pxl::ParseArguments(pxl::CommandLine(count, arguments));
  failureCode = command.failureCode;
  pxl::ApplyEnvironment();
  const int code = command.run();
  pxl::FinishOutput();
  return code;
}

}  // namespace

int main(int count, char** arguments) {
  otherEnd = std::set_terminate(EndWithoutMemory);
  try {
    return Run(count, arguments);
  } catch (const pxl::UsageError& error) {
    pxl::TellFailure(error.name(), error.what());
    return pxl::kExitUsage;
  } catch (const pxl::Failure& failure) {
    pxl::TellFailure(failure.name(), failure.what());
  } catch (const std::bad_alloc&) {
    pxl::TellFailure("", "not enough memory");
  } catch (const std::exception& problem) {
    pxl::TellFailure("", problem.what());
  }
  return failureCode;
}
