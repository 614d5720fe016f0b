// Makes Worlds until one is refused.
#ifndef TESTS_SYSTEM_LIMITS_WORLDS_H
#define TESTS_SYSTEM_LIMITS_WORLDS_H

#include <cstdint>
#include <vector>

#include "PXL.h"
#include "tests/support/host/kept_reports.h"
#include "tests/support/host/leak_check.h"

constexpr std::uint32_t kInFrame = PXL_Flag_NO_PLATFORM;
constexpr std::uint32_t kInMappedFile = PXL_Flag_NO_PLATFORM | PXL_Flag_DEFERRED | PXL_Flag_MAPPED;

// Reports that are kept without memory, which may lack.
constexpr std::size_t kReportsWithoutMemory = 16;

// The module alive; at the end it must have released all that it allocated.
class LivingModule {
 public:
  LivingModule();
  LivingModule(const LivingModule&) = delete;
  LivingModule& operator=(const LivingModule&) = delete;
  ~LivingModule();

 private:
  LeakCheck leaks_;
};

// The status of making a World; its handle goes to `world`, null if there is none.
std::int32_t TryToMake(std::int32_t depth, int width, int height, std::uint32_t flags,
                       PXL_WorldHandle& world);

// Fills all pixels with the byte; whether they could be locked.
bool Fill(PXL_WorldHandle world, unsigned char byte);
// Whether all pixels can be locked and hold the byte.
bool Holds(PXL_WorldHandle world, unsigned char byte);

// Worlds of one kind, each filled with a byte of its own.
class Pile {
 public:
  Pile(std::int32_t depth, int side, std::uint32_t flags)
      : depth_(depth), side_(side), flags_(flags) {}
  Pile(const Pile&) = delete;
  Pile& operator=(const Pile&) = delete;
  ~Pile();

  // The status of one more.
  std::int32_t Add();
  // The status that ends it, 0 if `most` could be had.
  std::int32_t AddUntilRefused(std::size_t most);
  void DropOne();

  std::size_t Count() const { return worlds_.size(); }
  bool AllHold() const;

 private:
  std::int32_t depth_;
  int side_;
  std::uint32_t flags_;
  std::vector<PXL_WorldHandle> worlds_;
};

#endif
