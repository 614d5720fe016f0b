// Chunks of PNG files: their bytes, checksums and header.
#include "tools/pxl/formats/png/png_chunks.h"

#include <zlib.h>

#include <algorithm>
#include <istream>

#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/stream_errors.h"

namespace pxl {
namespace {

// Chunks are read in portions, since their lengths may be wrong.
constexpr std::size_t kPortion = std::size_t{1} << 20;
constexpr std::uint32_t kLongest = 0x7FFFFFFF;
constexpr std::uint32_t kLargestSide = 0x7FFFFFFF;

void ReadExactly(std::istream& stream, char* data, std::size_t count) {
  stream.read(data, static_cast<std::streamsize>(count));
  RefuseBroken(stream);
  if (!stream) throw Failure("damaged PNG: the file ends too early");
}

std::uint32_t NumberIn(const std::uint8_t* bytes) {
  std::uint32_t value = 0;
  for (int i = 0; i < 4; ++i) value = value << 8 | bytes[i];
  return value;
}

std::uint32_t ReadNumber(std::istream& stream) {
  std::array<std::uint8_t, 4> bytes{};
  ReadExactly(stream, reinterpret_cast<char*>(bytes.data()), bytes.size());
  return NumberIn(bytes.data());
}

void AppendNumber(std::string& bytes, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<char>(value >> shift));
}

std::uint32_t Checksum(const PngChunk& chunk) {
  const auto* name = reinterpret_cast<const Bytef*>(chunk.name.data());
  const uLong ofName = crc32(0, name, static_cast<uInt>(chunk.name.size()));
  // Called without data, the library would start again.
  if (chunk.data.empty()) return static_cast<std::uint32_t>(ofName);
  return static_cast<std::uint32_t>(
      crc32(ofName, chunk.data.data(), static_cast<uInt>(chunk.data.size())));
}

bool IsSide(std::uint32_t pixels) {
  return pixels > 0 && pixels <= kLargestSide;
}

bool IsKnownKind(const PngStart& start) {
  constexpr std::array<int, 5> kDepths = {1, 2, 4, 8, 16};
  const bool sound = std::ranges::find(kDepths, start.bits) != kDepths.end();
  switch (start.colourType) {
    case 0:
      return sound;
    case 3:
      return sound && start.bits <= 8;
    case 2:
    case 4:
    case 6:
      return sound && start.bits >= 8;
    default:
      return false;
  }
}

}  // namespace

PngStart StartOf(const PngChunk& chunk) {
  constexpr std::size_t kLength = 13;
  if (chunk.name != "IHDR" || chunk.data.size() != kLength) {
    throw Failure("damaged PNG: no header");
  }
  const PngStart start = {NumberIn(chunk.data.data()), NumberIn(chunk.data.data() + 4),
                          chunk.data[8], chunk.data[9]};
  if (!IsSide(start.width) || !IsSide(start.height)) {
    throw Failure("damaged PNG: an impossible size");
  }
  if (!IsKnownKind(start)) throw Failure("damaged PNG: an unknown kind of pixels");
  return start;
}

PngChunk ReadChunk(std::istream& stream) {
  const std::uint32_t length = ReadNumber(stream);
  if (length > kLongest) throw Failure("damaged PNG: a chunk of an impossible length");
  PngChunk chunk{std::string(4, '\0'), {}};
  ReadExactly(stream, chunk.name.data(), chunk.name.size());
  while (chunk.data.size() < length) {
    const std::size_t before = chunk.data.size();
    const std::size_t count = std::min(kPortion, length - before);
    chunk.data.resize(before + count);
    ReadExactly(stream, reinterpret_cast<char*>(chunk.data.data() + before), count);
  }
  if (ReadNumber(stream) != Checksum(chunk)) {
    throw Failure("damaged PNG: a chunk has a wrong checksum");
  }
  return chunk;
}

std::string ChunkBytes(const PngChunk& chunk) {
  std::string bytes;
  AppendNumber(bytes, static_cast<std::uint32_t>(chunk.data.size()));
  bytes += chunk.name;
  bytes.append(chunk.data.begin(), chunk.data.end());
  AppendNumber(bytes, Checksum(chunk));
  return bytes;
}

}  // namespace pxl
