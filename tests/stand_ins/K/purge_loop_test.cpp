// Tests of the purge loop and the purgers.
#include <stdexcept>
#include <vector>

#include "tests/stand_ins/K/memory_fixture.h"

namespace {

constexpr std::uint64_t kMiB = 1 << 20;

// The memory that could still be freed at an attempt.
struct Sight {
  std::uint64_t keptBlocks;
  bool purgeable;
  int purges;
  bool operator==(const Sight&) const = default;
};

// An application purger that frees memory a fixed number of times.
struct Supply {
  int times = 0;
  int calls = 0;
  std::uint64_t asked = 0;
};

std::uint64_t GiveFromSupply(std::uint64_t bytesNeeded, void* context) {
  auto* supply = static_cast<Supply*>(context);
  ++supply->calls;
  supply->asked = bytesNeeded;
  return supply->times-- > 0 ? kMiB : 0;
}

std::int32_t Fail(void*, std::uint8_t* done) {
  *done = 0;
  return 0;
}

class PurgeLoop : public MemoryTest {
 protected:
  void AddSupply(Supply* supply) {
    ASSERT_EQ(K_AddPurger(GiveFromSupply, supply), 1);
    supplies_.push_back(supply);
  }
  ~PurgeLoop() override {
    for (Supply* supply : supplies_) K_RemovePurger(GiveFromSupply, supply);
  }

 private:
  std::vector<Supply*> supplies_;
};

struct Watcher {
  Handle purgeable;
  Supply* supply;
  std::vector<Sight> sights;
};

std::int32_t WatchAndFail(void* context, std::uint8_t* done) {
  auto* watcher = static_cast<Watcher*>(context);
  K_PoolStatistics statistics{};
  K_GetPoolStatistics(&statistics);
  watcher->sights.push_back(
      {statistics.keptBlocks, *watcher->purgeable != nullptr, watcher->supply->calls});
  *done = 0;
  return 0;
}

TEST_F(PurgeLoop, ReturnsTheResultOfAnAttemptThatIsDone) {
  const auto succeed = [](void* context, std::uint8_t* done) {
    *done = 1;
    return *static_cast<std::int32_t*>(context);
  };
  for (std::int32_t code : {0, 17, -108}) EXPECT_EQ(K_PurgeLoop(1, succeed, &code, 1), code);
}

TEST_F(PurgeLoop, FreesTheCheapestFirstAndEndsWhenARoundFreedNothing) {
  Supply supply{.times = 1};
  AddSupply(&supply);
  void* a = NewBlock(kMiB);
  void* b = NewBlock(kMiB);
  K_FreeRecycledPtr(a);
  K_FreeRecycledPtr(b);
  Watcher watcher{NewHandle(100), &supply, {}};
  K_SetHandlePurgeable(watcher.purgeable, 1);
  EXPECT_EQ(K_PurgeLoop(1, WatchAndFail, &watcher, 1), 4);
  const std::vector<Sight> expected = {
      {2, true, 0}, {1, true, 0}, {0, true, 0}, {0, false, 0}, {0, false, 1}};
  EXPECT_EQ(watcher.sights, expected);
  EXPECT_EQ(supply.calls, 2);
  K_FreeHandle(watcher.purgeable);
}

TEST_F(PurgeLoop, FreesWhatIsNeededInOneRound) {
  Supply supply{.times = 1};
  AddSupply(&supply);
  K_FreeRecycledPtr(NewBlock(kMiB));
  Watcher watcher{NewHandle(100), &supply, {}};
  K_SetHandlePurgeable(watcher.purgeable, 1);
  EXPECT_EQ(K_PurgeLoop(2 * kMiB, WatchAndFail, &watcher, 1), 4);
  const std::vector<Sight> expected = {{1, true, 0}, {0, false, 1}};
  EXPECT_EQ(watcher.sights, expected);
  K_FreeHandle(watcher.purgeable);
}

TEST_F(PurgeLoop, AsksForTheRest) {
  Supply supply;
  AddSupply(&supply);
  const Handle handle = NewHandle(100);
  K_SetHandlePurgeable(handle, 1);
  K_PurgeLoop(1000, Fail, nullptr, 1);
  EXPECT_EQ(supply.calls, 2);
  EXPECT_EQ(supply.asked, 1000U);
  K_FreeHandle(handle);
}

TEST_F(PurgeLoop, SparesLockedHandles) {
  const Handle handle = NewHandle(100);
  K_SetHandlePurgeable(handle, 1);
  K_LockHandle(handle);
  EXPECT_EQ(K_PurgeLoop(1, Fail, nullptr, 1), 4);
  EXPECT_NE(*handle, nullptr);
  K_FreeHandle(handle);
}

TEST_F(PurgeLoop, TriesOnceWhenThereIsNothingToFree) {
  int tries = 0;
  const auto count = [](void* context, std::uint8_t* done) {
    ++*static_cast<int*>(context);
    *done = 0;
    return std::int32_t{0};
  };
  EXPECT_EQ(K_PurgeLoop(0, count, &tries, 0), 4);
  EXPECT_EQ(tries, 1);
}

TEST_F(PurgeLoop, LetsAnAttemptSucceedUnderTheBudget) {
  AllowMore(kMiB);
  K_FreeRecycledPtr(NewBlock(kMiB));
  struct Request {
    void* base = nullptr;
  } request;
  const auto allocate = [](void* context, std::uint8_t* done) {
    auto* base = K_GetRecycledPtrBaseAddress(K_AllocateRecycledPtr(1, "t", kMiB / 2));
    static_cast<Request*>(context)->base = base;
    *done = base != nullptr ? 1 : 0;
    return std::int32_t{0};
  };
  EXPECT_EQ(K_PurgeLoop(kMiB / 2, allocate, &request, 1), 0);
  EXPECT_NE(request.base, nullptr);
  K_FreeRecycledPtr(request.base);
}

TEST_F(PurgeLoop, LetsExceptionsPass) {
  const auto fail = [](void*, std::uint8_t*) -> std::int32_t {
    throw std::runtime_error("attempt");
  };
  EXPECT_THROW(K_PurgeLoop(1, fail, nullptr, 1), std::runtime_error);
}

std::uint64_t ThrowOnce(std::uint64_t, void* context) {
  if (++*static_cast<int*>(context) == 1) throw std::runtime_error("purger");
  return 0;
}

TEST_F(PurgeLoop, RunsPurgersAgainAfterOneThrew) {
  int calls = 0;
  K_AddPurger(ThrowOnce, &calls);
  EXPECT_THROW(K_PurgeLoop(1, Fail, nullptr, 1), std::runtime_error);
  EXPECT_EQ(K_PurgeLoop(1, Fail, nullptr, 1), 4);
  EXPECT_EQ(calls, 2);
  K_RemovePurger(ThrowOnce, &calls);
}

std::uint64_t PurgeInside(std::uint64_t, void* context) {
  ++*static_cast<int*>(context);
  EXPECT_EQ(K_PurgeLoop(1, Fail, nullptr, 1), 4);
  return 0;
}

TEST_F(PurgeLoop, DoesNotCallPurgersFromAPurger) {
  int calls = 0;
  K_AddPurger(PurgeInside, &calls);
  EXPECT_EQ(K_PurgeLoop(1, Fail, nullptr, 1), 4);
  EXPECT_EQ(calls, 1);
  K_RemovePurger(PurgeInside, &calls);
}

TEST_F(PurgeLoop, AsksPurgersInTheirOrderUntilEnoughIsFree) {
  Supply first{.times = 1};
  Supply second{.times = 1};
  AddSupply(&first);
  AddSupply(&second);
  const auto once = [](void* context, std::uint8_t* done) {
    *done = ++*static_cast<int*>(context) == 2 ? 1 : 0;
    return std::int32_t{0};
  };
  int tries = 0;
  EXPECT_EQ(K_PurgeLoop(kMiB, once, &tries, 1), 0);
  EXPECT_EQ(first.calls, 1);
  EXPECT_EQ(second.calls, 0);
}

TEST_F(PurgeLoop, ForgetsRemovedPurgers) {
  Supply supply{.times = 1};
  K_AddPurger(GiveFromSupply, &supply);
  K_RemovePurger(GiveFromSupply, &supply);
  K_RemovePurger(GiveFromSupply, &supply);
  K_PurgeLoop(1, Fail, nullptr, 1);
  EXPECT_EQ(supply.calls, 0);
}

TEST_F(PurgeLoop, HasPlacesForSoManyPurgers) {
  EXPECT_EQ(K_AddPurger(nullptr, nullptr), 0);
  Supply supply;
  for (int i = 0; i < K_MostPurgers; ++i) EXPECT_EQ(K_AddPurger(GiveFromSupply, &supply), 1);
  EXPECT_EQ(K_AddPurger(GiveFromSupply, &supply), 0);
  K_PurgeLoop(1, Fail, nullptr, 1);
  EXPECT_EQ(supply.calls, K_MostPurgers);
  for (int i = 0; i < K_MostPurgers; ++i) K_RemovePurger(GiveFromSupply, &supply);
}

}  // namespace
