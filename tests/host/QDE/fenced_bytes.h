// Bytes after whose end no memory is, so that reading on ends the program.
#ifndef TESTS_HOST_QDE_FENCED_BYTES_H
#define TESTS_HOST_QDE_FENCED_BYTES_H

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <new>

class FencedBytes {
 public:
  explicit FencedBytes(std::size_t size) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t room = (size + page - 1) / page * page;
    mapped_ = room + page;
    base_ = mmap(nullptr, mapped_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (base_ == MAP_FAILED) throw std::bad_alloc();
    mprotect(static_cast<std::uint8_t*>(base_) + room, page, PROT_NONE);
    begin_ = static_cast<std::uint8_t*>(base_) + room - size;
  }
  ~FencedBytes() { munmap(base_, mapped_); }
  FencedBytes(const FencedBytes&) = delete;
  FencedBytes& operator=(const FencedBytes&) = delete;

  [[nodiscard]] std::uint8_t* begin() { return begin_; }

 private:
  void* base_ = nullptr;
  std::size_t mapped_ = 0;
  std::uint8_t* begin_ = nullptr;
};

#endif
