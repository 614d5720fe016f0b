// Worlds made until there are no more to be had, and what is told then.
#ifndef TESTS_SYSTEM_LIMITS_WORLDS_H
#define TESTS_SYSTEM_LIMITS_WORLDS_H

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "K_host.h"
#include "PXL.h"

constexpr std::uint32_t kInFrame = PXL_Flag_NO_PLATFORM;
constexpr std::uint32_t kInMappedFile = PXL_Flag_NO_PLATFORM | PXL_Flag_DEFERRED | PXL_Flag_MAPPED;

// The last report, kept without memory, of which there may be none.
class Reports {
 public:
  Reports() { K_SetReportSink(Take, this); }
  Reports(const Reports&) = delete;
  Reports& operator=(const Reports&) = delete;
  ~Reports() { K_SetReportSink(nullptr, nullptr); }

  int Count() const { return count_; }
  std::uint32_t Code() const { return code_; }
  std::string Text() const { return text_.data(); }
  void Forget() { count_ = 0; }

 private:
  static void Take(const K_Report* report, void* reports);

  int count_ = 0;
  std::uint32_t code_ = 0;
  std::array<char, 1024> text_{};
};

// The module alive, which at the end must have given back all that it took.
class LivingModule {
 public:
  LivingModule();
  LivingModule(const LivingModule&) = delete;
  LivingModule& operator=(const LivingModule&) = delete;
  ~LivingModule();

 private:
  std::uint64_t handles_;
  std::uint64_t blocks_;
  K_MemoryTotals totals_{};
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
