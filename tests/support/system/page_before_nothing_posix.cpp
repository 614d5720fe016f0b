// Reserves a stretch and opens its first page.
#include <gtest/gtest.h>
#include <sys/mman.h>

#include "tests/support/system/page_before_nothing.h"

PageBeforeNothing::PageBeforeNothing(std::size_t size) : size_(size) {
  base_ = mmap(nullptr, size_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  EXPECT_EQ(mprotect(base_, 4096, PROT_READ | PROT_WRITE), 0);
}

PageBeforeNothing::~PageBeforeNothing() {
  munmap(base_, size_);
}
