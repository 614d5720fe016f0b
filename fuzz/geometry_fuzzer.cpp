// Compares the arithmetic of rectangles with wider integers: the module's rows and
// frames, the drawing layer's surfaces, and the axes of its copies.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "K_host.h"
#include "PXL.h"
#include "fuzz/bytes.h"
#include "fuzz/demand.h"
#include "host/QDE/copy/axis.h"
#include "host/QDE/pixels/layout.h"
#include "world/record/geometry.h"

namespace {

using fuzz::Bytes;
using fuzz::Demand;
// The compilers have it beyond the standard.
__extension__ using Wide = __int128;

constexpr std::uint64_t kUnwritten = 0x1111222233334444;

Rect TakeRect(Bytes& bytes) {
  return {bytes.Take<std::int16_t>(), bytes.Take<std::int16_t>(), bytes.Take<std::int16_t>(),
          bytes.Take<std::int16_t>()};
}

Wide RoundedUp(Wide value, Wide step) {
  const Wide rest = ((value % step) + step) % step;
  return rest == 0 ? value : value - rest + step;
}

// ---- Rows and frames of the module

struct Geometry {
  std::int32_t status = 0;
  std::uint64_t rowBytes = kUnwritten;
  std::uint64_t size = kUnwritten;

  bool operator==(const Geometry&) const = default;
};

// The rules of geometry.h for ComputeGeometry.
Geometry ExpectedGeometry(std::int32_t depth, const Rect& rect) {
  const Wide spare = depth <= 32 ? 1 : 0;
  const Wide pixels = Wide{rect.right} - rect.left + spare;
  if (pixels < 0 || pixels > 32766) return {PXL_Err_REFUSED, 0, 0};
  const Wide row = RoundedUp(pixels * (depth / 8), 16);
  const Wide bytes = row * (Wide{rect.bottom} - rect.top);
  if (bytes < 0) return {PXL_Err_NO_MEMORY, kUnwritten, kUnwritten};
  const Wide size = bytes + (depth <= 32 ? 16 : 20);
  return {size > 0x7FFFFFFF ? PXL_Err_NO_MEMORY : PXL_Err_NONE, static_cast<std::uint64_t>(row),
          static_cast<std::uint64_t>(size)};
}

void CheckGeometry(Bytes& bytes) {
  constexpr std::int32_t kDepths[] = {8, 32, 64, 128};
  const std::int32_t one = kDepths[bytes.Byte() % 4];
  // Odd ones too, up to those whose pixels take megabytes.
  const std::int32_t depth = bytes.Byte() % 2 == 0 ? one : std::abs(bytes.Take<std::int32_t>() / 2);
  const Rect rect = TakeRect(bytes);
  Geometry got;
  got.status = PXLp_ComputeGeometry(depth, &rect, &got.rowBytes, &got.size);
  Demand(got == ExpectedGeometry(depth, rect), "geometry differs");
}

// ---- Worlds without pixels: the same rule from outside

void CheckDeferredWorld(Bytes& bytes) {
  constexpr std::int32_t kDepths[] = {8, 32, 64, 128};
  const std::int32_t code = kDepths[bytes.Byte() % 4];
  const std::int32_t depth = bytes.Byte() % 2 == 0 ? code : -code;
  const Rect rect = TakeRect(bytes);
  PXL_WorldHandle worldH = nullptr;
  const std::int32_t status =
      PXL_NewWorld(nullptr, PXL_Flag_DEFERRED, &rect, depth, 0, nullptr, &worldH);
  const Geometry expected = ExpectedGeometry(code, rect);
  Demand(status == expected.status, "a World has another status than its geometry");
  Demand((worldH != nullptr) == (status == PXL_Err_NONE), "a World without its handle");
  if (worldH == nullptr) return;
  const PXL_World& world = **worldH;
  Demand(static_cast<std::uint64_t>(world.pixels.rowBytes) == expected.rowBytes, "a World's rows");
  Demand(world.pixels.frameSize == expected.size, "a World's size");
  Demand(PXL_DisposeWorld(worldH) == PXL_Err_NONE, "a World cannot be disposed of");
}

// ---- Words that name a size

void CheckReport(Bytes& bytes) {
  const auto error = bytes.Byte() % 2 == 0 ? std::int32_t{-108} : bytes.Take<std::int32_t>();
  const auto rowBytes = bytes.Take<std::int32_t>();
  const auto width = bytes.Take<std::int16_t>();
  const auto height = bytes.Take<std::int16_t>();
  const auto depth = bytes.Take<std::int16_t>();
  Demand(PXL_ReportWorldAllocationFailure(error, rowBytes, width, height, depth) == 0,
         "a report has a status");
}

void CheckAlignment(Bytes& bytes) {
  PXL_PixelBuffer pixels{};
  pixels.frame = reinterpret_cast<void*>(bytes.Take<std::uintptr_t>());
  PXLp_ComputeAlignOffset(&pixels);
  const Wide frame = reinterpret_cast<std::uintptr_t>(pixels.frame);
  Demand(static_cast<Wide>(pixels.alignOffset) == RoundedUp(frame, 16) - frame,
         "an offset differs");
}

void CheckMapRowBytes(Bytes& bytes) {
  PixMap map{};
  map.rowBytes = bytes.Take<std::int16_t>();
  PixMap* master = &map;
  std::uint32_t rowBytes = 0;
  PXLp_GetPixMapRowBytes(&master, &rowBytes);
  const int expected = ((map.rowBytes % 0x4000) + 0x4000) % 0x4000;
  Demand(rowBytes == static_cast<std::uint32_t>(expected), "the row bytes of a map differ");
}

// ---- Surfaces of the drawing layer

void CheckLayout(Bytes& bytes) {
  const auto depth = bytes.Byte() % 4 == 0
                         ? bytes.Take<std::int16_t>()
                         : static_cast<std::int16_t>(bytes.Byte() % 2 == 0 ? 8 : 32);
  const Rect rect = TakeRect(bytes);
  qde::Layout layout{};
  const qde::Error error = qde::PlanLayout(depth, rect, &layout);
  const Wide width = Wide{rect.right} - rect.left;
  const Wide height = Wide{rect.bottom} - rect.top;
  const Wide least = width * (depth / 8);
  const bool good =
      (depth == 8 || depth == 32) && width > 0 && height > 0 && RoundedUp(least, 2) <= 0x3FFF;
  Demand((error == qde::kNoError) == good, "a layout that should be, or should not");
  if (!good) return;
  Demand(layout.rowBytes >= least && layout.rowBytes < least + 16, "a stride that does not fit");
  Demand(layout.rowBytes % 2 == 0 && layout.rowBytes <= 0x3FFF, "an impossible stride");
  Demand(Wide{qde::ByteCount(layout)} == layout.rowBytes * height, "a surface of another size");
}

// ---- Axes of copies

struct Spans {
  qde::Span source, destination, sourceBounds, bounds;
};

qde::Span TakeSpan(Bytes& bytes) {
  const std::int32_t a = bytes.Take<std::int16_t>();
  const std::int32_t b = bytes.Take<std::int16_t>();
  return a < b ? qde::Span{a, b} : qde::Span{b, a + 1};
}

Wide SourceOf(const Spans& spans, Wide position) {
  return spans.source.start + position * spans.source.Length() / Wide{spans.destination.Length()};
}

// The first position whose source pixel is `bound` or later: what positions show only
// grows.
Wide FirstFrom(const Spans& spans, Wide bound) {
  Wide low = 0;
  Wide high = spans.destination.Length();
  while (low < high) {
    const Wide middle = (low + high) / 2;
    if (SourceOf(spans, middle) < bound) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

void CheckSteps(const Spans& spans, const qde::Axis& axis) {
  constexpr std::int32_t kMost = 500;
  const std::int32_t last = std::min(axis.Last(), axis.First() + kMost);
  qde::Axis::Steps steps(axis);
  for (std::int32_t position = axis.First(); position < last; ++position) {
    const Wide expected = SourceOf(spans, position);
    Demand(steps.Source() == expected && axis.SourceOf(position) == expected, "a step differs");
    steps.Advance();
  }
}

void CheckAxis(Bytes& bytes) {
  const Spans spans = {TakeSpan(bytes), TakeSpan(bytes), TakeSpan(bytes), TakeSpan(bytes)};
  const qde::Axis axis(spans.source, spans.destination, spans.sourceBounds, spans.bounds);
  const Wide first = std::max({FirstFrom(spans, spans.sourceBounds.start),
                               Wide{spans.bounds.start} - spans.destination.start, Wide{0}});
  const Wide last = std::min(FirstFrom(spans, spans.sourceBounds.end),
                             Wide{spans.bounds.end} - spans.destination.start);
  Demand(axis.IsEmpty() == (first >= last), "an axis that should be empty, or should not");
  if (first >= last) return;
  Demand(axis.First() == first && axis.Last() == last, "an axis with other ends");
  Demand(axis.Shown().start == SourceOf(spans, first), "the first pixel that is shown differs");
  Demand(axis.Shown().end == SourceOf(spans, last - 1) + 1, "the last pixel that is shown differs");
  CheckSteps(spans, axis);
}

// Reports are texts for users.
void TakeReport(const K_Report* report, void* /*context*/) {
  const std::string text = report->text;
  Demand(!text.empty() && text.find('\n') == std::string::npos, "a report that is no line");
}

bool Begin() {
  fuzz::SilenceLibraries();
  K_SetReportSink(TakeReport, nullptr);
  return PXL_Birth(0) == PXL_Err_NONE;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool born = Begin();
  Demand(born, "the module cannot be born");
  constexpr void (*kChecks[])(Bytes&) = {CheckGeometry,  CheckDeferredWorld, CheckReport,
                                         CheckAlignment, CheckMapRowBytes,   CheckLayout,
                                         CheckAxis};
  Bytes bytes(data, size);
  kChecks[bytes.Below(std::size(kChecks))](bytes);
  return 0;
}
