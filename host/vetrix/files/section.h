// A private file that can be mapped into memory.
#ifndef VETRIX_SECTION_H
#define VETRIX_SECTION_H

#include <cstdint>
#include <memory>
#include <system_error>

namespace vetrix {

// Other processes cannot open the file. Its space on the volume is reserved when it
// is made, its content is zeros at first, and the system deletes it at the latest
// when the process ends.
class Section {
 public:
  // Throws std::system_error.
  explicit Section(std::uint64_t size);
  Section(const Section&) = delete;
  Section& operator=(const Section&) = delete;
  // There must be no view: see Discard.
  ~Section();

  // Returns the view of the whole file, mapped at the first call; or null, with the
  // reason in `error`.
  void* Map(std::error_code& error);
  // Returns false, with the reason in `error`, when the system refuses: then the
  // view is still mapped.
  bool Unmap(std::error_code& error);

  // Unmaps and deletes a file. If the system refuses to unmap, the file's space is
  // released where possible, and later calls try to unmap again. Allocates nothing.
  // Safe on any thread.
  static void Discard(std::unique_ptr<Section> section);

 private:
  struct Handles;
  // For a file whose view is not read or written any more.
  void ReleaseSpace();
  static void RetryUnmapping(std::unique_ptr<Section>& first);

  std::uint64_t size_;
  void* view_ = nullptr;
  std::unique_ptr<Handles> handles_;
  std::unique_ptr<Section> next_;  // the next discarded section that is still mapped
};

}  // namespace vetrix

#endif
