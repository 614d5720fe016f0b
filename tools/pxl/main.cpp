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

int Run(int count, const char* const* arguments) {
  pxl::PrepareOutput();
  const auto action = pxl::ParseArguments(pxl::CommandLine(count, arguments));
  pxl::ApplyEnvironment();
  const int code = action();
  pxl::FinishOutput();
  return code;
}

}  // namespace

int main(int count, char** arguments) {
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
  return pxl::kExitFailure;
}
