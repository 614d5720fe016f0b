// Counts the allocations of the program, and refuses those that are asked for.
#include "tests/support/memory/scarce_memory.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

#include "tests/support/memory/program_new.h"

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void __real_free(void* block);
void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);
void __wrap_free(void* block);
}

namespace {

struct Shortage {
  bool inForce = false;
  std::int64_t successes = 0;
  std::int64_t failures = 0;
  std::int64_t tried = 0;
  std::int64_t failed = 0;
};
thread_local Shortage shortage;

std::atomic<std::int64_t> live{0};

bool Refuses() {
  if (!shortage.inForce) return false;
  const std::int64_t number = shortage.tried++;
  const bool refuses =
      number >= shortage.successes && number - shortage.successes < shortage.failures;
  if (refuses) ++shortage.failed;
  return refuses;
}

void* Counted(void* block) {
  if (block != nullptr) ++live;
  return block;
}

void Free(void* block) {
  if (block != nullptr) --live;
  __real_free(block);
}

}  // namespace

namespace scarce {

void Begin(std::int64_t successes, std::int64_t failures) {
  shortage = {.inForce = true, .successes = successes, .failures = failures};
}

void End() {
  shortage.inForce = false;
}

std::int64_t Failures() {
  return shortage.failed;
}

std::int64_t LiveBlocks() {
  return live;
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

void* program_new::Allocate(std::size_t size) {
  return __wrap_malloc(size);
}

void program_new::Free(void* block) {
  __wrap_free(block);
}

void* operator new(std::size_t size, std::align_val_t alignment) {
  const auto boundary = static_cast<std::size_t>(alignment);
  const std::size_t whole = (size + boundary - 1) / boundary * boundary;
  void* block = Refuses() ? nullptr : Counted(std::aligned_alloc(boundary, whole));
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void operator delete(void* block, std::align_val_t) noexcept {
  Free(block);
}

void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
  Free(block);
}
