// pxl, a command-line host of the bitmap module.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "tools/pxl/arguments.h"
#include "tools/pxl/commands/commands.h"
#include "tools/pxl/module/environment.h"
#include "tools/pxl/system/command_line.h"
#include "tools/pxl/system/console.h"
#include "tools/pxl/system/failure.h"

namespace {

// A comparison that never began must not end as one that found a difference.
int failureCode = pxl::kExitUsage;

[[noreturn]] void End();

// In force before objects of the libraries in use are made, which takes memory
// as well.
struct EndInForce {
  EndInForce() : other(std::set_terminate(End)) {}
  std::terminate_handler other;
};
[[gnu::init_priority(101)]] const EndInForce kEndInForce;

// Whether that is why the program cannot go on: memory ran out in a destructor,
// or there was not even enough to throw.
bool MemoryRanOut() {
  if (std::current_exception() == nullptr) {
    constexpr std::size_t kSome = 65536;
    void* const probe = std::malloc(kSome);
    std::free(probe);
    return probe == nullptr;
  }
  try {
    throw;
  } catch (const std::bad_alloc&) {
    return true;
  } catch (...) {
    return false;
  }
}

[[noreturn]] void End() {
  if (MemoryRanOut()) {
    std::fputs("pxl: not enough memory\n", stderr);
    std::_Exit(failureCode);
  }
  kEndInForce.other();
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
