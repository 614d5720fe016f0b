// A file of the process' own that can be mapped into memory.
#ifndef VETRIX_SECTION_H
#define VETRIX_SECTION_H

#include <cstdint>
#include <memory>
#include <system_error>

namespace vetrix {

// The file has no name that others could use, takes its space on the disk at
// once, holds zeros at first and is gone at the latest with the process.
class Section {
 public:
  // Throws std::system_error.
  explicit Section(std::uint64_t size);
  Section(const Section&) = delete;
  Section& operator=(const Section&) = delete;
  ~Section();

  // Maps all of it; null, with the reason in `error`, when it cannot be.
  void* Map(std::error_code& error) const;
  void Unmap(void* view) const;

 private:
  struct Handles;
  std::uint64_t size_;
  std::unique_ptr<Handles> handles_;
};

}  // namespace vetrix

#endif
