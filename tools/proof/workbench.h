// Fenced memory for both sides of a routine, and its expected contents after a run.
#ifndef TOOLS_PROOF_WORKBENCH_H
#define TOOLS_PROOF_WORKBENCH_H

#include <cstddef>

#include "tools/proof/fenced_memory.h"
#include "tools/proof/inputs.h"
#include "tools/proof/subject.h"

namespace proof {

// Runs the subject at any place on the first elements of `most`.
class Workbench {
 public:
  Workbench(const Subject& subject, std::size_t most);

  // Sets the number of elements of the following runs.
  void SetCount(std::size_t count);

  // Runs the subject from one place to another. Compares the result and the bytes
  // around it with those of the plain loop.
  Finding Try(unsigned char* from, unsigned char* to);

  // The lowest places of a run, and the places of a run that ends at the upper fence.
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
  static constexpr std::size_t kMargin = 256;  // bytes checked around a run

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
