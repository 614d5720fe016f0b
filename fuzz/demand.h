// How a fuzzer says that something is wrong: the program ends, and libFuzzer keeps
// the input.
#ifndef FUZZ_DEMAND_H
#define FUZZ_DEMAND_H

#include <string_view>

namespace fuzz {

// Says what is wrong on standard error, and aborts.
[[noreturn]] void Stop(std::string_view what);

inline void Demand(bool holds, std::string_view what) {
  if (!holds) Stop(what);
}

// What the project's libraries would tell the user on standard error is of no use
// here, a thousand times a second. Reports of sanitizers still appear.
void SilenceLibraries();

// GoogleTest's expectations throw when they do not hold, and so end the program.
// For fuzzers that are test fixtures at heart.
void StopAtFailedExpectations();

}  // namespace fuzz

#endif
