// Makes the memory of C++ run out on demand.
#ifndef TESTS_STAND_INS_QDE_SCARCE_NEW_H
#define TESTS_STAND_INS_QDE_SCARCE_NEW_H

constexpr int kEnough = -1;

// How many more times operator new succeeds on this thread; kEnough, as at
// first, is without end. Reaches the libraries under the test as well.
extern thread_local int allocationsLeft;

#endif
