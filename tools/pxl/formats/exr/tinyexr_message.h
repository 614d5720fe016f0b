// Names and error messages of the tinyexr library.
#ifndef TOOLS_PXL_FORMATS_EXR_TINYEXR_MESSAGE_H
#define TOOLS_PXL_FORMATS_EXR_TINYEXR_MESSAGE_H

#include <tinyexr.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "tools/pxl/system/failure.h"

namespace pxl {

// Both the name and the type of that attribute.
inline constexpr std::string_view kTinyExrChromaticities = "chromaticities";

// The message of a call that failed, which the library allocates.
class TinyExrMessage {
 public:
  TinyExrMessage() = default;
  TinyExrMessage(const TinyExrMessage&) = delete;
  TinyExrMessage& operator=(const TinyExrMessage&) = delete;
  ~TinyExrMessage() { FreeEXRErrorMessage(text_); }

  const char** Place() { return &text_; }
  // The first line, which has the cause; the library adds a line for each error
  // that follows from it.
  [[nodiscard]] std::string Text() const {
    std::string text = text_ != nullptr ? text_ : "";
    text.resize(std::min(text.find('\n'), text.size()));
    while (text.ends_with('.')) text.pop_back();
    return text.empty() ? "for an unknown reason" : text;
  }
  // Throws Failure with `what` and the message unless the call succeeded.
  void Check(int status, const std::string& what) const {
    if (status != TINYEXR_SUCCESS) throw Failure(what + ": " + Text());
  }

 private:
  const char* text_ = nullptr;
};

}  // namespace pxl

#endif
