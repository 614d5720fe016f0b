// The paths of the deep blit and the walk over the rows.
#include "transfer/deep_blit.h"

#include <cstddef>

#include "platform/record_access.h"
#include "simd/routines.h"
#include "simd/streaming.h"
#include "state/messages/reports.h"
#include "transfer/kernels/selection.h"
#include "transfer/row_address.h"

namespace {

constexpr std::size_t kChannels = 4;

using Path = std::int32_t (*)(PXL_WorldHandle, PXL_WorldHandle, std::int32_t depth);

struct DepthPair {
  std::int32_t source;
  std::int32_t destination;
  Path blit;
  std::int32_t depth;  // the depth that the path is chosen for
};

constexpr DepthPair kPaths[] = {
    {128, 128, PXLp_BlitSameDepth, 128}, {128, 32, PXLp_BlitDeepto32, 128},
    {64, 64, PXLp_BlitSameDepth, 64},    {64, 32, PXLp_BlitDeepto32, 64},
    {32, 64, PXLp_Blit32toDeep, 64},     {32, 128, PXLp_Blit32toDeep, 128},
    {32, 32, PXLp_BlitSameDepth, 32},
};

bool SameSize(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH) {
  const PXL_World& source = *RecordOf(sourceH);
  const PXL_World& destination = *RecordOf(destinationH);
  return source.width == destination.width && source.height == destination.height;
}

// A World and the depth that its rows are checked against.
struct Side {
  PXL_WorldHandle worldH;
  std::int32_t depth;
};

// Calls `transfer(source, destination, width)` for each pair of rows, from the top
// down. Worlds that share their memory depend on that order.
template <typename Transfer>
std::int32_t WalkRows(Side source, Side destination, Transfer transfer) {
  const std::int32_t height = RecordOf(source.worldH)->height;
  for (std::int32_t y = 0; y < height; ++y) {
    void* from = nullptr;
    void* to = nullptr;
    if (PXLp_WorldGetBaseAddrXY(source.worldH, source.depth, 0, y, &from) != PXL_Err_NONE ||
        PXLp_WorldGetBaseAddrXY(destination.worldH, destination.depth, 0, y, &to) != PXL_Err_NONE) {
      return PXL_Err_REFUSED;
    }
    const std::int32_t width = RecordOf(destination.worldH)->width;
    if (width > 0) transfer(from, to, static_cast<std::size_t>(width));
  }
  return PXL_Err_NONE;
}

std::size_t PixelBytes(std::int32_t depth) {
  return static_cast<std::size_t>(depth / 8);
}

// Chosen once for all rows, by the size of the whole: one row is always small.
simd::Stores StoresFor(Side source, Side destination) {
  const PXL_World& world = *RecordOf(source.worldH);
  const std::size_t pixels =
      world.width > 0 && world.height > 0
          ? static_cast<std::size_t>(world.width) * static_cast<std::size_t>(world.height)
          : 0;
  return simd::StoresFor(pixels * PixelBytes(source.depth), pixels * PixelBytes(destination.depth));
}

// Walks the rows with caching or with streaming stores.
template <typename Transfer>
std::int32_t StoreRows(Side source, Side destination, Transfer caching, Transfer streaming) {
  if (StoresFor(source, destination) == simd::Stores::Caching) {
    return WalkRows(source, destination, caching);
  }
  const std::int32_t status = WalkRows(source, destination, streaming);
  simd::FinishStreaming();
  return status;
}

std::int32_t ConvertRows(Side source, Side destination, const PXLp_KernelPair& kernels) {
  const auto transfer = [](PXLp_RowKernel kernel) {
    return [kernel](const void* from, void* to, std::size_t width) {
      kernel(from, to, width * kChannels);
    };
  };
  return StoreRows(source, destination, transfer(kernels.caching), transfer(kernels.streaming));
}

}  // namespace

std::int32_t PXLp_BlitSameDepth(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH,
                                std::int32_t depth) {
  const std::uint32_t code = PXLp_MakeReportCode(PXLp_Site::BlitSameDepth);
  if (RecordOf(destinationH)->depth != RecordOf(sourceH)->depth) {
    return PXLp_FailVerification(code, 255, "PXLp_BlitSameDepth() worlds must match depth");
  }
  if (!SameSize(sourceH, destinationH)) {
    return PXLp_FailVerification(code, 256,
                                 "PXLp_BlitSameDepth() worlds must be same sized (for now)");
  }
  const auto transfer = [bytes = PixelBytes(depth)](auto copy) {
    return [copy, bytes](const void* from, void* to, std::size_t width) {
      copy(to, from, width * bytes);
    };
  };
  const simd::Routines& routines = simd::BestRoutines();
  return StoreRows({sourceH, depth}, {destinationH, depth}, transfer(routines.copy),
                   transfer(routines.streamingCopy));
}

std::int32_t PXLp_BlitDeepto32(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH,
                               std::int32_t sourceDepth) {
  const std::uint32_t code = PXLp_MakeReportCode(PXLp_Site::BlitDeepto32);
  if (RecordOf(sourceH)->depth != sourceDepth) {
    return PXLp_FailVerification(code, 197, "PXLp_BlitDeepto32() source world depth mismatch");
  }
  if (!SameSize(sourceH, destinationH)) {
    return PXLp_FailVerification(code, 199,
                                 "PXLp_BlitDeepto32() worlds must be same sized (for now)");
  }
  return ConvertRows(
      {sourceH, sourceDepth}, {destinationH, PXL_Depth_32},
      sourceDepth == PXL_Depth_64 ? PXLp_selectedKernels.from16to8 : PXLp_selectedKernels.fromFto8);
}

std::int32_t PXLp_Blit32toDeep(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH,
                               std::int32_t destinationDepth) {
  const std::uint32_t code = PXLp_MakeReportCode(PXLp_Site::Blit32toDeep);
  if (RecordOf(destinationH)->depth != destinationDepth) {
    return PXLp_FailVerification(code, 140, "PXLp_Blit32toDeep() dest world depth mismatch");
  }
  if (!SameSize(sourceH, destinationH)) {
    return PXLp_FailVerification(code, 142,
                                 "PXLp_Blit32toDeep() worlds must be same sized (for now)");
  }
  return ConvertRows({sourceH, PXL_Depth_32}, {destinationH, destinationDepth},
                     destinationDepth == PXL_Depth_64 ? PXLp_selectedKernels.from8to16
                                                      : PXLp_selectedKernels.from8toF);
}

std::int32_t PXLp_Blit64(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH) {
  const std::int32_t sourceDepth = RecordOf(sourceH)->depth;
  const std::int32_t destinationDepth = RecordOf(destinationH)->depth;
  for (const DepthPair& pair : kPaths) {
    if (pair.source == sourceDepth && pair.destination == destinationDepth) {
      return pair.blit(sourceH, destinationH, pair.depth);
    }
  }
  PXLp_FailVerification(PXLp_MakeReportCode(PXLp_Site::Blit64), 348,
                        "unexpected bitdepth combination in PXLp_Blit64()");
  return PXL_Err_NONE;
}
