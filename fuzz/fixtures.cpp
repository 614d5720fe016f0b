// Failed expectations of shared fixtures stop a fuzzer.
#include <gtest/gtest.h>

#include "fuzz/demand.h"

void fuzz::StopAtFailedExpectations() {
  GTEST_FLAG_SET(throw_on_failure, true);
}
