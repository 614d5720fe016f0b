// The loops of the routines over vectors of any width. Only for the files of one
// level: see the headers of the vectors.
#ifndef SIMD_VECTOR_LOOPS_H
#define SIMD_VECTOR_LOOPS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "simd/plain_loops.h"
#include "simd/routines.h"

namespace simd {

// The distance to the next multiple of the vector's size.
template <typename Vector>
std::size_t BytesToBoundary(const void* address) {
  return (0 - reinterpret_cast<std::uintptr_t>(address)) % Vector::kBytes;
}

// ---- Copying

template <typename Vector>
bool Overlap(const unsigned char* a, const unsigned char* b, std::size_t bytes) {
  const auto distance = reinterpret_cast<std::uintptr_t>(a) - reinterpret_cast<std::uintptr_t>(b);
  return distance < bytes || 0 - distance < bytes;
}

template <typename Vector>
void StreamVectors(unsigned char* to, const unsigned char* from, std::size_t bytes) {
  for (std::size_t i = 0; i < bytes; i += Vector::kBytes) {
    Vector::Stream(to + i, Vector::Load(from + i));
  }
}

inline constexpr std::size_t kLine = 64;
inline constexpr std::size_t kPage = 4096;

// Alternates between the pages line by line: the processor prefetches in each of
// them separately.
template <typename Vector>
void StreamTwoPages(unsigned char* to, const unsigned char* from) {
  for (std::size_t i = 0; i < kPage; i += kLine) {
    StreamVectors<Vector>(to + i, from + i, kLine);
    StreamVectors<Vector>(to + kPage + i, from + kPage + i, kLine);
  }
}

template <typename Vector>
void StreamingCopy(void* destination, const void* source, std::size_t bytes) {
  auto* to = static_cast<unsigned char*>(destination);
  const auto* from = static_cast<const unsigned char*>(source);
  const std::size_t head = BytesToBoundary<Vector>(to);
  if (bytes < head + Vector::kBytes || Overlap<Vector>(to, from, bytes)) {
    std::memmove(to, from, bytes);
    return;
  }
  std::memcpy(to, from, head);
  std::size_t i = head;
  for (; bytes - i >= 2 * kPage; i += 2 * kPage) StreamTwoPages<Vector>(to + i, from + i);
  const std::size_t rest = (bytes - i) / Vector::kBytes * Vector::kBytes;
  StreamVectors<Vector>(to + i, from + i, rest);
  i += rest;
  std::memcpy(to + i, from + i, bytes - i);
}

// ---- Words

// The first and the last vector overlap their neighbours, so that all others are
// whole and at multiples of their size.
template <typename Vector, auto kPut>
void FillVectors(void* destination, std::uint32_t value, std::size_t count) {
  auto* to = static_cast<unsigned char*>(destination);
  const std::size_t bytes = count * sizeof value;
  const std::size_t head = BytesToBoundary<Vector>(to);
  if (bytes < 2 * Vector::kBytes || head % sizeof value != 0) {
    PlainFill32(to, value, count);
    return;
  }
  const auto word = Vector::Spread32(value);
  const std::size_t last = bytes - Vector::kBytes;
  Vector::Store(to, word);
  for (std::size_t i = head; i <= last; i += Vector::kBytes) kPut(to + i, word);
  Vector::Store(to + last, word);
}

// Vectors do not overlap here: in place, a byte must not be reversed twice.
template <typename Vector>
void ReverseVectors(void* words, std::size_t count) {
  auto* to = static_cast<unsigned char*>(words);
  constexpr std::size_t kPerVector = Vector::kBytes / sizeof(std::uint32_t);
  std::size_t i = 0;
  for (; i + kPerVector <= count; i += kPerVector, to += Vector::kBytes) {
    Vector::Store(to, Vector::ReverseBytes32(Vector::Load(to)));
  }
  PlainReverseBytes32(to, count - i);
}

template <typename Vector>
constexpr Routines VectorRoutines() {
  return {PlainCopy, StreamingCopy<Vector>, FillVectors<Vector, Vector::Store>,
          FillVectors<Vector, Vector::Stream>, ReverseVectors<Vector>};
}

}  // namespace simd

#endif
