// The blocks of handles: heap memory that is booked in the budget and can move.
#include "host/K/handles/handle_blocks.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "host/K/events/time_line.h"
#include "host/K/limits/budget.h"

namespace k {
namespace {

// Only empty handles have no address.
std::uint64_t HeapSize(std::uint64_t size) {
  return std::max<std::uint64_t>(size, 1);
}

// Not inline: compilers would combine it and the clearing into one calloc.
[[gnu::noinline]] void* AllocateUnset(std::uint64_t size) {
  return std::malloc(size);
}

// The C library serves small blocks from a fast cache, but not for calloc, which
// in turn need not clear fresh memory of the system.
void* AllocateClear(std::uint64_t size) {
  constexpr std::uint64_t kSmall = 1024;
  if (size > kSmall) return std::calloc(1, size);
  void* block = AllocateUnset(size);
  if (block != nullptr) std::memset(block, 0, size);
  return block;
}

}  // namespace

HandleBlocks::Result HandleBlocks::Allocate(std::uint64_t size, Content content) {
  const Refuser refuser = ReserveMemory(size);
  if (refuser != Refuser::None) return {nullptr, refuser};
  const std::uint64_t heapSize = HeapSize(size);
  void* block = content == Content::Clear ? AllocateClear(heapSize) : AllocateUnset(heapSize);
  if (block == nullptr) {
    ReleaseMemory(size);
    return {nullptr, Refuser::System};
  }
  bytes_ += size;
  NoteBytes();
  return {block, Refuser::None};
}

void HandleBlocks::Free(void* block, std::uint64_t size) {
  Unbook(size);
  Retire(block, size);
}

void HandleBlocks::Discard(void* block, std::uint64_t size) {
  Unbook(size);
  std::free(block);
}

void HandleBlocks::Unbook(std::uint64_t size) {
  ReleaseMemory(size);
  bytes_ -= size;
  NoteBytes();
}

void HandleBlocks::Retire(void* block, std::uint64_t size) {
  if (scramble_) {
    quarantine_.Add(block, HeapSize(size));
  } else {
    std::free(block);
  }
}

void* HandleBlocks::Move(void* block, std::uint64_t size) {
  void* place = std::malloc(HeapSize(size));
  if (place == nullptr) return block;
  std::memcpy(place, block, size);
  Retire(block, size);
  return place;
}

void HandleBlocks::SetScramble(bool on) {
  scramble_ = on;
  if (!on) quarantine_.Clear();
}

void HandleBlocks::NoteBytes() const {
  NoteHandles(bytes_);
}

}  // namespace k
