// Updates of a surface by the drawing layer.
#include "state/surface_update.h"

#include "tests/contract/state/expected_reports.h"
#include "tests/support/module/born_module.h"
#include "tests/support/module/record_fields.h"

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

namespace {

class SurfaceUpdate : public BornModule {
 protected:
  SurfaceUpdate() { surface_ = Record(worldH_).gworld; }
  std::int32_t Update(std::int32_t depth = 32) {
    return PXLp_UpdatePlatformSurface(&surface_, rect_, depth, nullptr);
  }
  void FailWith(std::int32_t error) {
    recorder_.FailAlways("UpdateGWorld");
    recorder_.script.updateGWorldError = error;
  }
  [[nodiscard]] PixMap& MapOf(GWorldPtr surface) {
    PixMap& map = **GetPortPixMap(surface);
    recorder_.log.pop_back();
    return map;
  }

  PXL_WorldHandle worldH_ = NewWorld(32, Sized(10, 4));
  GWorldPtr surface_ = nullptr;
  Rect rect_ = {1, 2, 21, 32};
};

const Calls kUpdate = {"QDE_ForceBitmapCreationBitfields(1, 0, 0)",
                       "UpdateGWorld(gworld1, 32, {1, 2, 21, 32}, null, 0, 0)",
                       "QDE_ForceBitmapCreationBitfields(0, 0, 0)"};

}  // namespace

TEST_F(SurfaceUpdate, ForcesBitmapsForOneCall) {
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(Update(), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAreArray(kUpdate));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(SurfaceUpdate, HandsDepthAndDeviceOn) {
  auto* device = reinterpret_cast<GDHandle>(std::uintptr_t{0x1234567890});
  EXPECT_EQ(PXLp_UpdatePlatformSurface(&surface_, rect_, -8, device), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"UpdateGWorld"}),
              ElementsAre("UpdateGWorld(gworld1, -8, {1, 2, 21, 32}, null, 78187493520, 0)"));
}

TEST_F(SurfaceUpdate, UpdatesTheVariableInPlace) {
  recorder_.script.updateReplacesSurface = true;
  EXPECT_EQ(Update(), PXL_Err_NONE);
  EXPECT_EQ(recorder_.NameOf(surface_), "gworld2");
}

TEST_F(SurfaceUpdate, DropsTheFlagsOfASuccess) {
  recorder_.script.updateGWorldFlags = 0x7FFFFFFF;
  EXPECT_EQ(Update(), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAreArray(kUpdate));
}

TEST_F(SurfaceUpdate, TakesTheTopBitForAnError) {
  FailWith(std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(Update(), std::numeric_limits<std::int32_t>::min());
}

TEST_F(SurfaceUpdate, ThatFailsLeavesPixelsThatAreThere) {
  FailWith(kLayerError);
  void* pixels = MapOf(surface_).baseAddr;
  EXPECT_EQ(Update(), kLayerError);
  EXPECT_THAT(Log(), ElementsAreArray(Together({kUpdate, {"GetPortPixMap(gworld1)"}})));
  EXPECT_EQ(MapOf(surface_).baseAddr, pixels);
}

TEST_F(SurfaceUpdate, ThatFailsAndLosesThePixelsMakesThemLookPurged) {
  FailWith(kLayerError);
  recorder_.script.updateLosesPixels = true;
  EXPECT_EQ(Update(), kLayerError);
  EXPECT_THAT(
      Log(), ElementsAreArray(Together({kUpdate, {"GetPortPixMap(gworld1)", "NewEmptyHandle()"}})));
  EXPECT_EQ(recorder_.NameOf(MapOf(surface_).baseAddr), "empty handle");
}

TEST_F(SurfaceUpdate, ThatSucceedsNeverLooksAtThePixels) {
  recorder_.script.updateReplacesSurface = true;
  recorder_.script.updateLosesPixels = true;
  EXPECT_EQ(Update(), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("NewEmptyHandle"), 0);
}

TEST_F(SurfaceUpdate, ThatFailsLooksAtTheSurfaceThatReplacedTheOther) {
  FailWith(kLayerError);
  recorder_.script.updateReplacesSurface = true;
  recorder_.script.updateLosesPixels = true;
  EXPECT_EQ(Update(), kLayerError);
  EXPECT_EQ(recorder_.NameOf(surface_), "gworld2");
  EXPECT_EQ(Log()[3], "GetPortPixMap(gworld2)");
  EXPECT_EQ(recorder_.NameOf(MapOf(surface_).baseAddr), "empty handle");
  EXPECT_NE(recorder_.NameOf(MapOf(Record(worldH_).gworld).baseAddr), "empty handle");
}

TEST_F(SurfaceUpdate, FreesMemoryLastWhenItIsShort) {
  FailWith(kLayerMemoryFull);
  recorder_.script.updateLosesPixels = true;
  EXPECT_EQ(Update(), kLayerMemoryFull);
  EXPECT_THAT(Log(), ElementsAreArray(Together({kUpdate,
                                                {"GetPortPixMap(gworld1)", "NewEmptyHandle()",
                                                 "K_PurgeHandlesAndCompact()"}})));
}

TEST_F(SurfaceUpdate, FreesNoMemoryForAnyOtherError) {
  for (const std::int32_t error : {-1, -50, -107, -109, -32768}) {
    FailWith(error);
    EXPECT_EQ(Update(), error);
  }
  EXPECT_EQ(recorder_.Count("K_PurgeHandlesAndCompact"), 0);
}

TEST_F(SurfaceUpdate, ReportsNothing) {
  FailWith(kLayerMemoryFull);
  Update();
  EXPECT_EQ(recorder_.Count("K_ReportError"), 0);
  EXPECT_EQ(recorder_.Count("Kp_ReportError"), 0);
}

TEST_F(SurfaceUpdate, StoresNoHandleWhenNoneCanBeHad) {
  FailWith(kLayerMemoryFull);
  recorder_.script.updateLosesPixels = true;
  recorder_.Fail("NewEmptyHandle");
  EXPECT_EQ(Update(), kLayerMemoryFull);
  EXPECT_EQ(MapOf(surface_).baseAddr, nullptr);
}
