// A page of memory before a stretch in which every access is a fault.
#ifndef TESTS_SUPPORT_SYSTEM_PAGE_BEFORE_NOTHING_H
#define TESTS_SUPPORT_SYSTEM_PAGE_BEFORE_NOTHING_H

#include <cstddef>

class PageBeforeNothing {
 public:
  explicit PageBeforeNothing(std::size_t size);
  ~PageBeforeNothing();
  PageBeforeNothing(const PageBeforeNothing&) = delete;
  PageBeforeNothing& operator=(const PageBeforeNothing&) = delete;
  void* Base() { return base_; }

 private:
  std::size_t size_;
  void* base_;
};

#endif
