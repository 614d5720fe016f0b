// Worlds whose pixels are a surface of the drawing layer.
#include "tests/support/module/contract.h"

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class SurfaceWorld : public Contract {
 protected:
  SurfaceWorld() {
    BeBorn();
    recorder_.script.currentPort = reinterpret_cast<GrafPtr>(&port_);
    recorder_.script.currentDevice = reinterpret_cast<GDHandle>(&device_);
    recorder_.Name(&port_, "port");
    recorder_.Name(&device_, "device");
  }
  std::int32_t New(std::int32_t depth, std::uint32_t flags = 0) {
    ForgetLog();
    return PXL_NewWorld(nullptr, flags, &rect_, depth, 0, nullptr, &worldH_);
  }
  [[nodiscard]] const PXL_World& World() const { return Record(worldH_); }

  char port_ = 0;
  char device_ = 0;
  Rect rect_ = {2, 3, 12, 13};
  PXL_WorldHandle worldH_ = nullptr;
};

TEST_F(SurfaceWorld, IsMadeUnderForcedBitmapsAndPutsPortAndDeviceBack) {
  ASSERT_EQ(New(32), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                                 R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))",
                                 "HLock(handle1)", "GetPort()", "GetGDevice()",
                                 "QDE_ForceBitmapCreationBitfields(1, 0, 8)",
                                 "NewGWorld(32, {2, 3, 12, 13}, null, null, 0)",
                                 "QDE_ForceBitmapCreationBitfields(0, 0, 0)",
                                 "GetGWorldDevice(gworld1)", "SetGDevice(device)",
                                 "MacSetPort(port)", "GetPortPixMap(gworld1)", "HUnlock(handle1)"));
}

TEST_F(SurfaceWorld, HoldsSurfaceAndDeviceAndNoFrame) {
  ASSERT_EQ(New(32), PXL_Err_NONE);
  EXPECT_EQ(recorder_.NameOf(World().gworld), "gworld1");
  EXPECT_EQ(recorder_.NameOf(World().gdevice), "device of gworld1");
  EXPECT_EQ(World().hasGWorld, 1);
  EXPECT_EQ(World().hasFrame, 0);
  EXPECT_EQ(World().pixels.frame, nullptr);
  EXPECT_EQ(World().pixels.frameSize, 0U);
  EXPECT_EQ(World().pixels.alignOffset, 0U);
  EXPECT_EQ(World().pixels.baseAddr, nullptr);
  EXPECT_EQ(World().pixels.provider, nullptr);
  EXPECT_EQ(World().pixels.rowBytes, 48);
  EXPECT_EQ(World().depth, 32);
  EXPECT_EQ(World().width, 10);
  EXPECT_EQ(World().height, 10);
  EXPECT_EQ(recorder::Text(&World().bounds), "{2, 3, 12, 13}");
  EXPECT_EQ(World().headMark, 0xBECCAU);
  EXPECT_EQ(World().tailMark, 0xBECCAU);
  EXPECT_EQ(PXLp_G.worldCount, 1);
}

TEST_F(SurfaceWorld, IsWhatShallowDepthsGetOfThemselves) {
  for (const std::int32_t depth : {1, 8, 16, 24, 63}) {
    ASSERT_EQ(New(depth), PXL_Err_NONE) << depth;
    EXPECT_EQ(World().hasGWorld, 1);
    EXPECT_THAT(recorder_.LogOf({"NewGWorld"}),
                ElementsAre(StartsWith("NewGWorld(" + std::to_string(depth) + ", ")));
  }
}

TEST_F(SurfaceWorld, TakesItsRowBytesFromTheMapWithoutTheFlags) {
  recorder_.script.surfaceRowBytes = 0x3FF0;
  ASSERT_EQ(New(32), PXL_Err_NONE);
  EXPECT_EQ(World().pixels.rowBytes, 0x3FF0);
}

TEST_F(SurfaceWorld, TakesTheDepthThatTheSurfaceHas) {
  recorder_.script.surfaceDepth = 16;
  ASSERT_EQ(New(32), PXL_Err_NONE);
  EXPECT_EQ(World().depth, 16);
}

TEST_F(SurfaceWorld, WithoutAMapHasNoDepthAndNoRows) {
  recorder_.script.surfaceWithoutMap = true;
  ASSERT_EQ(New(32), PXL_Err_NONE);
  EXPECT_EQ(World().depth, 0);
  EXPECT_EQ(World().pixels.rowBytes, 0);
  EXPECT_EQ(World().width, 10);
  EXPECT_EQ(World().headMark, 0xBECCAU);
}

TEST_F(SurfaceWorld, WithoutAHandleOfAMapHasNoDepthAndNoRows) {
  recorder_.Fail("GetPortPixMap");
  ASSERT_EQ(New(32), PXL_Err_NONE);
  EXPECT_EQ(World().depth, 0);
  EXPECT_EQ(World().pixels.rowBytes, 0);
  EXPECT_EQ(World().headMark, 0xBECCAU);
}

TEST_F(SurfaceWorld, TakesItsDepthButNoRowBytesFromTheMapIfItHasSome) {
  recorder_.script.surfaceDepth = 16;
  recorder_.OnCall([this](const std::string& name) {
    if (name == "GetPortPixMap") Record(worldH_).pixels.rowBytes = 7;
  });
  ASSERT_EQ(New(32), PXL_Err_NONE);
  EXPECT_EQ(World().depth, 16);
  EXPECT_EQ(World().pixels.rowBytes, 7);
}

TEST_F(SurfaceWorld, StaysInMainMemoryOnRequest) {
  ASSERT_EQ(New(32, PXL_Flag_KEEP_LOCAL), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"QDE_ForceBitmapCreationBitfields", "NewGWorld"}),
              ElementsAre("QDE_ForceBitmapCreationBitfields(1, 8, 8)",
                          "NewGWorld(32, {2, 3, 12, 13}, null, null, 8)",
                          "QDE_ForceBitmapCreationBitfields(0, 0, 0)"));
}

TEST_F(SurfaceWorld, MayBePurgedOnRequest) {
  ASSERT_EQ(New(8, PXL_Flag_PURGEABLE), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"QDE_ForceBitmapCreationBitfields", "NewGWorld"}),
              ElementsAre("QDE_ForceBitmapCreationBitfields(1, 0, 8)",
                          "NewGWorld(8, {2, 3, 12, 13}, null, null, 1)",
                          "QDE_ForceBitmapCreationBitfields(0, 0, 0)"));
  ASSERT_EQ(New(8, PXL_Flag_PURGEABLE | PXL_Flag_KEEP_LOCAL), PXL_Err_NONE);
  EXPECT_EQ(recorder_.LogOf({"NewGWorld"})[0], "NewGWorld(8, {2, 3, 12, 13}, null, null, 9)");
}

TEST_F(SurfaceWorld, PassesNoOtherFlagOn) {
  ASSERT_EQ(New(32, 0xFFFFE4D7U & ~0x0100U), PXL_Err_NONE);
  EXPECT_EQ(recorder_.LogOf({"NewGWorld"})[0], "NewGWorld(32, {2, 3, 12, 13}, null, null, 0)");
  ASSERT_EQ(New(32, PXL_Flag_MAPPED), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("Init"), 0);
}

TEST_F(SurfaceWorld, ThatFailsIsReportedWhileTheForcingIsOn) {
  recorder_.Fail("NewGWorld");
  EXPECT_EQ(New(32), kLayerError);
  EXPECT_EQ(worldH_, nullptr);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                                 R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))",
                                 "HLock(handle1)", "GetPort()", "GetGDevice()",
                                 "QDE_ForceBitmapCreationBitfields(1, 0, 8)",
                                 "NewGWorld(32, {2, 3, 12, 13}, null, null, 0)",
                                 "K_ZLookupLStrCache(27, 0, 0)", "Kp_SysEnglishError(-50)",
                                 R"(Kp_ReportError(0x70027, 8 error -50 "changing pixel buffer."))",
                                 "QDE_ForceBitmapCreationBitfields(0, 0, 0)", "SetGDevice(device)",
                                 "MacSetPort(port)", "HLock(handle1)", "K_FreeHandle(handle1)"));
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(SurfaceWorld, ThatFailsForMemorySaysHowLargeItWouldHaveBeen) {
  for (const std::int16_t error : {std::int16_t{PXL_Err_NO_MEMORY}, kLayerMemoryFull}) {
    recorder_.script.newGWorldError = error;
    recorder_.Fail("NewGWorld");
    EXPECT_EQ(New(32), error);
    EXPECT_THAT(recorder_.LogOf({"K_ReportError"}),
                ElementsAre(StartsWith("K_ReportError(0x70027, 8, u\"Unable to allocate enough "
                                       "memory to render the current frame (10 x 10 @ 8 bpc)")));
    EXPECT_EQ(recorder_.Count("Kp_ReportError"), 0);
  }
}

TEST_F(SurfaceWorld, ThatFailsWithAPositiveNumberHasFailedToo) {
  recorder_.script.newGWorldError = 1;
  recorder_.Fail("NewGWorld");
  EXPECT_EQ(New(32), 1);
  EXPECT_EQ(recorder_.Count("Kp_ReportError"), 1);
  EXPECT_EQ(recorder_.Count("GetGWorldDevice"), 0);
}

TEST_F(SurfaceWorld, ThatFailsComputesItsSizeWithoutPadding) {
  recorder_.script.newGWorldError = kLayerMemoryFull;
  recorder_.Fail("NewGWorld");
  rect_ = {-32768, -32768, 32767, 32767};
  EXPECT_EQ(New(8), kLayerMemoryFull);
  EXPECT_THAT(recorder_.LogOf({"K_ReportError"}),
              ElementsAre(HasSubstr("size 65535 x 65535 @ 2 bpc (4.0 GB)")));
}

TEST_F(SurfaceWorld, ThatFailsLeavesNoSurfaceInTheCallersRecord) {
  recorder_.Fail("NewGWorld");
  recorder_.script.surfaceOfFailure = reinterpret_cast<GWorldPtr>(&port_);
  PXL_WorldHandle callersH = CallerHandle();
  ForgetLog();
  EXPECT_EQ(PXL_NewWorld(nullptr, 0, &rect_, 32, 0, callersH, nullptr), kLayerError);
  const PXL_World& world = Record(callersH);
  EXPECT_EQ(world.hasGWorld, 0);
  EXPECT_EQ(world.gworld, nullptr);
  EXPECT_EQ(world.gdevice, nullptr);
  EXPECT_EQ(world.depth, 0);
  EXPECT_EQ(world.width, 10);
  EXPECT_EQ(world.height, 10);
  EXPECT_EQ(recorder::Text(&world.bounds), "{2, 3, 12, 13}");
  EXPECT_EQ(world.headMark, 0U);
  EXPECT_EQ(recorder_.Count("DisposeGWorld"), 0);
  EXPECT_FALSE(recorder_.IsLocked(AsHandle(callersH)));
}

TEST_F(SurfaceWorld, PutsBackThatThereWasNoPortAndNoDevice) {
  recorder_.script.currentPort = nullptr;
  recorder_.script.currentDevice = nullptr;
  ASSERT_EQ(New(32), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"SetGDevice", "MacSetPort"}),
              ElementsAre("SetGDevice(null)", "MacSetPort(null)"));
}

TEST_F(SurfaceWorld, IsClearedWithoutBeingLockedAndBeforeItIsMarked) {
  bool seen = false;
  recorder_.OnCall([&](const std::string& name) {
    if (name != "GetPixBaseAddr") return;
    seen = true;
    EXPECT_EQ(Record(worldH_).headMark, 0U);
    EXPECT_EQ(Record(worldH_).depth, 32);
    EXPECT_EQ(Record(worldH_).pixels.rowBytes, 48);
  });
  ASSERT_EQ(New(32, PXL_Flag_CLEAR), PXL_Err_NONE);
  EXPECT_TRUE(seen);
  EXPECT_THAT(
      Log(),
      ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                  R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))", "HLock(handle1)",
                  "GetPort()", "GetGDevice()", "QDE_ForceBitmapCreationBitfields(1, 0, 8)",
                  "NewGWorld(32, {2, 3, 12, 13}, null, null, 0)",
                  "QDE_ForceBitmapCreationBitfields(0, 0, 0)", "GetGWorldDevice(gworld1)",
                  "SetGDevice(device)", "MacSetPort(port)", "GetPortPixMap(gworld1)",
                  "GetPortPixMap(gworld1)", "GetPixBaseAddr(map of gworld1)", "HUnlock(handle1)"));
  recorder_.OnCall(nullptr);
  PXL_LockPixels(0, worldH_, nullptr);
  const auto* pixels = static_cast<const unsigned char*>(World().pixels.baseAddr);
  for (int i = 0; i < 480; ++i) EXPECT_EQ(pixels[i], 0) << i;
}

TEST_F(SurfaceWorld, KeepsWhatTheSurfaceHeldUnlessAskedToClear) {
  ASSERT_EQ(New(32), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("GetPixBaseAddr"), 0);
}

TEST_F(SurfaceWorld, InTheCallersHandleIsBuiltThere) {
  PXL_WorldHandle callersH = CallerHandle();
  ForgetLog();
  EXPECT_EQ(PXL_NewWorld(nullptr, 0, &rect_, 8, 0, callersH, nullptr), PXL_Err_NONE);
  EXPECT_EQ(Log()[0], "HLock(caller)");
  EXPECT_EQ(Log()[1], "HUnlock(caller)");
  EXPECT_EQ(Log()[2], "HLock(caller)");
  EXPECT_EQ(Log().back(), "HUnlock(caller)");
  EXPECT_EQ(Record(callersH).gworld != nullptr, true);
  EXPECT_EQ(Record(callersH).ownsHandle, 0);
}
