// The module alive, and Worlds made until one is refused.
#include "tests/system_limits/worlds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

std::size_t BytesOf(PXL_WorldHandle world) {
  const PXL_World& record = **world;
  return static_cast<std::size_t>(record.pixels.rowBytes) * static_cast<std::size_t>(record.height);
}

unsigned char ByteOf(std::size_t i) {
  return static_cast<unsigned char>(i + 1);
}

}  // namespace

LivingModule::LivingModule() {
  EXPECT_EQ(PXL_Birth(0), PXL_Err_NONE);
}

LivingModule::~LivingModule() {
  EXPECT_EQ(PXLp_G.worldCount, 0);
  EXPECT_EQ(PXL_Death(), PXL_Err_NONE);
}

std::int32_t TryToMake(std::int32_t depth, int width, int height, std::uint32_t flags,
                       PXL_WorldHandle& world) {
  const Rect rect = {0, 0, static_cast<std::int16_t>(height), static_cast<std::int16_t>(width)};
  return PXL_NewWorld(nullptr, flags, &rect, depth, 0, nullptr, &world);
}

bool Fill(PXL_WorldHandle world, unsigned char byte) {
  if (PXL_LockPixels(0, world, nullptr) != PXL_Err_NONE) return false;
  std::memset(PXLp_GetPixBaseAddr(world), byte, BytesOf(world));
  PXL_UnlockPixels(world);
  return true;
}

bool Holds(PXL_WorldHandle world, unsigned char byte) {
  if (PXL_LockPixels(0, world, nullptr) != PXL_Err_NONE) return false;
  const auto* first = static_cast<const unsigned char*>(PXLp_GetPixBaseAddr(world));
  const bool holds = std::all_of(first, first + BytesOf(world),
                                 [byte](unsigned char found) { return found == byte; });
  PXL_UnlockPixels(world);
  return holds;
}

Pile::~Pile() {
  while (!worlds_.empty()) DropOne();
}

std::int32_t Pile::Add() {
  PXL_WorldHandle world = nullptr;
  const std::int32_t status = TryToMake(depth_, side_, side_, flags_, world);
  EXPECT_EQ(world == nullptr, status != PXL_Err_NONE);
  if (status != PXL_Err_NONE) return status;
  EXPECT_TRUE(Fill(world, ByteOf(worlds_.size())));
  worlds_.push_back(world);
  return 0;
}

std::int32_t Pile::AddUntilRefused(std::size_t most) {
  // The list must not need memory when there is none.
  worlds_.reserve(most);
  while (worlds_.size() < most) {
    if (const std::int32_t status = Add(); status != PXL_Err_NONE) return status;
  }
  return 0;
}

void Pile::DropOne() {
  EXPECT_EQ(PXL_DisposeWorld(worlds_.back()), PXL_Err_NONE);
  worlds_.pop_back();
}

bool Pile::AllHold() const {
  for (std::size_t i = 0; i < worlds_.size(); ++i) {
    if (!Holds(worlds_[i], ByteOf(i))) return false;
  }
  return true;
}
