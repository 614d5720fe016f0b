// Master pointers that wait, one after the other.
#ifndef K_MASTER_QUEUE_H
#define K_MASTER_QUEUE_H

#include <cstddef>

#include "host/K/handles/master_table.h"

namespace k {

// Takes no memory: each refers to the next. Not safe for use on several threads.
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

  // Not when there is none.
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
