// PXL_Blit: the drawing layer's copy, or the deep blit.
#include <iterator>

#include "PXL.h"
#include "platform/QDE.h"
#include "platform/record_access.h"
#include "transfer/deep_blit.h"

namespace {

// QuickDraw's transfer modes in the order of the blit's mode index. Both 15
// and 16 stand for ditherCopy; hosts use either.
constexpr std::int16_t kTransferModes[] = {
    0,   // srcCopy
    1,   // srcOr
    2,   // srcXor
    3,   // srcBic
    4,   // notSrcCopy
    5,   // notSrcOr
    6,   // notSrcXor
    7,   // notSrcBic
    32,  // blend
    33,  // addPin
    34,  // addOver
    35,  // subPin
    37,  // addMax
    38,  // subOver
    39,  // adMin
    64,  // ditherCopy
    64,  // ditherCopy
    36,  // transparent
    50,  // hilite
};

// An index outside the table counts as srcCopy.
std::int16_t TransferMode(std::uint16_t index) {
  return kTransferModes[index < std::size(kTransferModes) ? index : 0];
}

// Makes the World's device and port current and restores the earlier ones in the
// reverse order. A World without device does not change the current device.
class CurrentPort {
 public:
  explicit CurrentPort(PXL_WorldHandle worldH) {
    if (RecordOf(worldH)->gdevice != nullptr) {
      device_ = GetGDevice();
      SetGDevice(RecordOf(worldH)->gdevice);
    }
    GetPort(&port_);
    MacSetPort(RecordOf(worldH)->gworld);
  }
  ~CurrentPort() {
    MacSetPort(port_);
    if (device_ != nullptr) SetGDevice(device_);
  }
  CurrentPort(const CurrentPort&) = delete;
  CurrentPort& operator=(const CurrentPort&) = delete;

 private:
  GDHandle device_ = nullptr;
  GrafPtr port_ = nullptr;
};

// Nothing is checked on this path: a missing surface is passed to the drawing
// layer, which reports no result.
void DrawingLayerBlit(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH, const Rect* sourceRect,
                      const Rect* destinationRect, std::uint16_t mode) {
  const CurrentPort current(destinationH);
  const BitMap* source = GetPortBitMapForCopyBits(RecordOf(sourceH)->gworld);
  const BitMap* destination = GetPortBitMapForCopyBits(RecordOf(destinationH)->gworld);
  CopyBits(source, destination, sourceRect, destinationRect, TransferMode(mode), nullptr);
}

bool IsDeep(PXL_WorldHandle worldH) {
  return RecordOf(worldH)->depth > PXL_Depth_32;
}

}  // namespace

std::int32_t PXL_Blit(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH, const Rect* sourceRect,
                      const Rect* destinationRect, std::uint16_t mode) {
  if (IsDeep(sourceH) || IsDeep(destinationH)) return PXLp_Blit64(sourceH, destinationH);

  // Copies: the records may move while the layer draws.
  const Rect sourceBounds = RecordOf(sourceH)->bounds;
  const Rect destinationBounds = RecordOf(destinationH)->bounds;
  DrawingLayerBlit(sourceH, destinationH, sourceRect != nullptr ? sourceRect : &sourceBounds,
                   destinationRect != nullptr ? destinationRect : &destinationBounds, mode);
  return PXL_Err_NONE;
}
