// Plans a copy: its two axes, and the memory that they reach.
#include "host/QDE/copy/plan.h"

#include <functional>

namespace qde {
namespace {

Span Columns(const Rect& rect) {
  return {rect.left, rect.right};
}
Span Rows(const Rect& rect) {
  return {rect.top, rect.bottom};
}

Memory MemoryOf(const Image& image, Span columns, Span rows) {
  const std::int32_t bytes = BytesPerPixel(image.layout.depth);
  return {image.At(columns.start, rows.start), image.At(columns.end - 1, rows.end - 1) + bytes};
}

Span Drawn(const Axis& axis) {
  return {axis.DestinationOf(axis.First()), axis.DestinationOf(axis.Last() - 1) + 1};
}

}  // namespace

Plan MakePlan(const Image& source, const Image& destination, const Rect& sourceRect,
              const Rect& destinationRect) {
  const Rect& sourceBounds = source.layout.bounds;
  const Rect& bounds = destination.layout.bounds;
  return {
      Axis(Columns(sourceRect), Columns(destinationRect), Columns(sourceBounds), Columns(bounds)),
      Axis(Rows(sourceRect), Rows(destinationRect), Rows(sourceBounds), Rows(bounds))};
}

Memory MemoryShown(const Image& source, const Plan& plan) {
  return MemoryOf(source, plan.columns.Shown(), plan.rows.Shown());
}

Memory MemoryDrawn(const Image& destination, const Plan& plan) {
  return MemoryOf(destination, Drawn(plan.columns), Drawn(plan.rows));
}

bool Overlap(const Memory& a, const Memory& b) {
  // Only std::less orders pointers into different blocks.
  constexpr std::less<> kBefore;
  return kBefore(a.begin, b.end) && kBefore(b.begin, a.end);
}

}  // namespace qde
