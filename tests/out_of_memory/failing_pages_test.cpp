// Each call to the system for the pages of K's pool failing, alone and with the
// call after it.
#include <sys/mman.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <map>

#include "host/K/system/system_calls_posix.h"
#include "tests/out_of_memory/stage.h"

namespace {

struct Failure {
  std::size_t nth;  // of all calls, from 1
  int error;
};
std::vector<Failure> asked;
std::vector<std::string> calls;
std::size_t failures = 0;
std::int64_t mappedBytes = 0;

bool Fails(const char* name) {
  calls.emplace_back(name);
  for (const Failure& failure : asked) {
    if (failure.nth != calls.size()) continue;
    ++failures;
    errno = failure.error;
    return true;
  }
  return false;
}

void Begin(const std::vector<Failure>& wanted) {
  asked = wanted;
  calls.clear();
  failures = 0;
}

}  // namespace

namespace k::system {

void* Map(std::size_t size) {
  if (Fails("mmap")) return MAP_FAILED;
  void* base = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (base != MAP_FAILED) mappedBytes += static_cast<std::int64_t>(size);
  return base;
}

int Unmap(void* base, std::size_t size) {
  if (Fails("munmap")) return -1;
  mappedBytes -= static_cast<std::int64_t>(size);
  return munmap(base, size);
}

int Protect(void* base, std::size_t size, int protection) {
  return Fails("mprotect") ? -1 : mprotect(base, size, protection);
}

int Advise(void* base, std::size_t size, int advice) {
  return Fails("madvise") ? -1 : madvise(base, size, advice);
}

}  // namespace k::system

namespace {

const std::map<std::string, std::vector<int>> ERRORS = {{"mmap", {ENOMEM, EAGAIN}},
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
const ::testing::Environment* const PRINTED_NUMBERS =
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

// A block is taken, kept, taken again, and given back with another.
FailingPages::Calls FailingPages::Live(const std::vector<Failure>& wanted) {
  const std::uint64_t used = UsedMemory();
  Begin(wanted);
  void* first = Take();
  K_FreeRecycledPtr(first);
  first = Take();
  void* second = Take();
  numbers.refusals += (first == nullptr ? 1 : 0) + (second == nullptr ? 1 : 0);
  K_FreeRecycledPtr(first);
  K_FreeRecycledPtr(second);
  EmptyCaches();
  Calls made = calls;
  EXPECT_EQ(failures, wanted.size());

  Begin({});
  EXPECT_EQ(UsedMemory(), used);
  // What the system would not take goes with the next block, which there is.
  void* next = Take();
  EXPECT_NE(next, nullptr);
  K_FreeRecycledPtr(next);
  EmptyCaches();
  EXPECT_EQ(mappedBytes, 0);
  EXPECT_EQ(CurrentLevels().poolBlocks, 0U);
  return made;
}

std::vector<Failure> FailuresOf(const std::vector<std::string>& made, std::size_t nth) {
  std::vector<Failure> all;
  if (nth > made.size()) return all;
  for (const int error : ERRORS.at(made[nth - 1])) all.push_back({nth, error});
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
    ::testing::Values(Shape{"ASmallBlock", 1000, 0}, Shape{"ALargeBlock", 2200000, 0},
                      Shape{"AGuardedBlock", 100000, K_PoolCheck_GUARDS},
                      Shape{"AFencedBlock", 100000, K_PoolCheck_FENCES},
                      Shape{"ACheckedLargeBlock", 2200000,
                            K_PoolCheck_GUARDS | K_PoolCheck_FENCES | K_PoolCheck_FILL}),
    [](const auto& tested) { return tested.param.name; });

}  // namespace
