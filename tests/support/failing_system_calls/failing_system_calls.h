// Calls to the system that fail on demand. The functions that take the place of
// such calls ask here, by the name of the call.
#ifndef TESTS_SUPPORT_FAILING_SYSTEM_CALLS_FAILING_SYSTEM_CALLS_H
#define TESTS_SUPPORT_FAILING_SYSTEM_CALLS_FAILING_SYSTEM_CALLS_H

#include <cstddef>
#include <string>
#include <vector>

namespace failing_system_calls {

struct Failure {
  std::size_t nth;  // of all calls, from 1
  int error;
};

// From now on these calls fail; the list of calls starts empty.
void Begin(const std::vector<Failure>& wanted);
// Nothing fails any more.
void End();

// The names of the calls since the beginning.
const std::vector<std::string>& Calls();
// How many of them failed.
std::size_t Failures();

// For the substitutes: notes the call, and returns its error, 0 if it is to work.
int ErrorOf(const char* name);
// The same for calls that set errno; whether it fails.
bool Fails(const char* name);

}  // namespace failing_system_calls

#endif
