// One row of a copy: from any depth to any depth, in any mode.
#ifndef QDE_ROW_COMBINER_H
#define QDE_ROW_COMBINER_H

#include <cstddef>
#include <cstdint>
#include <memory>

#include "host/QDE/pixels/image.h"
#include "host/QDE/pixels/port_colors.h"
#include "host/QDE/rows/row_routines.h"

namespace qde {

// The mode and the colours of a copy.
struct Drawing {
  const Mode& mode;
  bool dithers;  // when colours become indices
  const PortColors& colors;
};

// Whether the copy does not change pixels.
bool KeepsPixels(const Image& source, const Image& destination, const Drawing& drawing);

// Whether runs may be longer than the width: where no run is buffered.
bool TakesLongRuns(const Image& source, const Image& destination, const Drawing& drawing);

class RowCombiner {
 public:
  RowCombiner() = default;
  virtual ~RowCombiner() = default;
  RowCombiner(const RowCombiner&) = delete;
  RowCombiner& operator=(const RowCombiner&) = delete;

  // `count` pixels in the depths and formats of the two images. The two runs do
  // not overlap. Neither allocates nor throws.
  virtual void Combine(const std::uint8_t* source, std::uint8_t* destination,
                       std::size_t count) = 0;
};

// For rows of up to `width` pixels; if it dithers, of exactly `width`, from the top
// down. Throws std::bad_alloc.
std::unique_ptr<RowCombiner> MakeRowCombiner(const Image& source, const Image& destination,
                                             const Drawing& drawing, std::size_t width);

}  // namespace qde

#endif
