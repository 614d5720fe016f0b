// How a fuzzer reports a failure: the program ends, and libFuzzer keeps the input.
#ifndef FUZZ_DEMAND_H
#define FUZZ_DEMAND_H

#include <string_view>

namespace fuzz {

// Writes the reason to standard error, and aborts.
[[noreturn]] void Stop(std::string_view what);

inline void Demand(bool holds, std::string_view what) {
  if (!holds) Stop(what);
}

// Discards the messages of the project's libraries on standard error, of which
// there would be thousands a second. Reports of sanitizers still appear.
void SilenceLibraries();

// GoogleTest's expectations throw when they do not hold, and so end the program.
// For fuzzers that are test fixtures at heart.
void StopAtFailedExpectations();

}  // namespace fuzz

#endif
