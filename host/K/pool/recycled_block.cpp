// The blocks of the pool.
#include "host/K/pool/recycled_block.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>

#include "TRC_host.h"
#include "host/K/limits/budget.h"
#include "host/K/system/poison.h"
#include "host/K/system/virtual_memory.h"

namespace {

std::uint64_t MarginSize(const k::BlockShape& shape) {
  return static_cast<std::uint64_t>(std::popcount(shape.margins)) * k::PageSize();
}

std::uint64_t MappedSize(const k::BlockShape& shape) {
  return shape.capacity + 2 * MarginSize(shape);
}

// Fences are a debugging aid: the block is usable without them.
void SetFences(char* mapping, const k::BlockShape& shape) {
  const std::uint64_t page = k::PageSize();
  const bool set =
      k::ForbidMemory(mapping, page) && k::ForbidMemory(mapping + MappedSize(shape) - page, page);
  if (!set) TRC_Log(TRC_Level_NOTE, "K", "pool", "the system refused to set the fences of a block");
}

char* Map(const k::BlockShape& shape) {
  auto* mapping = static_cast<char*>(k::MapMemory(MappedSize(shape)));
  if (mapping == nullptr) return nullptr;
  if ((shape.margins & K_PoolCheck_FENCES) != 0) SetFences(mapping, shape);
  return mapping + MarginSize(shape);
}

[[noreturn]] void Refuse(k::Refuser refuser, std::uint64_t bytes) {
  k::NoteRefusal(refuser, bytes);
  throw std::bad_alloc();
}

char* MapBooked(const k::BlockShape& shape) {
  const k::Refuser refuser = k::ReserveMemory(shape.capacity);
  if (refuser != k::Refuser::None) Refuse(refuser, shape.capacity);
  char* base = Map(shape);
  if (base != nullptr) return base;
  k::ReleaseMemory(shape.capacity);
  Refuse(k::Refuser::System, shape.capacity);
}

}  // namespace

K_RecycledPtr::K_RecycledPtr(const k::BlockShape& blockShape)
    : shape(blockShape), base(MapBooked(blockShape)) {
}

K_RecycledPtr::~K_RecycledPtr() {
  k::UnpoisonMemory(base, shape.capacity);
  k::UnmapMemory(base - MarginSize(shape), MappedSize(shape), base);
  k::ReleaseMemory(shape.capacity);
}

void K_RecycledPtr::SetOwner(std::uint32_t code, const char* text) {
  ownerCode = code;
  const std::size_t length = text != nullptr ? strnlen(text, sizeof label - 1) : 0;
  std::copy_n(text, length, label);
  label[length] = '\0';
}
