// Old places of blocks that moved or were freed.
#include "host/K/handles/quarantine.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "K_host.h"
#include "host/K/system/poison.h"

namespace k {
namespace {

// Enough for many moves of the usual small blocks.
constexpr std::uint64_t kMostBytes = std::uint64_t{32} << 20;
constexpr std::size_t kMostPlaces = 65536;

}  // namespace

void Quarantine::Add(void* block, std::uint64_t size) {
  try {
    places_.push_back({block, size});
  } catch (const std::bad_alloc&) {
    std::free(block);
    return;
  }
  std::memset(block, K_ScramblePattern, size);
  bytes_ += size;
  PoisonMemory(block, size);
  while (bytes_ > kMostBytes || places_.size() > kMostPlaces) FreeOldest();
}

std::uint64_t Quarantine::Clear() {
  const std::uint64_t bytes = bytes_;
  while (!places_.empty()) FreeOldest();
  return bytes;
}

void Quarantine::FreeOldest() {
  const Place oldest = places_.front();
  places_.pop_front();
  bytes_ -= oldest.size;
  UnpoisonMemory(oldest.block, oldest.size);
  std::free(oldest.block);
}

}  // namespace k
