// Runs of a routine at many lengths and places.
#include "tools/proof/shapes.h"

#include <algorithm>
#include <cstring>

#include "tools/proof/difference.h"
#include "tools/proof/workbench.h"

namespace proof {
namespace {

constexpr std::size_t kVector = 64;
constexpr std::size_t kVectors = 9;  // one more than any loop takes at once

// Odd lengths that need many turns of any loop.
constexpr std::size_t kLongLengths[] = {1021, 4099, 8259, 24653};
constexpr std::size_t kLongest = kLongLengths[3];

// Vectors are counted on the side with the smaller elements.
std::size_t MostOfEveryLength(const Subject& subject) {
  std::size_t element = subject.destination.elementBytes;
  if (subject.source.elementBytes != 0) element = std::min(element, subject.source.elementBytes);
  return kVectors * kVector / element + 1;
}

std::vector<std::size_t> Lengths(const Subject& subject) {
  std::vector<std::size_t> lengths;
  for (std::size_t n = 0; n <= MostOfEveryLength(subject); ++n) lengths.push_back(n);
  lengths.insert(lengths.end(), std::begin(kLongLengths), std::end(kLongLengths));
  return lengths;
}

// The places of a run in a vector: all, or three of them.
std::vector<std::size_t> AllPlaces(const Side& side) {
  std::vector<std::size_t> places;
  for (std::size_t place = 0; place < kVector; place += side.step) places.push_back(place);
  return places;
}

std::vector<std::size_t> FewPlaces(const Side& side) {
  if (side.step == kVector) return {0};
  return {0, side.step, kVector - side.step};
}

Finding TryPlaces(Workbench& bench, const std::vector<std::size_t>& sources,
                  const std::vector<std::size_t>& destinations) {
  for (const std::size_t source : sources) {
    for (const std::size_t destination : destinations) {
      if (auto finding =
              bench.Try(bench.MiddleSource() + source, bench.MiddleDestination() + destination)) {
        return finding;
      }
    }
  }
  return std::nullopt;
}

Finding TryFences(Workbench& bench) {
  for (unsigned char* from : {bench.HighSource(), bench.LowSource()}) {
    for (unsigned char* to : {bench.HighDestination(), bench.LowDestination()}) {
      if (auto finding = bench.Try(from, to)) return finding;
    }
  }
  return std::nullopt;
}

Finding TryLength(Workbench& bench, const Subject& subject) {
  if (auto finding = TryFences(bench)) return finding;
  if (auto finding = TryPlaces(bench, FewPlaces(subject.source), AllPlaces(subject.destination))) {
    return finding;
  }
  return TryPlaces(bench, AllPlaces(subject.source), FewPlaces(subject.destination));
}

}  // namespace

Finding CheckShapes(const Subject& subject) {
  Workbench bench(subject, kLongest);
  for (const std::size_t length : Lengths(subject)) {
    bench.SetCount(length);
    if (auto finding = TryLength(bench, subject)) return finding;
  }
  return std::nullopt;
}

}  // namespace proof
