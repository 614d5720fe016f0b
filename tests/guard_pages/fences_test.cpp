// Are the fences there, and is the level the chosen one?
#include "tests/guard_pages/fences.h"

#include <dlfcn.h>

#include <cstdlib>
#include <string_view>

#include "tests/support/host/whole.h"

namespace {

template <typename Function>
Function* Find(void* library, const char* name) {
  return reinterpret_cast<Function*>(dlsym(library, name));
}

bool IsFenced(const void* address) {
  static const auto function = Find<IsFencedFunction>(RTLD_DEFAULT, kIsFenced);
  return function != nullptr && function(address);
}

bool AreBehind() {
  return std::string_view(std::getenv("PXL_FENCES")) == "behind";
}

int CountQuestions(const char* library) {
  void* loaded = dlopen(library, RTLD_NOW | RTLD_NOLOAD);
  if (loaded == nullptr) return -1;
  const auto count = Find<int()>(loaded, "CountLevelQuestions");
  const int questions = count == nullptr ? -1 : count();
  dlclose(loaded);
  return questions;
}

// The byte next to them on the side of the fences.
volatile char* Beside(void* first, std::int64_t size) {
  auto* bytes = static_cast<char*>(first);
  return AreBehind() ? bytes + size : bytes - 1;
}

char Read(const volatile char* place) {
  return *place;
}

}  // namespace

class Fences : public Whole {
 protected:
  Fences() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};
using FencesDeathTest = Fences;

TEST_F(Fences, AreAroundFramesSurfacesRecordsAndMappedFiles) {
  PXL_WorldHandle frame = Make(128, 640, 480);
  PXL_WorldHandle surface = MakeSurface(32, 30, 20);
  PXL_WorldHandle mapped = Make(64, 30, 20, PXL_Flag_DEFERRED | PXL_Flag_MAPPED);
  for (PXL_WorldHandle worldH : {frame, surface, mapped}) {
    {
      const Locked locked(worldH);
      EXPECT_TRUE(IsFenced(PXLp_GetPixBaseAddr(worldH)));
      EXPECT_TRUE(IsFenced(*worldH));
    }
    Dispose(worldH);
  }
}

TEST_F(FencesDeathTest, KillWhoeverReadsBesideAFrame) {
  for (const std::int32_t depth : {32, 64, 128}) {
    PXL_WorldHandle worldH = Make(depth, 33, 5);
    {
      const Locked locked(worldH);
      const PXL_PixelBuffer& pixels = Record(worldH).pixels;
      EXPECT_DEATH(Read(Beside(pixels.frame, static_cast<std::int64_t>(pixels.frameSize))), "");
    }
    Dispose(worldH);
  }
}

TEST_F(FencesDeathTest, KillWhoeverReadsBesideASurface) {
  PXL_WorldHandle worldH = MakeSurface(32, 33, 5);
  {
    const Locked locked(worldH);
    const PXL_World& world = Record(worldH);
    const std::int64_t size = std::int64_t{world.pixels.rowBytes} * world.height;
    EXPECT_DEATH(Read(Beside(PXLp_GetPixBaseAddr(worldH), size)), "");
  }
  Dispose(worldH);
}

TEST_F(FencesDeathTest, KillWhoeverReadsAFreedFrame) {
  void* frame = nullptr;
  ASSERT_EQ(PXL_AllocateFrameQuiet(100, 0, &frame), PXL_Err_NONE);
  PXL_FreeFrame(frame, 100);
  EXPECT_DEATH(Read(static_cast<char*>(frame)), "");
}

TEST_F(FencesDeathTest, KillWhoeverWroteOnTheOtherSide) {
  void* frame = nullptr;
  ASSERT_EQ(PXL_AllocateFrameQuiet(104, 0, &frame), PXL_Err_NONE);
  auto* bytes = static_cast<volatile char*>(frame);
  volatile char& beside = AreBehind() ? bytes[-1] : bytes[104];
  EXPECT_DEATH(
      {
        beside = 0;
        PXL_FreeFrame(frame, 104);
      },
      "a write next to a block");
  PXL_FreeFrame(frame, 104);
}

TEST_F(Fences, StandWhereTheLevelIsTheChosenOne) {
  EXPECT_GT(CountQuestions("libPXL.so.31"), 0);
  PXL_WorldHandle from = MakeSurface(32, 3, 2);
  PXL_WorldHandle to = MakeSurface(32, 3, 2);
  const int before = CountQuestions("libQDE.so");
  EXPECT_EQ(PXL_Blit(from, to, nullptr, nullptr, 8), PXL_Err_NONE);
  EXPECT_GT(CountQuestions("libQDE.so"), before);
  Dispose(to);
  Dispose(from);
}
