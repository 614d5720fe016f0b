// One number for all results of a level's routines for a fixed input.
#ifndef TOOLS_PROOF_DIGEST_H
#define TOOLS_PROOF_DIGEST_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/proof/subject.h"

namespace proof {

// FNV-1a, 64 bits.
class Digest {
 public:
  void Add(const void* bytes, std::size_t count);
  // Sixteen digits.
  [[nodiscard]] std::string Text() const;

 private:
  std::uint64_t hash_ = 0xCBF29CE484222325;
};

// The same on every machine, and for every level that equals the plain loops.
std::string DigestOf(const std::vector<Subject>& subjects);

}  // namespace proof

#endif
