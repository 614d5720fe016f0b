// pxl, a command-line host of the bitmap module.
#include <exception>
#include <new>

#include "tools/pxl/arguments.h"
#include "tools/pxl/command_line.h"
#include "tools/pxl/commands.h"
#include "tools/pxl/console.h"
#include "tools/pxl/environment.h"
#include "tools/pxl/failure.h"

namespace {

// Sets the exit code of a failure once it is known.
int Run(int count, const char* const* arguments, int& failureCode) {
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
  // A comparison that never began must not end as one that found a difference.
  int failureCode = pxl::kExitUsage;
  try {
    return Run(count, arguments, failureCode);
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
