// The plan of a copy: the pixels of the destination that are drawn, and the pixels of
// the source that they show.
#ifndef QDE_PLAN_H
#define QDE_PLAN_H

#include "host/QDE/copy/axis.h"
#include "host/QDE/pixels/image.h"

namespace qde {

struct Plan {
  Axis columns;
  Axis rows;
  [[nodiscard]] bool IsEmpty() const { return columns.IsEmpty() || rows.IsEmpty(); }
  [[nodiscard]] bool IsScaled() const { return columns.IsScaled() || rows.IsScaled(); }
};

Plan MakePlan(const Image& source, const Image& destination, const Rect& sourceRect,
              const Rect& destinationRect);

// Bytes from the first to the last pixel of an area.
struct Memory {
  const std::uint8_t* begin;
  const std::uint8_t* end;
};

Memory MemoryShown(const Image& source, const Plan& plan);
Memory MemoryDrawn(const Image& destination, const Plan& plan);
bool Overlap(const Memory& a, const Memory& b);

}  // namespace qde

#endif
