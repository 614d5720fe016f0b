// The shipped library, not relinked, with the recorder beneath it in the place of
// all that it imports.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "PXL.h"
#include "tests/support/recorder/recorder.h"
#include "tests/support/system/loaded_files.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

using Path = std::filesystem::path;

// Of this library, in the file names of this system.
std::vector<Path> LoadedFilesOf(const std::string& library) {
  std::vector<Path> files = LoadedFiles();
  std::erase_if(files, [start = LIBRARY_PREFIX + library + LIBRARY_SUFFIX](const Path& file) {
    return !file.filename().string().starts_with(start);
  });
  return files;
}

std::string ContentOf(const Path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
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
  for (const char* name : {"QDE", "K", "vetrix", "TRC", "Q", "TXT"}) {
    ASSERT_THAT(LoadedFilesOf(name), SizeIs(1)) << name;
    EXPECT_TRUE(std::filesystem::equivalent(LoadedFilesOf(name)[0].parent_path(), SWAPPED_FOLDER))
        << LoadedFilesOf(name)[0];
  }
}

TEST_F(SwappedImports, AreBeneathTheLibraryThatShips) {
  ASSERT_THAT(LoadedFilesOf("PXL"), SizeIs(1));
  const std::string loaded = ContentOf(LoadedFilesOf("PXL")[0]);
  EXPECT_FALSE(loaded.empty());
  EXPECT_TRUE(loaded == ContentOf(SHIPPED_FILE));
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

// Its text is written into K's own buffer.
TEST_F(SwappedImports, HaveTheDataThatReportsAreWrittenTo) {
  PXL_Birth(0);
  const Rect tooWide = {0, 0, 1, 32766};
  PXL_WorldHandle world = nullptr;
  EXPECT_NE(PXL_NewWorld(nullptr, PXL_Flag_DEFERRED, &tooWide, 32, 0, nullptr, &world),
            PXL_Err_NONE);
  EXPECT_THAT(recorder::Current().log,
              Contains(R"(Kp_ReportError(0x70035, 8 error 0 "row size too large (131072)."))"));
}

// Objects, strings and exceptions of C++ go both ways.
TEST_F(SwappedImports, ThrowWhatTheModuleCatches) {
  PXL_Birth(0);
  const Rect bounds = {0, 0, 10, 10};
  const std::int32_t mapped = PXL_Flag_DEFERRED | PXL_Flag_MAPPED;
  PXL_WorldHandle world = nullptr;
  ASSERT_EQ(PXL_NewWorld(nullptr, mapped, &bounds, 32, 0, nullptr, &world), PXL_Err_NONE);
  EXPECT_EQ(recorder::Current().Count("Init"), 1);
  EXPECT_EQ(PXL_DisposeWorld(world), PXL_Err_NONE);
  recorder::Current().Throw("Init", [] { throw std::runtime_error("no file at all"); });
  EXPECT_NE(PXL_NewWorld(nullptr, mapped, &bounds, 32, 0, nullptr, &world), PXL_Err_NONE);
  EXPECT_THAT(recorder::Current().log,
              Contains(R"(K_TranslateAndReportException("no file at all"))"));
}
