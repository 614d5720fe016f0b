// Compares the indices that CopyBits writes for colours with a search of the whole
// table.
#ifndef TESTS_SUPPORT_DRAWING_NEAREST_COLORS_H
#define TESTS_SUPPORT_DRAWING_NEAREST_COLORS_H

#include <vector>

#include "QDE_host.h"
#include "tests/support/drawing/reference_copy.h"

namespace nearest {

constexpr int kMost = 256 * 256;

class Comparison {
 public:
  explicit Comparison(const QDE_ColorTable& table);
  ~Comparison();
  Comparison(const Comparison&) = delete;
  Comparison& operator=(const Comparison&) = delete;

  // How many of the colours, at most kMost, CopyBits takes for another index
  // than the search does; all of them if it fails.
  [[nodiscard]] int CountDifferences(const std::vector<reference::Rgb>& colors) const;

 private:
  reference::Table table_;
  GWorldPtr pixels_ = nullptr;
  GWorldPtr indices_ = nullptr;
};

}  // namespace nearest

#endif
