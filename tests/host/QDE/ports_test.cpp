#include <gtest/gtest.h>

#include "QDE_host.h"

namespace {

GrafPtr CurrentPort() {
  GrafPtr port = nullptr;
  GetPort(&port);
  return port;
}

// Ports and devices are opaque, so that any address stands for one.
TEST(Ports, AreNullAtFirst) {
  EXPECT_EQ(CurrentPort(), nullptr);
  EXPECT_EQ(GetGDevice(), nullptr);
}

TEST(Ports, AreKeptApartFromDevices) {
  char port = 0;
  char device = 0;
  MacSetPort(reinterpret_cast<GrafPtr>(&port));
  EXPECT_EQ(CurrentPort(), reinterpret_cast<GrafPtr>(&port));
  EXPECT_EQ(GetGDevice(), nullptr);
  SetGDevice(reinterpret_cast<GDHandle>(&device));
  EXPECT_EQ(GetGDevice(), reinterpret_cast<GDHandle>(&device));
  EXPECT_EQ(CurrentPort(), reinterpret_cast<GrafPtr>(&port));
  MacSetPort(nullptr);
  SetGDevice(nullptr);
  EXPECT_EQ(CurrentPort(), nullptr);
  EXPECT_EQ(GetGDevice(), nullptr);
}

}  // namespace
