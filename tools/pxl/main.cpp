// pxl, a command-line host of the bitmap module.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "tools/pxl/arguments.h"
#include "tools/pxl/module/environment.h"
#include "tools/pxl/system/console.h"
#include "tools/pxl/system/exit_codes.h"
#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/operating_system.h"

namespace {

// Until the verb is known: 1 would mean that pxl diff found a difference.
int failureCode = pxl::kExitUsage;

[[noreturn]] void End();

// Set before the libraries construct their global objects, which allocate memory
// too.
struct EndInForce {
  EndInForce() : other(std::set_terminate(End)) {}
  std::terminate_handler other;
};
[[gnu::init_priority(101)]] const EndInForce kEndInForce;

// Whether the program ends for lack of memory: an allocation failed in a destructor,
// or there was not enough memory to throw an exception.
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
    pxl::PrintFailure(error.name(), error.what());
    return pxl::kExitUsage;
  } catch (const pxl::Failure& failure) {
    pxl::PrintFailure(failure.name(), failure.what());
  } catch (const std::bad_alloc&) {
    pxl::PrintFailure("", "not enough memory");
  } catch (const std::exception& problem) {
    pxl::PrintFailure("", problem.what());
  }
  return failureCode;
}
