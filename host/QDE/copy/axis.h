// One axis of a copy: the source pixel of each destination pixel, and the range of
// destination pixels that are drawn.
#ifndef QDE_AXIS_H
#define QDE_AXIS_H

#include <algorithm>
#include <cstdint>

namespace qde {

struct Span {
  std::int32_t start;
  std::int32_t end;  // exclusive
  [[nodiscard]] std::int32_t Length() const { return end - start; }
};

class Axis {
 public:
  // The spans determine the scale and are not empty. The bounds only clip.
  Axis(Span source, Span destination, Span sourceBounds, Span destinationBounds)
      : source_(source), destination_(destination) {
    const std::int32_t shown = FirstShowing(sourceBounds.start - source.start);
    const std::int32_t beyond = FirstShowing(sourceBounds.end - source.start);
    first_ = std::max({shown, destinationBounds.start - destination.start, 0});
    last_ = std::min(beyond, destinationBounds.end - destination.start);
  }

  // Positions count from the start of the destination; last is exclusive.
  [[nodiscard]] std::int32_t First() const { return first_; }
  [[nodiscard]] std::int32_t Last() const { return last_; }
  [[nodiscard]] bool IsEmpty() const { return first_ >= last_; }
  [[nodiscard]] bool IsScaled() const { return source_.Length() != destination_.Length(); }

  // Whether every second source pixel is shown, and whether every one twice.
  [[nodiscard]] bool IsHalved() const { return source_.Length() == 2 * destination_.Length(); }
  [[nodiscard]] bool IsDoubled() const { return destination_.Length() == 2 * source_.Length(); }

  [[nodiscard]] std::int32_t DestinationOf(std::int32_t position) const {
    return destination_.start + position;
  }
  [[nodiscard]] std::int32_t SourceOf(std::int32_t position) const {
    const std::int64_t product = std::int64_t{position} * source_.Length();
    return source_.start + static_cast<std::int32_t>(product / destination_.Length());
  }
  // SourceOf for consecutive positions from the first, without a division for each.
  class Steps {
   public:
    explicit Steps(const Axis& axis) : axis_(axis) {
      const std::int64_t product = std::int64_t{axis.first_} * axis.source_.Length();
      source_ = axis.SourceOf(axis.first_);
      rest_ = static_cast<std::int32_t>(product % axis.destination_.Length());
      step_ = axis.source_.Length() / axis.destination_.Length();
      restOfStep_ = axis.source_.Length() % axis.destination_.Length();
    }
    [[nodiscard]] std::int32_t Source() const { return source_; }
    void Advance() {
      source_ += step_;
      rest_ += restOfStep_;
      if (rest_ < axis_.destination_.Length()) return;
      rest_ -= axis_.destination_.Length();
      ++source_;
    }

   private:
    const Axis& axis_;
    std::int32_t source_;
    std::int32_t rest_;
    std::int32_t step_;
    std::int32_t restOfStep_;
  };

  // The source pixels that are shown.
  [[nodiscard]] Span Shown() const { return {SourceOf(first_), SourceOf(last_ - 1) + 1}; }

 private:
  // The first position whose source pixel is at `offset` or later; without one, the
  // end of the destination.
  [[nodiscard]] std::int32_t FirstShowing(std::int32_t offset) const {
    const std::int32_t length = source_.Length();
    const std::int32_t within = std::clamp(offset, 0, length);
    return static_cast<std::int32_t>((std::int64_t{within} * destination_.Length() + length - 1) /
                                     length);
  }

  Span source_;
  Span destination_;
  std::int32_t first_;
  std::int32_t last_;
};

}  // namespace qde

#endif
