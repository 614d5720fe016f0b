// Patterns in and around the blocks of the pool that reveal stray writes.
#include "host/K/pool/block_checks.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>

#include "TRC_host.h"
#include "host/K/reports/report_sink.h"
#include "host/K/system/virtual_memory.h"
#include "host/K/texts/mac_roman.h"

namespace k {
namespace {

// A range of memory whose bytes should all have the same value.
struct Zone {
  char* begin;
  char* end;
};

Zone FrontGuard(const K_RecycledPtr& block) {
  return {block.base - PageSize(), block.base};
}

Zone RearGuard(const K_RecycledPtr& block) {
  return {block.base + block.size, block.base + block.shape.capacity + PageSize()};
}

Zone Whole(const K_RecycledPtr& block) {
  return {block.base, block.base + block.shape.capacity};
}

bool HasGuards(const K_RecycledPtr& block) {
  return (block.shape.margins & K_PoolCheck_GUARDS) != 0;
}

void Fill(const Zone& zone, int pattern) {
  std::memset(zone.begin, pattern, static_cast<std::size_t>(zone.end - zone.begin));
}

// The first byte that differs from the pattern; the end of the zone when none does.
const char* FindDamage(const Zone& zone, int pattern) {
  const char expected = static_cast<char>(pattern);
  const auto size = static_cast<std::size_t>(zone.end - zone.begin);
  // Comparing each byte with the next is fast, and there is rarely any damage.
  if (*zone.begin == expected && std::memcmp(zone.begin, zone.begin + 1, size - 1) == 0) {
    return zone.end;
  }
  return std::find_if(zone.begin, zone.end, [=](char byte) { return byte != expected; });
}

void ReportDamage(const K_RecycledPtr& block, std::uint32_t code, const char* what,
                  const char* where) {
  try {
    char place[160];
    std::snprintf(place, sizeof place,
                  " (%" PRIu64 " bytes, owner 0x%" PRIx32 ") was written %s: byte %td", block.size,
                  block.ownerCode, what, where - block.base);
    Report(code, K_ReportClass_ERROR, 0, "recycled pointer " + MacRomanToUTF8(block.label) + place);
  } catch (const std::bad_alloc&) {
    TRC_Log(TRC_Level_PROBLEM, "K", "pool",
            "a recycled pointer was written outside its bounds or after it was freed");
  }
}

void CheckZone(const K_RecycledPtr& block, const Zone& guard, const char* what) {
  const char* damage = FindDamage(guard, K_PoolGuardPattern);
  if (damage != guard.end) ReportDamage(block, K_Code_GUARD, what, damage);
}

}  // namespace

void WriteGuards(const K_RecycledPtr& block) {
  if (!HasGuards(block)) return;
  Fill(FrontGuard(block), K_PoolGuardPattern);
  Fill(RearGuard(block), K_PoolGuardPattern);
}

void CheckGuards(const K_RecycledPtr& block) {
  if (!HasGuards(block)) return;
  CheckZone(block, FrontGuard(block), "before its start");
  CheckZone(block, RearGuard(block), "past its end");
}

void FillFreed(K_RecycledPtr& block) {
  Fill(Whole(block), K_PoolFreedPattern);
  block.filled = true;
}

void CheckFilled(K_RecycledPtr& block) {
  if (!block.filled) return;
  block.filled = false;
  const Zone zone = Whole(block);
  const char* damage = FindDamage(zone, K_PoolFreedPattern);
  if (damage != zone.end) ReportDamage(block, K_Code_STALE, "after it was freed", damage);
}

}  // namespace k
