// Tests that large blocks of the pool may use large pages.
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/stand_ins/K/memory_fixture.h"

namespace {

constexpr std::uint64_t kMiB = 1 << 20;
constexpr const char* kLargePagesOfTheSystem = "/sys/kernel/mm/transparent_hugepage/enabled";

// Whether a line of the kernel's list starts the mapping that holds `address`.
bool StartsMappingOf(const std::string& line, std::uintptr_t address) {
  std::istringstream words(line);
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;
  char dash = 0;
  words >> std::hex >> begin >> dash >> end;
  return words && dash == '-' && begin <= address && address < end;
}

// The kernel's flags of the mapping that holds `address`.
std::string FlagsOf(const void* address) {
  std::ifstream list("/proc/self/smaps");
  bool found = false;
  for (std::string line; std::getline(list, line);) {
    found = found || StartsMappingOf(line, reinterpret_cast<std::uintptr_t>(address));
    if (found && line.starts_with("VmFlags:")) return line + " ";
  }
  return {};
}

using LargePages = MemoryTest;

TEST_F(LargePages, AreAskedForUnderALargeBlock) {
  if (!std::filesystem::exists(kLargePagesOfTheSystem)) GTEST_SKIP() << "the system has none";
  void* large = NewBlock(32 * kMiB);
  void* small = NewBlock(kMiB);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(large) % (2 * kMiB), 0U);
  EXPECT_NE(FlagsOf(large).find(" hg "), std::string::npos) << FlagsOf(large);
  EXPECT_EQ(FlagsOf(small).find(" hg "), std::string::npos) << FlagsOf(small);
  K_FreeRecycledPtr(large);
  K_FreeRecycledPtr(small);
}

}  // namespace
