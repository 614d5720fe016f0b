// Objects of libraries, there until the process is gone.
#ifndef HOST_IMMORTAL_H
#define HOST_IMMORTAL_H

#include <array>
#include <cstddef>
#include <new>

// Holds an object in memory of its own and never destroys it. For those that are
// made while a library is loaded, where nobody could catch what want of memory
// throws.
template <typename Object>
class Immortal {
 public:
  Immortal() : object_(*::new (memory_.data()) Object) {}
  Immortal(const Immortal&) = delete;
  Immortal& operator=(const Immortal&) = delete;
  ~Immortal() = default;

  Object& operator*() { return object_; }

 private:
  alignas(Object) std::array<std::byte, sizeof(Object)> memory_{};
  Object& object_;
};

#endif
