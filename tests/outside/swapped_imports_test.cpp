// The shipped library, neither relinked nor told, with the recorder beneath it
// in the place of all that it imports.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <link.h>

#include <string>
#include <vector>

#include "PXL.h"
#include "tests/recorder/recorder.h"

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

namespace {

// The files of all loaded libraries.
std::vector<std::string> LoadedFiles() {
  std::vector<std::string> files;
  const auto note = [](dl_phdr_info* info, std::size_t, void* context) {
    static_cast<std::vector<std::string>*>(context)->emplace_back(info->dlpi_name);
    return 0;
  };
  dl_iterate_phdr(note, &files);
  return files;
}

std::vector<std::string> LoadedImports() {
  std::vector<std::string> imports;
  for (const std::string& file : LoadedFiles()) {
    for (const char* name : {"QDE", "K", "vetrix", "TRC", "Q", "TXT"}) {
      if (file.ends_with(std::string("/lib") + name + ".so")) imports.push_back(file);
    }
  }
  return imports;
}

class SwappedImports : public ::testing::Test {
 protected:
  SwappedImports() { recorder::Current().Reset(); }
  ~SwappedImports() override {
    if (PXLp_G.bornMark != 0) PXL_Death();
    recorder::Current().Reset();
  }

  static std::int32_t NewWorld(std::int32_t depth, PXL_WorldHandle* world) {
    const Rect bounds = {0, 0, 9, 16};
    return PXL_NewWorld(nullptr, 0, &bounds, depth, 0, nullptr, world);
  }
};

}  // namespace

TEST_F(SwappedImports, AreTheOnesThatAreLoaded) {
  EXPECT_THAT(LoadedImports(), SizeIs(6));
  EXPECT_THAT(LoadedImports(), Each(StartsWith(SWAPPED_FOLDER "/")));
  EXPECT_THAT(LoadedFiles(), Contains(EndsWith("libPXL.so.31")));
}

TEST_F(SwappedImports, AreAllThatBirthAndDeathTouch) {
  EXPECT_EQ(PXL_Birth(7), PXL_Err_NONE);
  EXPECT_EQ(PXL_Death(), PXL_Err_NONE);
  EXPECT_THAT(recorder::Current().log, ElementsAre(R"(TRC_Log(10, "PXL", "Birth", "PXL Birth"))",
                                                   R"(TRC_Log(10, "PXL", "Death", "PXL Death"))"));
}

TEST_F(SwappedImports, GiveTheMemoryOfWorldsAndGetItBack) {
  PXL_Birth(0);
  for (const std::int32_t depth : {PXL_Depth_32, PXL_Depth_128}) {
    PXL_WorldHandle world = nullptr;
    ASSERT_EQ(NewWorld(depth, &world), PXL_Err_NONE);
    EXPECT_GE(recorder::Current().Count("K_AllocateHandleClear"), 1);
    EXPECT_EQ(PXL_LockPixels(0, world, nullptr), PXL_Err_NONE);
    PXL_UnlockPixels(world);
    EXPECT_EQ(PXL_DisposeWorld(world), PXL_Err_NONE);
  }
  EXPECT_EQ(recorder::Current().Count("NewGWorld"), 1);
  EXPECT_EQ(recorder::Current().Count("DisposeGWorld"), 1);
  EXPECT_THAT(recorder::Current().Outstanding(), IsEmpty());
}

TEST_F(SwappedImports, DecideWhatFails) {
  PXL_Birth(0);
  recorder::Current().Fail("K_AllocateHandleClear");
  PXL_WorldHandle world = nullptr;
  EXPECT_EQ(NewWorld(PXL_Depth_64, &world), PXL_Err_NO_MEMORY);
  EXPECT_EQ(world, nullptr);
  EXPECT_EQ(NewWorld(PXL_Depth_64, &world), PXL_Err_NONE);
  EXPECT_EQ(PXL_DisposeWorld(world), PXL_Err_NONE);
}
