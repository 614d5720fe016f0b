// Counts the page faults and calls to the system of a piece of work.
#ifndef TESTS_SUPPORT_SYSTEM_SYSTEM_USE_H
#define TESTS_SUPPORT_SYSTEM_SYSTEM_USE_H

#include <functional>

// The page faults of this process so far.
long PageFaults();

enum class Quiet {
  Yes,         // not one call to the system
  No,          // at least one
  Failed,      // the work returned false, or it crashed
  Unavailable  // the system cannot forbid calls
};

struct QuietRun {
  Quiet quiet;
  int systemCall;  // the number of the first call when there was one, else -1
};

// Runs both in a process of their own, the work with all calls to the system
// forbidden. Both return whether they succeeded. Googletest's checks have no
// effect there.
QuietRun RunWithoutSystemCalls(const std::function<bool()>& warmUp,
                               const std::function<bool()>& work);

#endif
