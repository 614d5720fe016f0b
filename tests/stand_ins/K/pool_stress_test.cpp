// All calls of the pool at the same time on many threads. Most useful with the
// thread sanitizer.
#include <gmock/gmock.h>

#include <cstring>
#include <random>
#include <thread>
#include <vector>

#include "tests/stand_ins/K/memory_fixture.h"
#include "tests/support/host/crew.h"

using testing::Each;
using testing::IsEmpty;

namespace {

constexpr std::uint64_t kMiB = 1 << 20;
constexpr unsigned kUsers = 4;
constexpr int kRounds = 400;

// Writes a mark at both ends of a block and checks that it stays. A refused
// allocation is not a failure.
bool IsUndisturbed(std::uint64_t size, int mark) {
  auto* base = static_cast<char*>(K_GetRecycledPtrBaseAddress(K_AllocateRecycledPtr(1, "t", size)));
  if (base == nullptr) return true;
  const std::string expected(16, static_cast<char>(mark));
  std::memset(base, mark, 16);
  std::memset(base + size - 16, mark, 16);
  std::this_thread::yield();
  const bool good =
      std::string(base, 16) == expected && std::string(base + size - 16, 16) == expected;
  K_FreeRecycledPtr(base);
  return good;
}

int CountUndisturbed(unsigned seed) {
  std::mt19937 random(seed);
  int good = 0;
  for (int round = 0; round < kRounds; ++round) {
    const std::uint64_t size = 16 + random() % (round % 20 == 0 ? 4 * kMiB : 100000);
    good += IsUndisturbed(size, static_cast<int>(seed * 50) + round % 50) ? 1 : 0;
  }
  return good;
}

class PoolUnderStress : public MemoryTest {
 protected:
  ~PoolUnderStress() override {
    K_SetPoolChecks(0);
    K_SetTimeLine(0);
  }

  void RunUsers() {
    std::vector<int> good(kUsers);
    std::vector<std::thread> users;
    for (unsigned t = 0; t < kUsers; ++t) {
      users.emplace_back([t, &good] { good[t] = CountUndisturbed(t); });
    }
    for (std::thread& user : users) user.join();
    EXPECT_THAT(good, Each(kRounds));
    EXPECT_THAT(reports_.Take(), IsEmpty());
    EXPECT_EQ(Statistics().liveBytes, 0U);
  }
};

TEST_F(PoolUnderStress, HandsEachBlockToOneUserOnly) {
  RunUsers();
  EXPECT_GT(Statistics().hits, 0U);
}

TEST_F(PoolUnderStress, HandsEachBlockToOneUserOnlyWithAllChecks) {
  K_SetPoolChecks(K_PoolCheck_GUARDS | K_PoolCheck_FENCES | K_PoolCheck_FILL);
  RunUsers();
}

TEST_F(PoolUnderStress, HoldsWhileItsLimitAndItsChecksChange) {
  {
    const Meddler limits([](unsigned n) { K_SetPoolLimit((n % 4) * kMiB / 4); });
    const Meddler checks([](unsigned n) { K_SetPoolChecks(n / 8 % 8); });
    RunUsers();
  }
  K_SetPoolLimit(kMiB);
  EXPECT_LE(Statistics().keptBytes, kMiB);
}

TEST_F(PoolUnderStress, HoldsWhileMemoryIsShortAndPurged) {
  const Meddler purges([](unsigned) { K_PurgeHandlesAndCompact(); });
  const Meddler budgets([](unsigned n) { K_SetMemoryBudget(n % 3 == 0 ? 100000 : 0); });
  const Meddler handles([](unsigned n) { K_FreeHandle(K_NewHandle(n % 1000)); });
  RunUsers();
}

TEST_F(PoolUnderStress, HoldsWhileItIsWatched) {
  const Meddler switches([](unsigned n) { K_SetTimeLine(n % 10 != 0 ? 1 : 0); });
  const Meddler readers([](unsigned) {
    std::vector<K_TimeLineSample> samples(K_MostTimeLineSamples);
    K_ReadTimeLine(samples.data(), samples.size());
    K_MemoryRefusals refusals;
    K_GetMemoryRefusals(&refusals);
    K_MemoryBudget budget;
    K_GetMemoryBudgetInForce(&budget);
    K_IsRecycledPtr(samples.data());
    Statistics();
  });
  RunUsers();
}

}  // namespace
