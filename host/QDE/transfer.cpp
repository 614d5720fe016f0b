#include "transfer.h"

#include <cstring>
#include <functional>
#include <vector>

#include "axis.h"
#include "row_combiner.h"
#include "row_reader.h"
#include "row_routines.h"

namespace qde {
namespace {

Span Columns(const Rect& rect) {
  return {rect.left, rect.right};
}
Span Rows(const Rect& rect) {
  return {rect.top, rect.bottom};
}

// What is drawn of the destination, and of the source.
struct Plan {
  Axis columns;
  Axis rows;
  [[nodiscard]] bool IsEmpty() const { return columns.IsEmpty() || rows.IsEmpty(); }
  [[nodiscard]] bool IsScaled() const { return columns.IsScaled() || rows.IsScaled(); }
};

Plan MakePlan(const Image& source, const Image& destination, const Rect& sourceRect,
              const Rect& destinationRect) {
  const Rect& sourceBounds = source.layout.bounds;
  const Rect& bounds = destination.layout.bounds;
  return {
      Axis(Columns(sourceRect), Columns(destinationRect), Columns(sourceBounds), Columns(bounds)),
      Axis(Rows(sourceRect), Rows(destinationRect), Rows(sourceBounds), Rows(bounds))};
}

// Bytes from the first to the last pixel of an area.
struct Memory {
  const std::uint8_t* begin;
  const std::uint8_t* end;
};

Memory MemoryOf(const Image& image, Span columns, Span rows) {
  const std::int32_t bytes = BytesPerPixel(image.layout.depth);
  return {image.At(columns.start, rows.start), image.At(columns.end - 1, rows.end - 1) + bytes};
}

Span Drawn(const Axis& axis) {
  return {axis.DestinationOf(axis.First()), axis.DestinationOf(axis.Last() - 1) + 1};
}

bool Overlap(const Image& source, const Image& destination, const Plan& plan) {
  const Memory from = MemoryOf(source, plan.columns.Shown(), plan.rows.Shown());
  const Memory to = MemoryOf(destination, Drawn(plan.columns), Drawn(plan.rows));
  // The two may be of different blocks, where only std::less has to hold.
  constexpr std::less<> before;
  return before(from.begin, to.end) && before(to.begin, from.end);
}

// Whether rows move as a whole by the same distance: then none is read after it
// was written, if they go in the right order.
bool IsShift(const Image& source, const Image& destination, const Plan& plan) {
  return !plan.IsScaled() && source.layout.depth == destination.layout.depth &&
         source.layout.rowBytes == destination.layout.rowBytes;
}

// The part of an image that is shown, in memory of its own.
Image CopyShown(const Image& source, const Plan& plan, std::vector<std::uint8_t>* memory) {
  const Span columns = plan.columns.Shown();
  const Span rows = plan.rows.Shown();
  const std::int32_t bytes = BytesPerPixel(source.layout.depth);
  const auto rowBytes =
      static_cast<std::size_t>(columns.Length()) * static_cast<std::size_t>(bytes);
  memory->resize(rowBytes * static_cast<std::size_t>(rows.Length()));
  std::uint8_t* to = memory->data();
  for (std::int32_t y = rows.start; y < rows.end; ++y, to += rowBytes) {
    std::memcpy(to, source.At(columns.start, y), rowBytes);
  }
  Image copy = source;
  copy.pixels = memory->data();
  // Within the source's bounds, so that 16 bits hold them.
  copy.layout.bounds = {
      static_cast<std::int16_t>(rows.start), static_cast<std::int16_t>(columns.start),
      static_cast<std::int16_t>(rows.end), static_cast<std::int16_t>(columns.end)};
  copy.layout.rowBytes = static_cast<std::int32_t>(rowBytes);
  return copy;
}

enum class Order { Downward, Upward };

struct RowWork {
  const Image& source;
  const Image& destination;
  const Plan& plan;
  const Drawing& drawing;
};

void TransferRows(const RowWork& work, Order order, bool copied) {
  const auto& [columns, rows] = work.plan;
  const auto count = static_cast<std::size_t>(columns.Last() - columns.First());
  const auto combiner = MakeRowCombiner(work.source, work.destination, work.drawing, count);
  RowReader reader(work.source, columns, copied);
  const std::int32_t left = columns.DestinationOf(columns.First());
  for (std::int32_t i = rows.First(); i < rows.Last(); ++i) {
    const std::int32_t row = order == Order::Downward ? i : rows.First() + rows.Last() - 1 - i;
    combiner->Combine(reader.Read(rows.SourceOf(row)),
                      work.destination.At(left, rows.DestinationOf(row)), count);
  }
}

void TransferOverlapping(const RowWork& work) {
  const Memory from = MemoryOf(work.source, work.plan.columns.Shown(), work.plan.rows.Shown());
  const Memory to = MemoryOf(work.destination, Drawn(work.plan.columns), Drawn(work.plan.rows));
  const Order order = from.begin < to.begin ? Order::Upward : Order::Downward;
  // Dithering knows one order only.
  const bool possible = order == Order::Downward || !work.drawing.dithers;
  if (possible && IsShift(work.source, work.destination, work.plan)) {
    TransferRows(work, order, true);
    return;
  }
  std::vector<std::uint8_t> memory;
  const Image copy = CopyShown(work.source, work.plan, &memory);
  TransferRows({copy, work.destination, work.plan, work.drawing}, Order::Downward, false);
}

}  // namespace

Error Transfer(const Image& source, const Image& destination, const Rect& sourceRect,
               const Rect& destinationRect, const Ink& ink) {
  const Mode* mode = FindMode(static_cast<std::int16_t>(ink.mode & ~kDither));
  if (mode == nullptr) return kIllegalParameter;
  if (IsEmpty(sourceRect) || IsEmpty(destinationRect)) return kNoError;
  const Plan plan = MakePlan(source, destination, sourceRect, destinationRect);
  if (plan.IsEmpty()) return kNoError;
  const bool dithers = (ink.mode & kDither) != 0 && destination.layout.depth == 8;
  const Drawing drawing{*mode, dithers, ink.colors};
  const RowWork work{source, destination, plan, drawing};
  if (Overlap(source, destination, plan)) {
    TransferOverlapping(work);
  } else {
    TransferRows(work, Order::Downward, false);
  }
  return kNoError;
}

}  // namespace qde
