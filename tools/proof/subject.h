// The subjects of the proof: each routine of a processor level with the plain loop
// that it must equal bit for bit.
#ifndef TOOLS_PROOF_SUBJECT_H
#define TOOLS_PROOF_SUBJECT_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "simd/processor.h"

namespace proof {

// Converts `count` elements at `source` to those at `destination`.
using Run = std::function<void(const void* source, void* destination, std::size_t count)>;

enum class Kind {
  Conversion,
  Copy,  // source and destination may overlap
  Store  // the result depends on the count alone; there is no source
};

// One side of a routine.
struct Side {
  std::size_t elementBytes;
  std::size_t step;  // every address is a multiple of this
};

struct Subject {
  simd::Level level;
  std::string name;  // "AVX2 16 to 8, streaming"
  Kind kind;
  Run run;
  Run plain;
  Side source;
  Side destination;
};

// The description of a difference, or nothing.
using Finding = std::optional<std::string>;

// The levels that this processor has, from the lowest on.
std::vector<simd::Level> LevelsHere();

// Four conversions of rows, caching and streaming. The conversion tables must
// have been built when they run.
std::vector<Subject> ConversionSubjects(simd::Level level);

// Copy and fill, caching and streaming, and the reversal of bytes.
std::vector<Subject> RoutineSubjects(simd::Level level);

// Both.
std::vector<Subject> SubjectsOf(simd::Level level);

}  // namespace proof

#endif
