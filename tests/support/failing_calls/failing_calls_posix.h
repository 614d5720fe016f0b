// The system's calls under mapped files, which fail when a test says so and are
// the system's own otherwise. Takes the place of the library's own.
#ifndef TESTS_SUPPORT_FAILING_CALLS_FAILING_CALLS_POSIX_H
#define TESTS_SUPPORT_FAILING_CALLS_FAILING_CALLS_POSIX_H

#include <set>
#include <string>
#include <vector>

namespace failing_calls {

struct Failure {
  std::size_t nth;  // of all calls, from 1
  int error;
};

// From now on these calls fail, and all calls are noted anew.
void Begin(const std::vector<Failure>& wanted);
// Nothing fails any more.
void End();

// The names of the calls since the beginning.
const std::vector<std::string>& Calls();
// How many of them failed.
std::size_t Failures();

// What is held: descriptors that were opened and views that were mapped.
std::size_t OpenDescriptors();
std::size_t Views();

}  // namespace failing_calls

#endif
