// Scales rows of a source along the row.
#ifndef QDE_ROW_SCALER_H
#define QDE_ROW_SCALER_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/QDE/copy/axis.h"
#include "host/QDE/rows/row_scaling.h"

namespace qde {

class RowScaler {
 public:
  // For the pixels that the columns show, each of 1 or 4 bytes. Throws
  // std::bad_alloc.
  RowScaler(const Axis& columns, std::int32_t bytesPerPixel);

  // From the first pixel shown of a row; the two runs do not overlap.
  void Scale(const std::uint8_t* row, std::uint8_t* run) const;

 private:
  enum class Way { Copy, Halve, Twice, Gather, GatherBytes };
  static Way WayOf(const Axis& columns, std::int32_t bytesPerPixel);

  const ScalingRoutines& routines_;
  Way way_;
  std::size_t count_;                     // of pixels in a run
  std::size_t bytes_;                     // of a run
  bool startsAtTwin_;                     // Twice: at the second of two
  std::vector<std::uint32_t> positions_;  // Gather: from the first pixel on
};

}  // namespace qde

#endif
