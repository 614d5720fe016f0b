// Draws a progress bar.
#include "tools/pxl/system/progress.h"

#include <algorithm>

namespace pxl {

namespace {
constexpr std::size_t kBarLength = 40;
}

void Progress::Show(std::size_t done, const std::string& unit) {
  if (!visible_) return;
  const std::size_t filled = kBarLength * std::min(done, total_) / total_;
  stream_ << "\r[" << std::string(filled, '#') << std::string(kBarLength - filled, ' ') << "] "
          << done << "/" << total_ << (unit.empty() ? "" : " ") << unit << std::flush;
}

void Progress::Clear() {
  // Carriage return, then erase to the end of the line.
  if (visible_) stream_ << "\r\x1B[K" << std::flush;
}

}  // namespace pxl
