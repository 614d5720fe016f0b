// Each call to the system for the pages of K's pool failing, alone and with the
// call after it.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>

#include "tests/out_of_memory/stage.h"
#include "tests/support/failing_system_calls/page_calls_posix.h"

using failing_system_calls::Failure;

namespace {

const std::map<std::string, std::vector<int>> kErrors = {{"mmap", {ENOMEM, EAGAIN}},
                                                         {"munmap", {ENOMEM}},
                                                         {"mprotect", {ENOMEM, EACCES}},
                                                         {"madvise", {EINVAL, ENOMEM, EAGAIN}}};

// How much was tried, printed at the end.
struct Numbers {
  int calls = 0;
  int pairs = 0;
  int refusals = 0;
};
Numbers numbers;

class PrintedNumbers : public ::testing::Environment {
  void TearDown() override {
    std::printf("%d calls for pages failed, and %d pairs of neighbours; %d blocks were refused\n",
                numbers.calls, numbers.pairs, numbers.refusals);
  }
};
const ::testing::Environment* const kPrintedNumbers =
    ::testing::AddGlobalTestEnvironment(new PrintedNumbers);

std::uint64_t UsedMemory() {
  K_MemoryBudget budget;
  K_GetMemoryBudgetInForce(&budget);
  return budget.used;
}

// Without large pages, with them, and with their margins.
struct Shape {
  const char* name;
  std::uint64_t size;
  std::uint32_t checks;
};

std::ostream& operator<<(std::ostream& stream, const Shape& shape) {
  return stream << shape.name;
}

class FailingPages : public ::testing::TestWithParam<Shape> {
 protected:
  using Calls = std::vector<std::string>;

  FailingPages() { K_SetPoolChecks(GetParam().checks); }
  ~FailingPages() override { K_SetPoolChecks(0); }

  static Calls Live(const std::vector<Failure>& wanted);
  static void* Take();
};

// A block that can be written to from end to end, or null.
void* FailingPages::Take() {
  void* block = K_GetRecycledPtrBaseAddress(K_AllocateRecycledPtr(1, "failing", GetParam().size));
  if (block != nullptr) {
    static_cast<char*>(block)[0] = 0x5A;
    static_cast<char*>(block)[GetParam().size - 1] = 0x5A;
  }
  return block;
}

// A block is taken, kept, taken again, and freed with another one.
FailingPages::Calls FailingPages::Live(const std::vector<Failure>& wanted) {
  const std::uint64_t used = UsedMemory();
  failing_system_calls::Begin(wanted);
  void* first = Take();
  K_FreeRecycledPtr(first);
  first = Take();
  void* second = Take();
  numbers.refusals += (first == nullptr ? 1 : 0) + (second == nullptr ? 1 : 0);
  K_FreeRecycledPtr(first);
  K_FreeRecycledPtr(second);
  EmptyCaches();
  Calls made = failing_system_calls::Calls();
  EXPECT_EQ(failing_system_calls::Failures(), wanted.size());

  failing_system_calls::Begin({});
  EXPECT_EQ(UsedMemory(), used);
  // The next block can be allocated, and releases the pages that the system did
  // not take back.
  void* next = Take();
  EXPECT_NE(next, nullptr);
  K_FreeRecycledPtr(next);
  EmptyCaches();
  EXPECT_EQ(failing_system_calls::MappedBytes(), 0);
  EXPECT_EQ(CurrentHoldings().poolBlocks, 0U);
  return made;
}

std::vector<Failure> FailuresOf(const std::vector<std::string>& made, std::size_t nth) {
  std::vector<Failure> all;
  if (nth > made.size()) return all;
  for (const int error : kErrors.at(made[nth - 1])) all.push_back({nth, error});
  return all;
}

TEST_P(FailingPages, LoseNothing) {
  const Calls undisturbed = Live({});
  ASSERT_FALSE(undisturbed.empty());
  for (std::size_t nth = 1; nth <= undisturbed.size(); ++nth) {
    for (const Failure& first : FailuresOf(undisturbed, nth)) {
      SCOPED_TRACE(undisturbed[nth - 1] + ": " + std::strerror(first.error));
      const Calls disturbed = Live({first});
      ++numbers.calls;
      for (const Failure& second : FailuresOf(disturbed, nth + 1)) {
        SCOPED_TRACE("and then " + disturbed[nth] + ": " + std::strerror(second.error));
        Live({first, second});
        ++numbers.pairs;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    Of, FailingPages,
    ::testing::Values(Shape{.name = "ASmallBlock", .size = 1000, .checks = 0},
                      Shape{.name = "ALargeBlock", .size = 2200000, .checks = 0},
                      Shape{.name = "AGuardedBlock", .size = 100000, .checks = K_PoolCheck_GUARDS},
                      Shape{.name = "AFencedBlock", .size = 100000, .checks = K_PoolCheck_FENCES},
                      Shape{.name = "ACheckedLargeBlock",
                            .size = 2200000,
                            .checks = K_PoolCheck_GUARDS | K_PoolCheck_FENCES | K_PoolCheck_FILL}),
    [](const auto& tested) { return tested.param.name; });

}  // namespace
