#include "tests/out_of_memory/scarce_memory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void __real_free(void* block);
void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);
void __wrap_free(void* block);
}

namespace {

bool scarce_now = false;
int plenty = 0;
std::int64_t tried = 0;
std::int64_t failed = 0;
std::int64_t first = 0;
std::int64_t count = 0;
std::int64_t live = 0;

bool Refuses() {
  if (!scarce_now || plenty > 0) return false;
  const std::int64_t number = tried++;
  if (number < first || number - first >= count) return false;
  ++failed;
  return true;
}

void* Counted(void* block) {
  if (block != nullptr) ++live;
  return block;
}

void Free(void* block) {
  if (block != nullptr) --live;
  __real_free(block);
}

void* Need(void* block) {
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

namespace scarce {

void Begin(std::int64_t successes, std::int64_t failures) {
  tried = 0;
  failed = 0;
  first = successes;
  count = failures;
  scarce_now = true;
}

std::int64_t End() {
  scarce_now = false;
  return tried;
}

std::int64_t Failures() {
  return failed;
}

std::int64_t LiveBlocks() {
  return live;
}

Plenty::Plenty() {
  ++plenty;
}

Plenty::~Plenty() {
  --plenty;
}

}  // namespace scarce

void* __wrap_malloc(std::size_t size) {
  return Refuses() ? nullptr : Counted(__real_malloc(size));
}

void* __wrap_calloc(std::size_t number, std::size_t size) {
  return Refuses() ? nullptr : Counted(__real_calloc(number, size));
}

void __wrap_free(void* block) {
  Free(block);
}

void* operator new(std::size_t size) {
  return Need(__wrap_malloc(size > 0 ? size : 1));
}

void* operator new(std::size_t size, std::align_val_t alignment) {
  const auto boundary = static_cast<std::size_t>(alignment);
  const std::size_t whole = (size + boundary - 1) / boundary * boundary;
  return Need(Refuses() ? nullptr : Counted(std::aligned_alloc(boundary, whole)));
}

void operator delete(void* block) noexcept {
  Free(block);
}

void operator delete(void* block, std::size_t) noexcept {
  Free(block);
}

void operator delete(void* block, std::align_val_t) noexcept {
  Free(block);
}

void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
  Free(block);
}
