// The loops of the routines over vectors of any width. For the files that are
// compiled for one level: each passes a vector type of its own unnamed
// namespace, so that nothing made here is shared with code for other processors.
//
// A vector type has: BYTES; Load and Store at any address, Stream at multiples
// of BYTES; OfWord, the same 32 bits throughout; Reversed, the bytes of each 32
// bits the other way round.
#ifndef SIMD_VECTOR_LOOPS_H
#define SIMD_VECTOR_LOOPS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "simd/plain_loops.h"
#include "simd/routines.h"

namespace simd {

// How far it is to the next multiple of the vector's size.
template <class Vector>
std::size_t BytesToBoundary(const void* address) {
  return (0 - reinterpret_cast<std::uintptr_t>(address)) % Vector::BYTES;
}

// ---- Copying

template <class Vector>
bool Overlap(const unsigned char* a, const unsigned char* b, std::size_t bytes) {
  const auto distance = reinterpret_cast<std::uintptr_t>(a) - reinterpret_cast<std::uintptr_t>(b);
  return distance < bytes || 0 - distance < bytes;
}

template <class Vector>
void StreamVectors(unsigned char* to, const unsigned char* from, std::size_t bytes) {
  for (std::size_t i = 0; i < bytes; i += Vector::BYTES) {
    Vector::Stream(to + i, Vector::Load(from + i));
  }
}

constexpr std::size_t LINE = 64;
constexpr std::size_t PAGE = 4096;

// Line by line in turn, since the processor fetches ahead in each page by
// itself.
template <class Vector>
void StreamTwoPages(unsigned char* to, const unsigned char* from) {
  for (std::size_t i = 0; i < PAGE; i += LINE) {
    StreamVectors<Vector>(to + i, from + i, LINE);
    StreamVectors<Vector>(to + PAGE + i, from + PAGE + i, LINE);
  }
}

template <class Vector>
void StreamingCopy(void* destination, const void* source, std::size_t bytes) {
  auto* to = static_cast<unsigned char*>(destination);
  const auto* from = static_cast<const unsigned char*>(source);
  const std::size_t head = BytesToBoundary<Vector>(to);
  if (bytes < head + Vector::BYTES || Overlap<Vector>(to, from, bytes)) {
    std::memmove(to, from, bytes);
    return;
  }
  std::memcpy(to, from, head);
  std::size_t i = head;
  for (; bytes - i >= 2 * PAGE; i += 2 * PAGE) StreamTwoPages<Vector>(to + i, from + i);
  const std::size_t rest = (bytes - i) / Vector::BYTES * Vector::BYTES;
  StreamVectors<Vector>(to + i, from + i, rest);
  i += rest;
  std::memcpy(to + i, from + i, bytes - i);
}

// ---- Words

// The first and the last vector reach into their neighbours, so that all
// between are whole and at multiples of their size.
template <class Vector, auto put>
void FillVectors(void* destination, std::uint32_t value, std::size_t count) {
  auto* to = static_cast<unsigned char*>(destination);
  const std::size_t bytes = count * sizeof value;
  const std::size_t head = BytesToBoundary<Vector>(to);
  if (bytes < 2 * Vector::BYTES || head % sizeof value != 0) {
    PlainFill32(to, value, count);
    return;
  }
  const auto word = Vector::OfWord(value);
  const std::size_t last = bytes - Vector::BYTES;
  Vector::Store(to, word);
  for (std::size_t i = head; i <= last; i += Vector::BYTES) put(to + i, word);
  Vector::Store(to + last, word);
}

// In place no byte may be reversed twice, so that no vector reaches into
// another.
template <class Vector>
void ReverseVectors(void* words, std::size_t count) {
  auto* to = static_cast<unsigned char*>(words);
  constexpr std::size_t perVector = Vector::BYTES / sizeof(std::uint32_t);
  std::size_t i = 0;
  for (; i + perVector <= count; i += perVector, to += Vector::BYTES) {
    Vector::Store(to, Vector::Reversed(Vector::Load(to)));
  }
  PlainReverseBytes32(to, count - i);
}

template <class Vector>
constexpr Routines VectorRoutines() {
  return {PlainCopy, StreamingCopy<Vector>, FillVectors<Vector, Vector::Store>,
          FillVectors<Vector, Vector::Stream>, ReverseVectors<Vector>};
}

}  // namespace simd

#endif
