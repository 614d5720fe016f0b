// The list of calls, and of those that fail.
#include "tests/support/failing_system_calls/failing_system_calls.h"

#include <algorithm>
#include <cerrno>

namespace {

std::vector<failing_system_calls::Failure> asked;
std::vector<std::string> calls;
std::size_t failures = 0;

}  // namespace

namespace failing_system_calls {

void Begin(const std::vector<Failure>& wanted) {
  asked = wanted;
  calls.clear();
  failures = 0;
}

void End() {
  asked.clear();
}

const std::vector<std::string>& Calls() {
  return calls;
}

std::size_t Failures() {
  return failures;
}

int ErrorOf(const char* name) {
  calls.emplace_back(name);
  const auto found = std::find_if(asked.begin(), asked.end(),
                                  [](const auto& failure) { return failure.nth == calls.size(); });
  if (found == asked.end()) return 0;
  ++failures;
  return found->error;
}

bool Fails(const char* name) {
  const int error = ErrorOf(name);
  if (error != 0) errno = error;
  return error != 0;
}

}  // namespace failing_system_calls
