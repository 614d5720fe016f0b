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
  // Without a view: see Discard.
  ~Section();

  // The view of all of it, mapped at the first call; null, with the reason in
  // `error`, when it cannot be.
  void* Map(std::error_code& error);
  // False, with the reason in `error`, when the system does not take the view
  // back: then it is still there.
  bool Unmap(std::error_code& error);

  // Takes leave of a file. One whose view the system does not take back gives
  // the disk its space, where that can be, and its view is kept until a later
  // call finds that it goes. Needs no memory. Safe on any thread.
  static void Discard(std::unique_ptr<Section> section);

 private:
  struct Handles;
  // Of a file whose view nobody will look at again.
  void GiveSpaceBack();
  static void DropWhatGoes(std::unique_ptr<Section>& first);

  std::uint64_t size_;
  void* view_ = nullptr;
  std::unique_ptr<Handles> handles_;
  std::unique_ptr<Section> next_;  // of those that were discarded and are kept
};

}  // namespace vetrix

#endif
