// The calls to the system that mapped files make, in the place of the library's
// own: they fail on demand.
#ifndef TESTS_SUPPORT_FAILING_SYSTEM_CALLS_FILE_CALLS_POSIX_H
#define TESTS_SUPPORT_FAILING_SYSTEM_CALLS_FILE_CALLS_POSIX_H

#include "tests/support/failing_system_calls/failing_system_calls.h"

namespace failing_system_calls {

// How many descriptors are open and how many views are mapped.
std::size_t OpenDescriptors();
std::size_t Views();

}  // namespace failing_system_calls

#endif
