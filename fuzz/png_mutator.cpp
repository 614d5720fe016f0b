// Changes pictures as libFuzzer does, and then makes the checksums of a PNG file's
// chunks right: without that nearly all changes would be refused for their sake alone.
#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

constexpr std::size_t kSignature = 8;
constexpr std::size_t kAroundData = 12;  // length, name, checksum

std::uint32_t NumberAt(const std::uint8_t* bytes) {
  std::uint32_t value = 0;
  for (int i = 0; i < 4; ++i) value = value << 8 | bytes[i];
  return value;
}

void PutNumber(std::uint8_t* bytes, std::uint32_t value) {
  for (int i = 3; i >= 0; --i, value >>= 8) bytes[i] = static_cast<std::uint8_t>(value);
}

void RightChecksums(std::uint8_t* file, std::size_t size) {
  if (size < kSignature || std::memcmp(file, "\x89PNG\r\n\x1A\n", kSignature) != 0) return;
  for (std::size_t at = kSignature; at + kAroundData <= size;) {
    const std::size_t length = NumberAt(file + at);
    if (length > size - at - kAroundData) return;
    const auto checksum = crc32(0, file + at + 4, static_cast<uInt>(length + 4));
    PutNumber(file + at + 8 + length, static_cast<std::uint32_t>(checksum));
    at += length + kAroundData;
  }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
  size = LLVMFuzzerMutate(data, size, most);
  constexpr unsigned kLeftWrong = 16;
  if (seed % kLeftWrong != 0) RightChecksums(data, size);
  return size;
}
