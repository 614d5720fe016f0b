#include "tests/system_limits/worlds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

std::uint64_t LivePoolBlocks() {
  K_PoolStatistics statistics;
  K_GetPoolStatistics(&statistics);
  return statistics.liveBlocks;
}

std::size_t BytesOf(PXL_WorldHandle world) {
  const PXL_World& record = **world;
  return static_cast<std::size_t>(record.pixels.rowBytes) * static_cast<std::size_t>(record.height);
}

unsigned char ByteOf(std::size_t i) {
  return static_cast<unsigned char>(i + 1);
}

}  // namespace

void Reports::Take(const K_Report* report, void* reports) {
  auto& kept = *static_cast<Reports*>(reports);
  ++kept.count_;
  kept.code_ = report->code;
  std::snprintf(kept.text_.data(), kept.text_.size(), "%s", report->text);
}

LivingModule::LivingModule() : handles_(K_CountHandles()), blocks_(LivePoolBlocks()) {
  K_GetMemoryTotals(&totals_);
  EXPECT_EQ(PXL_Birth(0), 0);
}

LivingModule::~LivingModule() {
  EXPECT_EQ(PXLp_G.worldCount, 0);
  EXPECT_EQ(PXL_Death(), 0);
  K_MemoryTotals totals;
  K_GetMemoryTotals(&totals);
  EXPECT_EQ(K_CountHandles(), handles_);
  EXPECT_EQ(LivePoolBlocks(), blocks_);
  EXPECT_EQ(totals.application, totals_.application);
  EXPECT_EQ(totals.system, totals_.system);
}

std::int32_t TryToMake(std::int32_t depth, int width, int height, std::uint32_t flags,
                       PXL_WorldHandle& world) {
  const Rect rect = {0, 0, static_cast<std::int16_t>(height), static_cast<std::int16_t>(width)};
  return PXL_NewWorld(nullptr, flags, &rect, depth, 0, nullptr, &world);
}

bool Fill(PXL_WorldHandle world, unsigned char byte) {
  if (PXL_LockPixels(0, world, nullptr) != 0) return false;
  std::memset(PXLp_GetPixBaseAddr(world), byte, BytesOf(world));
  PXL_UnlockPixels(world);
  return true;
}

bool Holds(PXL_WorldHandle world, unsigned char byte) {
  if (PXL_LockPixels(0, world, nullptr) != 0) return false;
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
  EXPECT_EQ(world == nullptr, status != 0);
  if (status != 0) return status;
  EXPECT_TRUE(Fill(world, ByteOf(worlds_.size())));
  worlds_.push_back(world);
  return 0;
}

std::int32_t Pile::AddUntilRefused(std::size_t most) {
  // What is kept of them must not need memory when there is none.
  worlds_.reserve(most);
  while (worlds_.size() < most) {
    if (const std::int32_t status = Add(); status != 0) return status;
  }
  return 0;
}

void Pile::DropOne() {
  EXPECT_EQ(PXL_DisposeWorld(worlds_.back()), 0);
  worlds_.pop_back();
}

bool Pile::AllHold() const {
  for (std::size_t i = 0; i < worlds_.size(); ++i) {
    if (!Holds(worlds_[i], ByteOf(i))) return false;
  }
  return true;
}
