// Copies pixels without change: unscaled, scaled or shifted.
#include "host/QDE/copy/pixel_copy.h"

#include <vector>

#include "host/QDE/copy/row_scaler.h"
#include "simd/routines.h"
#include "simd/streaming.h"

namespace qde {
namespace {

using CopyRoutine = void (*)(void* destination, const void* source, std::size_t bytes);

// The drawn pixels of both images. Rows without gaps between them, in both images,
// can be joined to one long row.
struct Area {
  Area(const Image& source, const Image& destination, const Plan& plan) {
    const auto& [columns, rows] = plan;
    from = source.At(columns.SourceOf(columns.First()), rows.SourceOf(rows.First()));
    to = destination.At(columns.DestinationOf(columns.First()), rows.DestinationOf(rows.First()));
    fromStride = source.layout.rowBytes;
    toStride = destination.layout.rowBytes;
    const std::ptrdiff_t width = columns.Last() - columns.First();
    height = rows.Last() - rows.First();
    rowBytes = width * BytesPerPixel(destination.layout.depth);
  }

  [[nodiscard]] std::size_t Bytes() const { return static_cast<std::size_t>(rowBytes * height); }
  void JoinRows() {
    if (rowBytes != fromStride || rowBytes != toStride) return;
    rowBytes *= height;
    height = 1;
  }

  const std::uint8_t* from;
  std::uint8_t* to;
  std::ptrdiff_t fromStride;
  std::ptrdiff_t toStride;
  std::ptrdiff_t rowBytes;
  std::ptrdiff_t height;
};

void CopyRows(const Area& area, CopyRoutine copy) {
  for (std::ptrdiff_t row = 0; row < area.height; ++row) {
    copy(area.to + row * area.toStride, area.from + row * area.fromStride,
         static_cast<std::size_t>(area.rowBytes));
  }
}

// The last row first.
Area TurnedUpward(const Area& area) {
  Area upward = area;
  upward.from += (area.height - 1) * area.fromStride;
  upward.to += (area.height - 1) * area.toStride;
  upward.fromStride = -area.fromStride;
  upward.toStride = -area.toStride;
  return upward;
}

void CopyUnscaled(Area area) {
  area.JoinRows();
  const simd::Routines& routines = simd::BestRoutines();
  if (simd::StoresFor(area.Bytes(), area.Bytes()) == simd::Stores::Caching) {
    CopyRows(area, routines.copy);
    return;
  }
  CopyRows(area, routines.streamingCopy);
  simd::FinishStreaming();
}

// Calls `draw` for each destination row with its source row.
template <typename Draw>
void ForRows(const Area& area, const Axis& rows, Draw draw) {
  Axis::Steps steps(rows);
  const std::int32_t first = steps.Source();
  std::uint8_t* to = area.to;
  for (std::ptrdiff_t row = 0; row < area.height; ++row, to += area.toStride) {
    draw(area.from + (steps.Source() - first) * area.fromStride, to);
    steps.Advance();
  }
}

// A row with the same source row as the one above is copied from that one.
void ScaleIntoCaches(const Area& area, const Axis& rows, const RowScaler& scaler) {
  const auto copy = simd::BestRoutines().copy;
  const auto rowBytes = static_cast<std::size_t>(area.rowBytes);
  const std::uint8_t* shown = nullptr;
  const std::uint8_t* above = nullptr;
  ForRows(area, rows, [&](const std::uint8_t* from, std::uint8_t* to) {
    if (from == shown) {
      copy(to, above, rowBytes);
    } else {
      scaler.Scale(from, to);
    }
    shown = from;
    above = to;
  });
}

// Stores past the caches: each row is scaled in a buffer, since the destination is
// slow to read.
void ScalePastCaches(const Area& area, const Axis& rows, const RowScaler& scaler) {
  const auto copy = simd::BestRoutines().streamingCopy;
  std::vector<std::uint8_t> run(static_cast<std::size_t>(area.rowBytes));
  const std::uint8_t* shown = nullptr;
  ForRows(area, rows, [&](const std::uint8_t* from, std::uint8_t* to) {
    if (from != shown) scaler.Scale(from, run.data());
    shown = from;
    copy(to, run.data(), run.size());
  });
  simd::FinishStreaming();
}

void CopyScaled(const Image& source, const Image& destination, const Plan& plan) {
  const Area area(source, destination, plan);
  const Memory shown = MemoryShown(source, plan);
  const RowScaler scaler(plan.columns, BytesPerPixel(source.layout.depth));
  const auto bytesRead = static_cast<std::size_t>(shown.end - shown.begin);
  if (simd::StoresFor(bytesRead, area.Bytes()) == simd::Stores::Streaming) {
    ScalePastCaches(area, plan.rows, scaler);
  } else {
    ScaleIntoCaches(area, plan.rows, scaler);
  }
}

}  // namespace

void CopyPixels(const Image& source, const Image& destination, const Plan& plan) {
  if (plan.IsScaled()) {
    CopyScaled(source, destination, plan);
  } else {
    CopyUnscaled(Area(source, destination, plan));
  }
}

// The copy routine accepts overlapping runs; the order of rows ensures that none is
// read after it was written.
void ShiftPixels(const Image& source, const Image& destination, const Plan& plan) {
  Area area(source, destination, plan);
  area.JoinRows();
  const bool upward = area.from < area.to;
  CopyRows(upward ? TurnedUpward(area) : area, simd::BestRoutines().copy);
}

}  // namespace qde
