#include "surfaces.h"

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

TEST_F(Ports, KeepTheForcingOfBitmapsUntilItIsSwitchedOff) {
  EXPECT_FALSE(QDE_IsBitmapCreationForced());
  QDE_ForceBitmapCreationBitfields(1, 8, 8);
  EXPECT_TRUE(QDE_IsBitmapCreationForced());
  QDE_ForceBitmapCreationBitfields(0, 0, 0);
  EXPECT_FALSE(QDE_IsBitmapCreationForced());
}

}  // namespace
