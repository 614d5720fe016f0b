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

// How rows are combined, wherever they are.
struct Drawing {
  const Mode& mode;
  bool dithers;  // where colours become indices
  const PortColors& colors;
};

// Whether the pixels come out just as they are.
bool KeepsPixels(const Image& source, const Image& destination, const Drawing& drawing);

// Whether runs may be longer than the width, and then lose nothing by it: where
// no run has to be kept meanwhile.
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

// For rows of up to `width` pixels; when it dithers, of just that many, from
// the top down. Throws std::bad_alloc.
std::unique_ptr<RowCombiner> MakeRowCombiner(const Image& source, const Image& destination,
                                             const Drawing& drawing, std::size_t width);

}  // namespace qde

#endif
