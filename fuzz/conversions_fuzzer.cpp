// Compares the routines of every processor level with the plain loops: rows of any
// length, alignment and value, in memory that ends where the row does.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/bytes.h"
#include "fuzz/demand.h"
#include "tools/proof/fenced_memory.h"
#include "tools/proof/subject.h"
#include "transfer/kernels/conversion_tables.h"

namespace {

using fuzz::Bytes;
using proof::Subject;
using Memory = std::vector<unsigned char>;

constexpr std::uint32_t kMostElements = 600;
constexpr std::size_t kMostShift = 256;
constexpr std::size_t kLargestElement = 4;
constexpr std::size_t kFenced = kMostElements * kLargestElement + kMostShift;

const std::vector<Subject>& Subjects() {
  static const std::vector<Subject> subjects = [] {
    PXLp_BuildConversionTables();
    std::vector<Subject> all;
    for (const simd::Level level : proof::LevelsHere()) {
      for (Subject& subject : proof::SubjectsOf(level)) all.push_back(std::move(subject));
    }
    return all;
  }();
  return subjects;
}

// The bytes of the input, over and over, a little different each time.
void Fill(Memory& memory, const std::string& pattern) {
  for (std::size_t i = 0; i < memory.size(); ++i) {
    const auto byte = static_cast<unsigned char>(pattern[i % pattern.size()]);
    memory[i] = static_cast<unsigned char>(byte + i / pattern.size());
  }
}

// A place for `size` bytes: so many steps from the lower fence, or from the upper.
unsigned char* PlaceIn(const proof::FencedMemory& memory, std::size_t size, std::size_t shift,
                       bool high) {
  return high ? memory.end() - size - shift : memory.begin() + shift;
}

// How far from a fence a side lies; one that is not there lies nowhere.
std::size_t TakeShift(Bytes& bytes, const proof::Side& side) {
  const std::size_t steps = bytes.Byte();
  return side.elementBytes == 0 ? 0 : steps * side.step % kMostShift;
}

struct Row {
  std::uint32_t count;
  std::size_t sourceShift, destinationShift;
  bool high;
};

void Check(const Subject& subject, const Row& row, const Memory& elements) {
  static const proof::FencedMemory source(kFenced);
  static const proof::FencedMemory destination(kFenced);
  const std::size_t sourceBytes = row.count * subject.source.elementBytes;
  const std::size_t bytes = row.count * subject.destination.elementBytes;
  unsigned char* from = PlaceIn(source, sourceBytes, row.sourceShift, row.high);
  std::memcpy(from, elements.data(), sourceBytes);
  std::fill(destination.begin(), destination.end(), 0xA5);
  unsigned char* to = PlaceIn(destination, bytes, row.destinationShift, row.high);
  // A routine that works in place finds the same there as the plain loop.
  std::memcpy(to, elements.data(), bytes);
  Memory expected(destination.begin(), destination.end());
  subject.plain(from, &expected[static_cast<std::size_t>(to - destination.begin())], row.count);
  subject.run(from, to, row.count);
  fuzz::Demand(std::memcmp(from, elements.data(), sourceBytes) == 0, "the source has changed");
  if (std::memcmp(destination.begin(), expected.data(), expected.size()) != 0) {
    fuzz::Stop(subject.name + " differs from the plain loop");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  const auto& subjects = Subjects();
  const Subject& subject = subjects[bytes.Below(static_cast<std::uint32_t>(subjects.size()))];
  const std::uint32_t count = bytes.Below(kMostElements + 1);
  const Row row = {count, TakeShift(bytes, subject.source), TakeShift(bytes, subject.destination),
                   bytes.Byte() % 2 == 0};
  Memory elements(kMostElements * kLargestElement);
  const std::string pattern = bytes.Rest();
  if (!pattern.empty()) Fill(elements, pattern);
  Check(subject, row, elements);
  return 0;
}
