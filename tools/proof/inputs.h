// Inputs of the routines, the same on every machine.
#ifndef TOOLS_PROOF_INPUTS_H
#define TOOLS_PROOF_INPUTS_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/proof/subject.h"

namespace proof {

using Bytes = std::vector<unsigned char>;

Bytes Noise(std::size_t bytes);

// Elements for a subject's source with nearly all results different:
// noise, but floats around 0..1.
Bytes SourceFor(const Subject& subject, std::size_t count);

// The values that decide: all of 8 and of 16 bits; of floats NaNs, infinities,
// zeros, denormals, the neighbours of every threshold n/255 and of the products
// that leave the range of integers, of either sign.
Bytes ValuesFor(const Subject& subject);

// The bits of those floats.
std::vector<std::uint32_t> DecidingFloats();

}  // namespace proof

#endif
