// How much was tried, printed at the end of the program.
#ifndef TESTS_FAILURES_TALLY_H
#define TESTS_FAILURES_TALLY_H

#include <string>
#include <vector>

#include "tests/failures/operation.h"

namespace tally {

enum class Kind { Call, New, Pair };

// A failure, or two, and what came of it.
void Count(Kind kind, const Result& result);
// An operation, with the calls that it makes undisturbed. When all operations
// were run, each import has to have been called in one of them.
void NoteOperation(const std::vector<std::string>& log);

}  // namespace tally

#endif
