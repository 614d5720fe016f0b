// Reserves a stretch and opens its first page.
#include <gtest/gtest.h>
#include <windows.h>

#include "tests/support/system/page_before_nothing.h"

PageBeforeNothing::PageBeforeNothing(std::size_t size)
    : size_(size), base_(VirtualAlloc(nullptr, size_, MEM_RESERVE, PAGE_NOACCESS)) {
  EXPECT_NE(VirtualAlloc(base_, 4096, MEM_COMMIT, PAGE_READWRITE), nullptr);
}

PageBeforeNothing::~PageBeforeNothing() {
  VirtualFree(base_, 0, MEM_RELEASE);
}
