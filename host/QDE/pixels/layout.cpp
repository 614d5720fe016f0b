// Chooses the stride of the rows of a surface.
#include "host/QDE/pixels/layout.h"

namespace qde {
namespace {

// Strides are multiples of the largest of these with which they leave room for the
// flags.
constexpr std::int32_t kAlignments[] = {16, 4, 2};

// 0 if no stride fits.
std::int32_t StrideFor(std::int32_t bytes) {
  for (const std::int32_t alignment : kAlignments) {
    const std::int32_t stride = (bytes + alignment - 1) / alignment * alignment;
    if (stride <= kStrideMask) return stride;
  }
  return 0;
}

}  // namespace

Error PlanLayout(std::int16_t depth, const Rect& bounds, Layout* layout) {
  if (!IsDepth(depth)) return kDepth;
  if (IsEmpty(bounds)) return kIllegalParameter;
  const std::int32_t stride = StrideFor(Width(bounds) * BytesPerPixel(depth));
  if (stride == 0) return kIllegalParameter;
  *layout = {bounds, depth, stride};
  return kNoError;
}

}  // namespace qde
