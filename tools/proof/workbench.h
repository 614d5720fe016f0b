// Fenced memory for both sides of a routine, and what must be in it after a run.
#ifndef TOOLS_PROOF_WORKBENCH_H
#define TOOLS_PROOF_WORKBENCH_H

#include <cstddef>

#include "tools/proof/fenced_memory.h"
#include "tools/proof/inputs.h"
#include "tools/proof/subject.h"

namespace proof {

// Runs the subject on the first of up to `most` elements, wherever it is told.
class Workbench {
 public:
  Workbench(const Subject& subject, std::size_t most);

  // From here on runs are of so many elements.
  void SetCount(std::size_t count);

  // The subject's run from one place to another, compared with the plain loop's
  // together with what is around it.
  Finding Try(unsigned char* from, unsigned char* to);

  // Where runs may begin, and where they begin to end at the upper fence.
  [[nodiscard]] unsigned char* LowSource() const { return source_.begin(); }
  [[nodiscard]] unsigned char* LowDestination() const { return destination_.begin(); }
  [[nodiscard]] unsigned char* HighSource() const { return source_.end() - SourceBytes(); }
  [[nodiscard]] unsigned char* HighDestination() const {
    return destination_.end() - expected_.size();
  }
  // Room on every side, at an address that is a multiple of 64.
  [[nodiscard]] unsigned char* MiddleSource() const { return source_.begin() + kMargin; }
  [[nodiscard]] unsigned char* MiddleDestination() const { return destination_.begin() + kMargin; }

 private:
  static constexpr std::size_t kMargin = 256;  // what is looked at around a run

  [[nodiscard]] std::size_t SourceBytes() const { return count_ * subject_.source.elementBytes; }
  [[nodiscard]] Finding Compare(const unsigned char* from, const unsigned char* to) const;

  const Subject& subject_;
  Bytes elements_;
  FencedMemory source_;
  FencedMemory destination_;
  Bytes untouched_;  // the destination memory without a run
  std::size_t count_ = 0;
  Bytes expected_;
};

}  // namespace proof

#endif
