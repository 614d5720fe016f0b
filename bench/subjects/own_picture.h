// A picture that owns its memory.
#ifndef BENCH_SUBJECTS_OWN_PICTURE_H
#define BENCH_SUBJECTS_OWN_PICTURE_H

#include <cstdlib>
#include <memory>
#include <new>

#include "bench/subjects/picture.h"

namespace bench {

class OwnPicture {
 public:
  // Rows follow each other without a gap; the first starts a cache line.
  OwnPicture(int width, int height, int pixelBytes)
      : view_{nullptr, static_cast<std::size_t>(width) * static_cast<std::size_t>(pixelBytes),
              width, height, pixelBytes} {
    constexpr std::size_t kLine = 64;
    const std::size_t size = (view_.Bytes() + kLine - 1) / kLine * kLine;
    memory_.reset(static_cast<std::uint8_t*>(std::aligned_alloc(kLine, size)));
    if (memory_ == nullptr) throw std::bad_alloc();
    view_.pixels = memory_.get();
  }

  const Picture& View() const { return view_; }

 private:
  struct Free {
    void operator()(std::uint8_t* memory) const { std::free(memory); }
  };
  std::unique_ptr<std::uint8_t, Free> memory_;
  Picture view_;
};

}  // namespace bench

#endif
