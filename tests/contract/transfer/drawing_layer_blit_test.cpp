// Blits that the drawing layer does.
#include <type_traits>

#include "tests/support/module/born_module.h"
#include "tests/support/module/record_fields.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

static_assert(
    std::is_same_v<decltype(&PXL_Blit), std::int32_t (*)(PXL_WorldHandle, PXL_WorldHandle,
                                                         const Rect*, const Rect*, std::uint16_t)>);

class DrawingLayerBlit : public BornModule {
 protected:
  DrawingLayerBlit() {
    recorder_.Name(&port_, "host port");
    recorder_.Name(&device_, "host device");
    recorder_.script.currentPort = reinterpret_cast<GrafPtr>(&port_);
    recorder_.script.currentDevice = reinterpret_cast<GDHandle>(&device_);
  }
  std::int32_t Blit(const Rect* from = nullptr, const Rect* to = nullptr, std::uint16_t mode = 0) {
    return PXL_Blit(source_, destination_, from, to, mode);
  }
  // The mode that CopyBits was given.
  std::string ModeOf(std::uint16_t index) {
    ForgetLog();
    Blit(nullptr, nullptr, index);
    const std::string call = recorder_.LogOf({"CopyBits"}).at(0);
    const auto end = call.rfind(", null)");
    const auto begin = call.rfind(", ", end - 1) + 2;
    return call.substr(begin, end - begin);
  }

  char port_ = 0;
  char device_ = 0;
  PXL_WorldHandle source_ = NewWorld(8, {10, 20, 14, 30});
  PXL_WorldHandle destination_ = NewWorld(32, {1, 2, 6, 9});
};

}  // namespace

TEST_F(DrawingLayerBlit, MakesDeviceAndPortCurrentAndPutsThemBackInReverse) {
  const PXL_World source = Record(source_);
  const PXL_World destination = Record(destination_);
  EXPECT_EQ(Blit(), PXL_Err_NONE);
  EXPECT_THAT(
      Log(),
      ElementsAre("GetGDevice()", "SetGDevice(device of gworld2)", "GetPort()",
                  "MacSetPort(gworld2)", "GetPortBitMapForCopyBits(gworld1)",
                  "GetPortBitMapForCopyBits(gworld2)",
                  "CopyBits(bits of gworld1, bits of gworld2, {10, 20, 14, 30}, {1, 2, 6, 9}, "
                  "0, null)",
                  "MacSetPort(host port)", "SetGDevice(host device)"));
  EXPECT_THAT(ChangedFields(source, Record(source_)), IsEmpty());
  EXPECT_THAT(ChangedFields(destination, Record(destination_)), IsEmpty());
}

TEST_F(DrawingLayerBlit, LeavesTheDeviceAloneWhenTheDestinationHasNone) {
  Record(destination_).gdevice = nullptr;
  EXPECT_EQ(Blit(), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"GetGDevice", "SetGDevice", "GetPort", "MacSetPort"}),
              ElementsAre("GetPort()", "MacSetPort(gworld2)", "MacSetPort(host port)"));
}

TEST_F(DrawingLayerBlit, TakesNoInterestInTheSourcesDevice) {
  Record(source_).gdevice = nullptr;
  EXPECT_EQ(Blit(), PXL_Err_NONE);
  EXPECT_THAT(
      recorder_.LogOf({"GetGDevice", "SetGDevice"}),
      ElementsAre("GetGDevice()", "SetGDevice(device of gworld2)", "SetGDevice(host device)"));
}

TEST_F(DrawingLayerBlit, DoesNotPutBackADeviceThatWasNotThere) {
  recorder_.script.currentDevice = nullptr;
  EXPECT_EQ(Blit(), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"GetGDevice", "SetGDevice"}),
              ElementsAre("GetGDevice()", "SetGDevice(device of gworld2)"));
}

TEST_F(DrawingLayerBlit, PutsBackAPortThatWasNotThere) {
  recorder_.script.currentPort = nullptr;
  EXPECT_EQ(Blit(), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"MacSetPort"}),
              ElementsAre("MacSetPort(gworld2)", "MacSetPort(null)"));
}

TEST_F(DrawingLayerBlit, PassesTheRectanglesOn) {
  const Rect from = {1, 2, 3, 4};
  const Rect to = {-5, -6, 7, 8};
  EXPECT_EQ(Blit(&from, &to), PXL_Err_NONE);
  EXPECT_EQ(Blit(&from, nullptr), PXL_Err_NONE);
  EXPECT_EQ(Blit(nullptr, &to), PXL_Err_NONE);
  EXPECT_THAT(
      recorder_.LogOf({"CopyBits"}),
      ElementsAre(
          "CopyBits(bits of gworld1, bits of gworld2, {1, 2, 3, 4}, {-5, -6, 7, 8}, 0, null)",
          "CopyBits(bits of gworld1, bits of gworld2, {1, 2, 3, 4}, {1, 2, 6, 9}, 0, null)",
          "CopyBits(bits of gworld1, bits of gworld2, {10, 20, 14, 30}, {-5, -6, 7, 8}, 0, "
          "null)"));
}

TEST_F(DrawingLayerBlit, PassesBoundsThatStayThoughTheRecordsMove) {
  MoveInEveryCall();
  EXPECT_EQ(Blit(), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"MacSetPort", "GetPortBitMapForCopyBits", "CopyBits"}),
              ElementsAre("MacSetPort(gworld2)", "GetPortBitMapForCopyBits(gworld1)",
                          "GetPortBitMapForCopyBits(gworld2)",
                          "CopyBits(bits of gworld1, bits of gworld2, {10, 20, 14, 30}, "
                          "{1, 2, 6, 9}, 0, null)",
                          "MacSetPort(host port)"));
}

TEST_F(DrawingLayerBlit, TurnsItsModesIntoTransferModes) {
  const std::vector<std::string> modes = {"0",  "1",  "2",  "3",  "4",  "5",  "6",
                                          "7",  "32", "33", "34", "35", "37", "38",
                                          "39", "64", "64", "36", "50"};
  for (std::size_t i = 0; i < modes.size(); ++i) {
    EXPECT_EQ(ModeOf(static_cast<std::uint16_t>(i)), modes[i]) << i;
  }
}

TEST_F(DrawingLayerBlit, TakesAnUnknownModeForACopy) {
  for (const int index : {19, 20, 255, 0x7FFF, 0x8000, 0xFFFF}) {
    EXPECT_EQ(ModeOf(static_cast<std::uint16_t>(index)), "0") << index;
  }
}

TEST_F(DrawingLayerBlit, ServesEveryPairOfDepthsUpTo32) {
  for (const std::int32_t from : {8, 32}) {
    for (const std::int32_t to : {8, 32}) {
      source_ = NewWorld(from, Sized(3, 2));
      destination_ = NewWorld(to, Sized(5, 4));
      EXPECT_EQ(Blit(), PXL_Err_NONE);
      EXPECT_EQ(recorder_.Count("CopyBits"), 1) << from << " to " << to;
    }
  }
}

TEST_F(DrawingLayerBlit, ComparesDepthsAsSignedNumbers) {
  Record(source_).depth = -128;
  Record(destination_).depth = 0;
  EXPECT_EQ(Blit(), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("CopyBits"), 1);
}

TEST_F(DrawingLayerBlit, OfWorldsWithoutSurfaceHandsNullOn) {
  source_ = NewWorld(32, Sized(3, 2), PXL_Flag_NO_PLATFORM);
  destination_ = NewWorld(32, Sized(3, 2), PXL_Flag_NO_PLATFORM);
  EXPECT_EQ(Blit(), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("GetPort()", "MacSetPort(null)", "GetPortBitMapForCopyBits(null)",
                                 "GetPortBitMapForCopyBits(null)",
                                 "CopyBits(null, null, {0, 0, 2, 3}, {0, 0, 2, 3}, 0, null)",
                                 "MacSetPort(host port)"));
}

TEST_F(DrawingLayerBlit, ChecksNoMarksAndLocksNothing) {
  Record(source_).headMark = 0;
  Record(destination_).tailMark = 0;
  EXPECT_EQ(Blit(), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"LockPixels", "HLock", "Kp_ReportQuexErrString"}), IsEmpty());
  EXPECT_EQ(recorder_.Count("CopyBits"), 1);
}

TEST_F(DrawingLayerBlit, CopiesAWorldIntoItself) {
  EXPECT_EQ(PXL_Blit(source_, source_, nullptr, nullptr, 0), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"CopyBits"}),
              ElementsAre("CopyBits(bits of gworld1, bits of gworld1, {10, 20, 14, 30}, "
                          "{10, 20, 14, 30}, 0, null)"));
}
