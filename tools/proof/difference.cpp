// Finds the first byte that differs, and describes it.
#include "tools/proof/difference.h"

#include <algorithm>
#include <cstring>
#include <iomanip>
#include <sstream>

namespace proof {

std::optional<Difference> FirstDifference(const unsigned char* is, const unsigned char* shouldBe,
                                          std::size_t bytes) {
  if (bytes == 0 || std::memcmp(is, shouldBe, bytes) == 0) return std::nullopt;
  const auto* place = std::mismatch(is, is + bytes, shouldBe).first;
  const auto index = static_cast<std::size_t>(place - is);
  return Difference{index, is[index], shouldBe[index]};
}

std::string Hex(std::uint64_t number, int digits) {
  std::ostringstream text;
  text << "0x" << std::uppercase << std::hex << std::setfill('0') << std::setw(digits) << number;
  return text.str();
}

std::string TextOf(const Difference& difference) {
  return "is " + Hex(difference.is, 2) + ", should be " + Hex(difference.shouldBe, 2);
}

}  // namespace proof
