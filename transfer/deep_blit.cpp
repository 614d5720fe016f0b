#include "transfer/deep_blit.h"

#include <cstddef>
#include <cstring>

#include "platform/record_access.h"
#include "state/messages/Messages.h"
#include "transfer/kernels/Kernels.h"
#include "transfer/row_address.h"

namespace {

constexpr std::size_t CHANNELS = 4;

using Path = std::int32_t (*)(PXL_WorldHandle, PXL_WorldHandle, std::int32_t depth);

struct DepthPair {
  std::int32_t source;
  std::int32_t destination;
  Path blit;
  std::int32_t depth;  // the depth that the path is chosen for
};

constexpr DepthPair PATHS[] = {
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

// Hands each pair of rows to `transfer(source, destination, width)`, from the
// top down. Worlds that share their memory depend on that order.
template <class Transfer>
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

std::int32_t ConvertRows(Side source, Side destination, PXLp_RowKernel kernel) {
  return WalkRows(source, destination, [kernel](const void* from, void* to, std::size_t width) {
    kernel(from, to, width * CHANNELS);
  });
}

}  // namespace

std::int32_t PXLp_BlitSameDepth(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH,
                                std::int32_t depth) {
  const std::uint32_t code = PXLp_ReportCode(PXLp_Site::BlitSameDepth);
  if (RecordOf(destinationH)->depth != RecordOf(sourceH)->depth) {
    return PXLp_FailVerification(code, 255, "PXLp_BlitSameDepth() worlds must match depth");
  }
  if (!SameSize(sourceH, destinationH)) {
    return PXLp_FailVerification(code, 256,
                                 "PXLp_BlitSameDepth() worlds must be same sized (for now)");
  }
  const auto pixelBytes = static_cast<std::size_t>(depth / 8);
  return WalkRows({sourceH, depth}, {destinationH, depth},
                  [pixelBytes](const void* from, void* to, std::size_t width) {
                    std::memmove(to, from, width * pixelBytes);
                  });
}

std::int32_t PXLp_BlitDeepto32(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH,
                               std::int32_t sourceDepth) {
  const std::uint32_t code = PXLp_ReportCode(PXLp_Site::BlitDeepto32);
  if (RecordOf(sourceH)->depth != sourceDepth) {
    return PXLp_FailVerification(code, 197, "PXLp_BlitDeepto32() source world depth mismatch");
  }
  if (!SameSize(sourceH, destinationH)) {
    return PXLp_FailVerification(code, 199,
                                 "PXLp_BlitDeepto32() worlds must be same sized (for now)");
  }
  return ConvertRows({sourceH, sourceDepth}, {destinationH, PXL_Depth_32},
                     sourceDepth == PXL_Depth_64 ? PXLp_Row16to8 : PXLp_RowFto8);
}

std::int32_t PXLp_Blit32toDeep(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH,
                               std::int32_t destinationDepth) {
  const std::uint32_t code = PXLp_ReportCode(PXLp_Site::Blit32toDeep);
  if (RecordOf(destinationH)->depth != destinationDepth) {
    return PXLp_FailVerification(code, 140, "PXLp_Blit32toDeep() dest world depth mismatch");
  }
  if (!SameSize(sourceH, destinationH)) {
    return PXLp_FailVerification(code, 142,
                                 "PXLp_Blit32toDeep() worlds must be same sized (for now)");
  }
  return ConvertRows({sourceH, PXL_Depth_32}, {destinationH, destinationDepth},
                     destinationDepth == PXL_Depth_64 ? PXLp_Row8to16 : PXLp_Row8toF);
}

std::int32_t PXLp_Blit64(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH) {
  const std::int32_t sourceDepth = RecordOf(sourceH)->depth;
  const std::int32_t destinationDepth = RecordOf(destinationH)->depth;
  for (const DepthPair& pair : PATHS) {
    if (pair.source == sourceDepth && pair.destination == destinationDepth) {
      return pair.blit(sourceH, destinationH, pair.depth);
    }
  }
  PXLp_FailVerification(PXLp_ReportCode(PXLp_Site::Blit64), 348,
                        "unexpected bitdepth combination in PXLp_Blit64()");
  return PXL_Err_NONE;
}
