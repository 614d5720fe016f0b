// Tests of mapped files on every system.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/stand_ins/vetrix/mapped_file_fixture.h"
#include "tests/support/system/memory_state.h"

namespace {

using vetrix::MemoryMappedFile;

TEST_F(MappedFile, IsEmptyUntilItIsInitialised) {
  EXPECT_EQ(file_.Size(), 0U);
  EXPECT_THROW(file_.GetAddress(), std::runtime_error);
  file_.UnmapMemory();
  file_.CloseFileHandleIfPossible();
  file_.Reset();
}

TEST_F(MappedFile, HasTheSizeAskedForAndZeros) {
  file_.Init("a", kSize, kMode);
  EXPECT_EQ(file_.Size(), kSize);
  const auto* bytes = static_cast<const char*>(file_.GetAddress());
  EXPECT_EQ(std::string(bytes, kSize), std::string(kSize, '\0'));
}

TEST_F(MappedFile, StaysAtItsAddressWhileMapped) {
  file_.Init("a", kSize, kMode);
  void* address = file_.GetAddress();
  ASSERT_NE(address, nullptr);
  EXPECT_EQ(file_.GetAddress(), address);
}

TEST_F(MappedFile, KeepsItsContentWhileUnmapped) {
  file_.Init("a", kSize, kMode);
  std::memset(file_.GetAddress(), 0x5A, kSize);
  file_.UnmapMemory();
  file_.CloseFileHandleIfPossible();
  const auto* bytes = static_cast<const char*>(file_.GetAddress());
  EXPECT_EQ(std::string(bytes, kSize), std::string(kSize, '\x5A'));
}

TEST_F(MappedFile, TakesNoAddressSpaceWhileUnmapped) {
  file_.Init("a", kSize, kMode);
  void* address = file_.GetAddress();
  EXPECT_TRUE(IsMapped(address));
  file_.UnmapMemory();
  EXPECT_FALSE(IsMapped(address));
  file_.UnmapMemory();
}

TEST_F(MappedFile, IsNotAnotherOfTheSameName) {
  MemoryMappedFile other;
  file_.Init("same", kSize, kMode);
  other.Init("same", kSize, kMode);
  std::memset(file_.GetAddress(), 1, kSize);
  std::memset(other.GetAddress(), 2, kSize);
  EXPECT_EQ(*static_cast<char*>(file_.GetAddress()), 1);
  EXPECT_EQ(*static_cast<char*>(other.GetAddress()), 2);
}

TEST_F(MappedFile, TakesAnyName) {
  EXPECT_NO_THROW(file_.Init("../../no/such/folder", kSize, kMode));
}

TEST_F(MappedFile, ClosesItsDescriptor) {
  // The first file may make the runtime open descriptors that stay open.
  file_.Init("a", kSize, kMode);
  file_.Reset();
  const std::set<int> before = OpenDescriptors();
  file_.Init("a", kSize, kMode);
  file_.GetAddress();
  EXPECT_EQ(OpenDescriptors().size(), before.size() + kDescriptorsOfAFile);
  file_.Reset();
  EXPECT_EQ(OpenDescriptors(), before);
  {
    MemoryMappedFile other;
    other.Init("b", kSize, kMode);
  }
  EXPECT_EQ(OpenDescriptors(), before);
}

TEST_F(MappedFile, IsEmptyAgainAfterAReset) {
  file_.Init("a", kSize, kMode);
  void* address = file_.GetAddress();
  std::memset(address, 1, kSize);
  file_.Reset();
  EXPECT_FALSE(IsMapped(address));
  EXPECT_EQ(file_.Size(), 0U);
  EXPECT_THROW(file_.GetAddress(), std::runtime_error);
  file_.Init("a", kSize, kMode);
  EXPECT_EQ(*static_cast<char*>(file_.GetAddress()), 0);
}

TEST_F(MappedFile, IsNotInitialisedTwice) {
  file_.Init("a", kSize, kMode);
  EXPECT_THROW(file_.Init("b", 2 * kSize, kMode), std::runtime_error);
  EXPECT_EQ(file_.Size(), kSize);
}

TEST_F(MappedFile, CannotBeEmptyOrBeyondAllFiles) {
  const std::set<int> before = OpenDescriptors();
  EXPECT_THROW(file_.Init("a", 0, kMode), std::runtime_error);
  EXPECT_THROW(file_.Init("a", ~std::uint64_t{0}, kMode), std::runtime_error);
  EXPECT_THROW(file_.Init("a", std::uint64_t{1} << 62, kMode), std::runtime_error);
  EXPECT_EQ(OpenDescriptors(), before);
  EXPECT_NO_THROW(file_.Init("a", kSize, kMode));
}

TEST_F(MappedFile, SaysThatTheSizeIsWrong) {
  EXPECT_EQ(ProblemOf(file_, "a", 0), "the size is 0 for 'a': Invalid argument");
  EXPECT_EQ(ProblemOf(file_, "a", ~std::uint64_t{0}),
            "18446744073709551615 bytes exceed the limit on file sizes: File too large");
}

TEST_F(MappedFile, TakesHostileNamesAsLabels) {
  const std::vector<std::string> names = {"",
                                          "/",
                                          "..",
                                          "a/b\n\x1B[2J\xFF",
                                          "%s%n",
                                          std::string("a\0b", 3),
                                          std::string(100000, 'x'),
                                          folder_.Path() + "/known"};
  for (const std::string& name : names) {
    MemoryMappedFile file;
    EXPECT_EQ(ProblemOf(file, name, kSize), "");
    *static_cast<char*>(file.GetAddress()) = 1;
    EXPECT_FALSE(std::filesystem::exists(folder_.Path() + "/known"));
  }
  EXPECT_TRUE(folder_.IsEmpty());
}

TEST_F(MappedFile, KeepsHostileNamesOutOfItsMessages) {
  EXPECT_EQ(ProblemOf(file_, std::string("a\n\x1B[2J\0%s", 9), 0),
            "the size is 0 for 'a??[2J?%s': Invalid argument");
  EXPECT_EQ(ProblemOf(file_, std::string(100000, 'x'), 0),
            "the size is 0 for '" + std::string(80, 'x') + "...': Invalid argument");
}

}  // namespace
