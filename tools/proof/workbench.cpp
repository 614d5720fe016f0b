// Runs a routine between fences and compares all bytes around it.
#include "tools/proof/workbench.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "tools/proof/difference.h"

namespace proof {
namespace {

// Copies bytes; none if `bytes` is 0, when pointers may be null.
void CopyBytes(unsigned char* to, const unsigned char* from, std::size_t bytes) {
  if (bytes != 0) std::memcpy(to, from, bytes);
}

std::string Place(const void* address) {
  return std::to_string(reinterpret_cast<std::uintptr_t>(address) % 64);
}

}  // namespace

Workbench::Workbench(const Subject& subject, std::size_t most)
    : subject_(subject),
      elements_(SourceFor(subject, most)),
      source_(2 * kMargin + elements_.size()),
      destination_(2 * kMargin + most * subject.destination.elementBytes),
      untouched_(Noise(static_cast<std::size_t>(destination_.end() - destination_.begin()))) {
  expected_.reserve(most * subject.destination.elementBytes);  // so that it has an address
}

void Workbench::SetCount(std::size_t count) {
  count_ = count;
  expected_.resize(count * subject_.destination.elementBytes);
  subject_.plain(elements_.data(), expected_.data(), count);
}

Finding Workbench::Try(unsigned char* from, unsigned char* to) {
  const auto place = static_cast<std::size_t>(to - destination_.begin());
  const std::size_t first = place - std::min(place, kMargin);
  const std::size_t end = std::min(place + expected_.size() + kMargin, untouched_.size());
  CopyBytes(destination_.begin() + first, untouched_.data() + first, end - first);
  CopyBytes(from, elements_.data(), SourceBytes());

  subject_.run(from, to, count_);

  const Finding finding = Compare(from, to);
  if (!finding) return std::nullopt;
  return subject_.name + ": " + std::to_string(count_) + " elements, source at " + Place(from) +
         " and destination at " + Place(to) + " of 64: " + *finding;
}

Finding Workbench::Compare(const unsigned char* from, const unsigned char* to) const {
  const auto place = static_cast<std::size_t>(to - destination_.begin());
  const std::size_t before = std::min(place, kMargin);
  const std::size_t runEnd = place + expected_.size();
  const std::size_t behind = std::min(kMargin, untouched_.size() - runEnd);
  if (const auto d = FirstDifference(to, expected_.data(), expected_.size())) {
    return "byte " + std::to_string(d->place) + " " + TextOf(*d);
  }
  if (const auto d = FirstDifference(to - before, &untouched_[place - before], before)) {
    return "byte " + std::to_string(before - d->place) + " before the run " + TextOf(*d);
  }
  if (const auto d = FirstDifference(to + expected_.size(), untouched_.data() + runEnd, behind)) {
    return "byte " + std::to_string(d->place + 1) + " behind the run " + TextOf(*d);
  }
  if (const auto d = FirstDifference(from, elements_.data(), SourceBytes())) {
    return "byte " + std::to_string(d->place) + " of the source " + TextOf(*d);
  }
  return std::nullopt;
}

}  // namespace proof
