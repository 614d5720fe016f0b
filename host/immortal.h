// Objects that a library never destroys.
#ifndef HOST_IMMORTAL_H
#define HOST_IMMORTAL_H

#include <array>
#include <cstddef>
#include <new>

// Holds an object inside itself, without the heap, and never destroys it. For
// objects that are made while a library is loaded, where a std::bad_alloc would
// end the process.
template <typename Object>
class Immortal {
 public:
  Immortal() = default;
  Immortal(const Immortal&) = delete;
  Immortal& operator=(const Immortal&) = delete;
  ~Immortal() = default;

  Object& operator*() { return object_; }

 private:
  alignas(Object) std::array<std::byte, sizeof(Object)> memory_{};
  Object& object_ = *::new (memory_.data()) Object;
};

#endif
