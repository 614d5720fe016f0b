#include <gmock/gmock.h>

#include "TRC_host.h"
#include "group_files.h"
#include "memory_fixture.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr std::uint64_t kMiB = 1 << 20;
// More than any system maps, and less than what overflows.
constexpr std::uint64_t kBeyondAll = std::uint64_t{1} << 47;

K_MemoryRefusals Refusals() {
  K_MemoryRefusals refusals{};
  K_GetMemoryRefusals(&refusals);
  return refusals;
}

class Refused : public MemoryTest {
 protected:
  Refused() {
    group_.Read();
    TRC_SetSink(Keep, &log_);
    TRC_SetLevel(TRC_Level_NOTE);
  }
  ~Refused() override {
    TRC_SetLevel(TRC_Level_PROBLEM);
    TRC_SetSink(nullptr, nullptr);
  }

  // Without a limit, whatever the machine's own are.
  const GroupFiles group_{"/group"};
  const K_MemoryRefusals before_ = Refusals();
  std::vector<std::string> log_;

 private:
  // Asks K something, as a sink may.
  static void Keep(std::int32_t, const char* category, const char* event, const char* text,
                   void* context) {
    K_CountHandles();
    Statistics();
    static_cast<std::vector<std::string>*>(context)->push_back(std::string(category) + " " + event +
                                                               ": " + text);
  }
};

TEST_F(Refused, ByTheBudget) {
  AllowMore(kMiB);
  EXPECT_EQ(NewBlock(2 * kMiB), nullptr);
  EXPECT_EQ(Refusals().last, K_MemoryLimit_BUDGET);
  EXPECT_EQ(Refusals().lastBytes, 2 * kMiB);
  EXPECT_EQ(Refusals().byBudget, before_.byBudget + 1);
  EXPECT_THAT(log_,
              ElementsAre("K refusal: the application's memory budget refuses 2097152 bytes; 0 are "
                          "in use, the budget is 1048576"));
}

TEST_F(Refused, ByTheGroup) {
  group_.Write("/group", "memory.max", kMiB);
  group_.Read();
  EXPECT_EQ(K_NewHandle(2 * kMiB), nullptr);
  EXPECT_EQ(Refusals().last, K_MemoryLimit_GROUP);
  EXPECT_EQ(Refusals().byGroup, before_.byGroup + 1);
  EXPECT_EQ(Refusals().byBudget, before_.byBudget);
  EXPECT_THAT(log_, ElementsAre(HasSubstr("the memory limit of the process group refuses")));
}

TEST_F(Refused, ByTheSystemForABlock) {
  EXPECT_EQ(NewBlock(kBeyondAll), nullptr);
  EXPECT_EQ(Refusals().last, K_MemoryLimit_SYSTEM);
  EXPECT_EQ(Refusals().lastBytes, kBeyondAll);
  EXPECT_EQ(Refusals().bySystem, before_.bySystem + 1);
  EXPECT_THAT(log_, ElementsAre(AllOf(HasSubstr("the system refuses"), HasSubstr("is 0"))));
}

TEST_F(Refused, ByTheSystemForSizesBeyondAllSystems) {
  EXPECT_EQ(NewBlock(~std::uint64_t{0}), nullptr);
  EXPECT_EQ(K_NewHandle(~std::uint64_t{0}), nullptr);
  EXPECT_EQ(Refusals().bySystem, before_.bySystem + 2);
}

TEST_F(Refused, NotWhenMemoryIsThere) {
  K_FreeRecycledPtr(NewBlock(kMiB));
  K_FreeHandle(NewHandle(100));
  EXPECT_EQ(Refusals().byBudget, before_.byBudget);
  EXPECT_EQ(Refusals().byGroup, before_.byGroup);
  EXPECT_EQ(Refusals().bySystem, before_.bySystem);
  EXPECT_THAT(log_, IsEmpty());
}

TEST_F(Refused, SilentlyBelowTheLogsLevel) {
  TRC_SetLevel(TRC_Level_PROBLEM);
  EXPECT_EQ(NewBlock(kBeyondAll), nullptr);
  EXPECT_EQ(Refusals().bySystem, before_.bySystem + 1);
  EXPECT_THAT(log_, IsEmpty());
}

}  // namespace
