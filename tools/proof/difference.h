// The first byte in which two runs of memory differ.
#ifndef TOOLS_PROOF_DIFFERENCE_H
#define TOOLS_PROOF_DIFFERENCE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace proof {

struct Difference {
  std::size_t place;
  unsigned is;
  unsigned shouldBe;
};

std::optional<Difference> FirstDifference(const unsigned char* is, const unsigned char* shouldBe,
                                          std::size_t bytes);

// "0x" and at least `digits` digits.
std::string Hex(std::uint64_t number, int digits);

// "is 0x12, should be 0x34".
std::string TextOf(const Difference& difference);

}  // namespace proof

#endif
