// Makes operator new fail on demand.
#ifndef TESTS_STAND_INS_QDE_SCARCE_NEW_H
#define TESTS_STAND_INS_QDE_SCARCE_NEW_H

constexpr int kEnough = -1;

// The number of times that operator new still succeeds on this thread; kEnough, the
// initial value, means always. Also applies to the libraries under the test.
extern thread_local int allocationsLeft;

#endif
