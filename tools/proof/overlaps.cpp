// Copies within one piece of memory, upward and downward.
#include "tools/proof/overlaps.h"

#include <cstring>
#include <iterator>

#include "tools/proof/difference.h"
#include "tools/proof/fenced_memory.h"
#include "tools/proof/inputs.h"

namespace proof {
namespace {

constexpr std::size_t kMostOfEveryLength = 330;
constexpr std::size_t kMostOfEveryDistance = 130;
constexpr std::size_t kLongLengths[] = {1021, 4099, 16411, 70001};
constexpr std::size_t kLongDistances[] = {0,   1,   3,   16,   63,   64,   65,
                                          255, 256, 300, 1024, 4095, 20000};
constexpr std::size_t kPlaces[] = {0, 1, 31};
constexpr std::size_t kMemory = 98304;

class Overlaps {
 public:
  explicit Overlaps(const Subject& subject)
      : subject_(subject), memory_(kMemory), noise_(Noise(kMemory)), expected_(kMemory) {}

  // Copies upward and downward by the distance, in memory that begins at
  // several places and in memory that ends at the fence.
  Finding Try(std::size_t length, std::size_t distance) {
    const std::size_t span = length + distance;
    for (const std::size_t place : kPlaces) {
      if (auto finding = TryBothWays(memory_.begin() + place, length, distance)) return finding;
    }
    return TryBothWays(memory_.end() - span, length, distance);
  }

 private:
  Finding TryBothWays(unsigned char* low, std::size_t length, std::size_t distance) {
    if (auto finding = TryOne(low, distance, 0, length)) return finding;
    return TryOne(low, 0, distance, length);
  }

  // Copies from offset `from` to offset `to`, both counted from `low`.
  Finding TryOne(unsigned char* low, std::size_t from, std::size_t to, std::size_t length) {
    const std::size_t span = from + to + length;
    if (span == 0) return std::nullopt;
    std::memcpy(low, noise_.data(), span);
    std::memcpy(expected_.data(), noise_.data(), span);
    subject_.plain(expected_.data() + from, expected_.data() + to, length);

    subject_.run(low + from, low + to, length);

    const auto difference = FirstDifference(low, expected_.data(), span);
    if (!difference) return std::nullopt;
    return subject_.name + ": " + std::to_string(length) + " bytes " + (from > to ? "down" : "up") +
           " by " + std::to_string(from + to) + ": byte " + std::to_string(difference->place) +
           " of both together " + TextOf(*difference);
  }

  const Subject& subject_;
  FencedMemory memory_;
  Bytes noise_;
  Bytes expected_;
};

}  // namespace

Finding CheckOverlaps(const Subject& subject) {
  if (subject.kind != Kind::Copy) return std::nullopt;
  Overlaps overlaps(subject);
  for (std::size_t length = 0; length <= kMostOfEveryLength; ++length) {
    for (std::size_t distance = 0; distance <= kMostOfEveryDistance; ++distance) {
      if (auto finding = overlaps.Try(length, distance)) return finding;
    }
  }
  for (const std::size_t length : kLongLengths) {
    for (const std::size_t distance : kLongDistances) {
      if (auto finding = overlaps.Try(length, distance)) return finding;
    }
  }
  return std::nullopt;
}

}  // namespace proof
