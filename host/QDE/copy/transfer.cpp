// Transfers rectangles, in an order of rows that allows overlapping images.
#include "host/QDE/copy/transfer.h"

#include <cstring>
#include <vector>

#include "host/QDE/copy/pixel_copy.h"
#include "host/QDE/copy/plan.h"
#include "host/QDE/copy/row_combiner.h"
#include "host/QDE/copy/row_reader.h"
#include "host/QDE/rows/row_routines.h"

namespace qde {
namespace {

// Whether all rows move by the same distance: then an order exists in which none is
// read after it was written.
bool IsShift(const Image& source, const Image& destination, const Plan& plan) {
  return !plan.IsScaled() && source.layout.depth == destination.layout.depth &&
         source.layout.rowBytes == destination.layout.rowBytes;
}

// A copy of the part of an image that is shown.
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

bool HasGaps(const Image& image, std::size_t count) {
  return image.layout.rowBytes !=
         static_cast<std::int32_t>(count) * BytesPerPixel(image.layout.depth);
}

// Whether rows without gaps between them can be combined as one long row.
bool AreJoined(const RowWork& work, std::size_t count) {
  return !work.plan.IsScaled() && !HasGaps(work.source, count) &&
         !HasGaps(work.destination, count) &&
         TakesLongRuns(work.source, work.destination, work.drawing);
}

void TransferRows(const RowWork& work, Order order, bool copied) {
  const auto& [columns, rows] = work.plan;
  auto count = static_cast<std::size_t>(columns.Last() - columns.First());
  std::int32_t last = rows.Last();
  const auto combiner = MakeRowCombiner(work.source, work.destination, work.drawing, count);
  RowReader reader(work.source, columns, copied);
  const std::int32_t left = columns.DestinationOf(columns.First());
  if (!copied && AreJoined(work, count)) {
    count *= static_cast<std::size_t>(last - rows.First());
    last = rows.First() + 1;
  }
  for (std::int32_t i = rows.First(); i < last; ++i) {
    const std::int32_t row = order == Order::Downward ? i : rows.First() + last - 1 - i;
    combiner->Combine(reader.Read(rows.SourceOf(row)),
                      work.destination.At(left, rows.DestinationOf(row)), count);
  }
}

// Images that do not overlap.
void TransferApart(const RowWork& work) {
  if (KeepsPixels(work.source, work.destination, work.drawing)) {
    CopyPixels(work.source, work.destination, work.plan);
  } else {
    TransferRows(work, Order::Downward, false);
  }
}

void TransferShifted(const RowWork& work, Order order) {
  if (KeepsPixels(work.source, work.destination, work.drawing)) {
    ShiftPixels(work.source, work.destination, work.plan);
  } else {
    TransferRows(work, order, true);
  }
}

void TransferOverlapping(const RowWork& work, Order order) {
  // Dithering needs rows from the top down.
  const bool possible = order == Order::Downward || !work.drawing.dithers;
  if (possible && IsShift(work.source, work.destination, work.plan)) {
    TransferShifted(work, order);
    return;
  }
  std::vector<std::uint8_t> memory;
  const Image copy = CopyShown(work.source, work.plan, &memory);
  TransferApart({copy, work.destination, work.plan, work.drawing});
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
  const Memory from = MemoryShown(source, plan);
  const Memory to = MemoryDrawn(destination, plan);
  if (Overlap(from, to)) {
    TransferOverlapping(work, from.begin < to.begin ? Order::Upward : Order::Downward);
  } else {
    TransferApart(work);
  }
  return kNoError;
}

}  // namespace qde
