// A queue of master pointers.
#ifndef K_MASTER_QUEUE_H
#define K_MASTER_QUEUE_H

#include <cstddef>

#include "host/K/handles/master_table.h"

namespace k {

// Needs no memory: each master pointer refers to the next. Not safe for use on
// several threads.
class MasterQueue {
 public:
  [[nodiscard]] std::size_t size() const { return size_; }

  void AddFirst(Master* master) {
    master->next = first_;
    first_ = master;
    if (last_ == nullptr) last_ = master;
    ++size_;
  }

  void AddLast(Master* master) {
    master->next = nullptr;
    (last_ != nullptr ? last_->next : first_) = master;
    last_ = master;
    ++size_;
  }

  // The queue must not be empty.
  Master* TakeFirst() {
    Master* master = first_;
    first_ = master->next;
    if (first_ == nullptr) last_ = nullptr;
    --size_;
    return master;
  }

 private:
  Master* first_ = nullptr;
  Master* last_ = nullptr;
  std::size_t size_ = 0;
};

}  // namespace k

#endif
