// Deferred unmapping of discarded sections.
#include "host/vetrix/files/section.h"

#include <mutex>
#include <utility>

#include "host/immortal.h"

namespace vetrix {
namespace {

struct Kept {
  std::mutex mutex;
  std::unique_ptr<Section> first;
};

// Never destroyed: sections may be discarded while the process ends.
Kept& TheKept() {
  static Immortal<Kept> kept;
  return *kept;
}
// Made while the library is loaded: later there may be no memory for it.
[[maybe_unused]] const Kept& kLoadedKept = TheKept();

}  // namespace

void Section::Discard(std::unique_ptr<Section> section) {
  if (section == nullptr) return;
  std::error_code reason;
  const bool gone = section->Unmap(reason);
  Kept& kept = TheKept();
  const std::lock_guard lock(kept.mutex);
  RetryUnmapping(kept.first);
  if (gone) return;
  section->ReleaseSpace();
  section->next_ = std::move(kept.first);
  kept.first = std::move(section);
}

void Section::RetryUnmapping(std::unique_ptr<Section>& first) {
  std::unique_ptr<Section>* place = &first;
  std::error_code reason;
  while (*place != nullptr) {
    if (!(*place)->Unmap(reason)) {
      place = &(*place)->next_;
      continue;
    }
    std::unique_ptr<Section> next = std::move((*place)->next_);
    *place = std::move(next);
  }
}

}  // namespace vetrix
