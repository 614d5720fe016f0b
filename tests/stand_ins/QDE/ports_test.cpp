// The current port and device, and the colours of ports.
#include "tests/support/drawing/surfaces.h"

namespace {

GrafPtr CurrentPort() {
  GrafPtr port = nullptr;
  GetPort(&port);
  return port;
}

class Ports : public Surfaces {};

TEST_F(Ports, StartAsTheNullPortAndTheMainDevice) {
  EXPECT_EQ(CurrentPort(), nullptr);
  EXPECT_EQ(GetGDevice(), QDE_MainDevice());
  EXPECT_EQ((*QDE_MainDevice())->gdType, QDE_DeviceType_DIRECT);
  EXPECT_EQ((*(*QDE_MainDevice())->gdPMap)->pixelSize, 32);
}

TEST_F(Ports, AreKeptApartFromDevices) {
  GWorldPtr world = Make(8, Sized(4, 4));
  MacSetPort(world);
  EXPECT_EQ(CurrentPort(), world);
  EXPECT_EQ(GetGDevice(), QDE_MainDevice());
  SetGDevice(GetGWorldDevice(world));
  EXPECT_EQ(GetGDevice(), GetGWorldDevice(world));
  MacSetPort(nullptr);
  EXPECT_EQ(GetGDevice(), GetGWorldDevice(world));
  SetGDevice(nullptr);
  EXPECT_EQ(CurrentPort(), nullptr);
  EXPECT_EQ(GetGDevice(), QDE_MainDevice());
  DisposeGWorld(world);
}

TEST_F(Ports, OfDisposedWorldsAreCurrentNoLonger) {
  GWorldPtr world = Make(8, Sized(4, 4));
  GWorldPtr other = Make(8, Sized(4, 4));
  MacSetPort(world);
  SetGDevice(GetGWorldDevice(world));
  DisposeGWorld(other);
  EXPECT_EQ(CurrentPort(), world);
  EXPECT_EQ(GetGDevice(), GetGWorldDevice(world));
  DisposeGWorld(world);
  EXPECT_EQ(CurrentPort(), nullptr);
  EXPECT_EQ(GetGDevice(), QDE_MainDevice());
}

TEST_F(Ports, LeaveADeviceCurrentThatTheyOnlyShared) {
  const Rect bounds = Sized(4, 4);
  GWorldPtr owner = Make(8, bounds);
  const GDHandle device = GetGWorldDevice(owner);
  GWorldPtr guest = nullptr;
  ASSERT_EQ(NewGWorld(&guest, 8, &bounds, nullptr, device, QDE_Flag_NO_NEW_DEVICE), 0);
  SetGDevice(device);
  DisposeGWorld(guest);
  EXPECT_EQ(GetGDevice(), device);
  DisposeGWorld(owner);
  EXPECT_EQ(GetGDevice(), QDE_MainDevice());
}

TEST_F(Ports, LeaveTheErrorAsItIs) {
  EXPECT_EQ(GetPortPixMap(nullptr), nullptr);
  MacSetPort(nullptr);
  SetGDevice(nullptr);
  EXPECT_EQ(CurrentPort(), nullptr);
  GetPort(nullptr);
  UnlockPixels(nullptr);
  DisposeGWorld(nullptr);
  EXPECT_EQ(QDE_Error(), -50);
}

bool IsColor(GWorldPtr port, int which, const QDE_RGBColor& expected) {
  QDE_RGBColor color{1, 1, 1};
  EXPECT_EQ(QDE_GetPortColor(port, which, &color), 0);
  return color.red == expected.red && color.green == expected.green && color.blue == expected.blue;
}

TEST_F(Ports, StartWithTheirColors) {
  GWorldPtr world = Make(32, Sized(4, 4));
  EXPECT_TRUE(IsColor(world, QDE_PortColor_FORE, {0, 0, 0}));
  EXPECT_TRUE(IsColor(world, QDE_PortColor_BACK, {0xFFFF, 0xFFFF, 0xFFFF}));
  EXPECT_TRUE(IsColor(world, QDE_PortColor_OP, {0, 0, 0}));
  EXPECT_TRUE(IsColor(world, QDE_PortColor_HILITE, {0xCCCC, 0xCCCC, 0xFFFF}));
  DisposeGWorld(world);
}

TEST_F(Ports, KeepTheColorsThatTheyAreGiven) {
  GWorldPtr world = Make(32, Sized(4, 4));
  GWorldPtr other = Make(32, Sized(4, 4));
  for (int which = 0; which < QDE_PortColorCount; ++which) {
    const QDE_RGBColor color{static_cast<std::uint16_t>(0x1234 + which), 0xABCD, 7};
    EXPECT_EQ(QDE_SetPortColor(world, which, &color), 0);
  }
  for (int which = 0; which < QDE_PortColorCount; ++which) {
    const QDE_RGBColor color{static_cast<std::uint16_t>(0x1234 + which), 0xABCD, 7};
    EXPECT_TRUE(IsColor(world, which, color));
    EXPECT_FALSE(IsColor(other, which, color));
  }
  DisposeGWorld(other);
  DisposeGWorld(world);
}

TEST_F(Ports, OfOneWorldShareItsColors) {
  GWorldPtr world = Make(32, Sized(4, 4));
  const GWorldPtr old = world;
  QDE_ReplaceWorldInUpdates(1);
  Update(&world, 32, Sized(4, 4));
  ASSERT_NE(world, old);
  const QDE_RGBColor color{1, 2, 3};
  EXPECT_EQ(QDE_SetPortColor(old, QDE_PortColor_OP, &color), 0);
  EXPECT_TRUE(IsColor(world, QDE_PortColor_OP, color));
  DisposeGWorld(world);
}

TEST_F(Ports, KnowNoOtherColors) {
  GWorldPtr world = Make(32, Sized(4, 4));
  QDE_RGBColor color{1, 2, 3};
  const auto expectRefusal = [&](GWorldPtr port, int which, QDE_RGBColor* its) {
    EXPECT_EQ(QDE_GetPortColor(port, which, its), -50);
    EXPECT_EQ(QDE_Error(), -50);
    EXPECT_EQ(QDE_SetPortColor(port, which, its), -50);
  };
  expectRefusal(world, -1, &color);
  expectRefusal(world, QDE_PortColorCount, &color);
  expectRefusal(world, QDE_PortColor_FORE, nullptr);
  expectRefusal(nullptr, QDE_PortColor_FORE, &color);
  EXPECT_EQ(color.blue, 3);
  DisposeGWorld(world);
  expectRefusal(world, QDE_PortColor_FORE, &color);
}

TEST_F(Ports, KeepTheForcingOfBitmapsUntilItIsSwitchedOff) {
  EXPECT_FALSE(QDE_IsBitmapCreationForced());
  QDE_ForceBitmapCreationBitfields(1, 8, 8);
  EXPECT_TRUE(QDE_IsBitmapCreationForced());
  QDE_ForceBitmapCreationBitfields(0, 0, 0);
  EXPECT_FALSE(QDE_IsBitmapCreationForced());
}

}  // namespace
