// A picture in the form that a library requires.
#ifndef BENCH_SUBJECTS_SUITED_PICTURE_H
#define BENCH_SUBJECTS_SUITED_PICTURE_H

#include <cstring>
#include <memory>

#include "bench/subjects/own_picture.h"

namespace bench {

// The picture itself if it suits, else a copy that starts on a cache line and has
// room for a multiple of so many pixels in a row.
class SuitedPicture {
 public:
  SuitedPicture(const Picture& picture, bool suits, int widthMultiple) : view_(picture) {
    if (suits) return;
    const int width = (picture.width + widthMultiple - 1) / widthMultiple * widthMultiple;
    own_ = std::make_unique<OwnPicture>(width, picture.height, picture.pixelBytes);
    view_ = own_->View();
    view_.width = picture.width;
    for (int y = 0; y < picture.height; ++y) {
      std::memcpy(view_.Row(y), picture.Row(y), picture.UsedRowBytes());
    }
  }
  const Picture& View() const { return view_; }

 private:
  std::unique_ptr<OwnPicture> own_;
  Picture view_;
};

}  // namespace bench

#endif
