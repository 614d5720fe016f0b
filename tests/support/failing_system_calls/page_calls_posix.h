// The calls to the system that K's pool makes for its pages, in the place of the
// library's own: they fail on demand.
#ifndef TESTS_SUPPORT_FAILING_SYSTEM_CALLS_PAGE_CALLS_POSIX_H
#define TESTS_SUPPORT_FAILING_SYSTEM_CALLS_PAGE_CALLS_POSIX_H

#include <cstdint>

#include "tests/support/failing_system_calls/failing_system_calls.h"

namespace failing_system_calls {

// The bytes that are mapped now.
std::int64_t MappedBytes();

}  // namespace failing_system_calls

#endif
