// Compares the module with the model over long random sequences of calls.
#include <cstdio>
#include <cstdlib>

#include "tests/model/player.h"

namespace {

constexpr int kLength = 80;
constexpr int kUsualSequences = 4000;

// More of them on request, or others than usual.
int Number(const char* variable, int usual) {
  const char* text = std::getenv(variable);
  return text != nullptr ? static_cast<int>(std::strtol(text, nullptr, 10)) : usual;
}

bool IsLockThenUnlock(const Sequence& sequence) {
  bool locked = false;
  for (const Step& step : sequence) {
    if (step.act == Act::Unlock && locked) return true;
    locked = locked || step.act == Act::Lock;
  }
  return false;
}

}  // namespace

class ModelOfAWorld : public Player {
 protected:
  void Explain(std::uint32_t seed, const Sequence& sequence, Memory memory) {
    const Sequence shortest =
        Shortest(sequence, [&](const Sequence& part) { return !Play(part, memory).empty(); });
    FAIL() << "seed " << seed << ", frames from the " << (memory == Memory::Pool ? "pool" : "heap")
           << ", shortest sequence:\n"
           << Described(shortest) << Play(shortest, memory);
  }
};

TEST_F(ModelOfAWorld, AgreesWithTheModule) {
  const int sequences = Number("PXL_MODEL_SEQUENCES", kUsualSequences);
  const auto first = static_cast<std::uint32_t>(Number("PXL_MODEL_FIRST_SEED", 1));
  for (int i = 0; i < sequences; ++i) {
    const std::uint32_t seed = first + static_cast<std::uint32_t>(i);
    const Memory memory = seed % 2 == 0 ? Memory::Pool : Memory::Heap;
    const Sequence sequence = RandomSequence(seed, kLength);
    if (!Play(sequence, memory).empty()) return Explain(seed, sequence, memory);
  }
  std::printf("%d sequences, %d calls\n", sequences, played_);
  for (int trouble = 1; trouble < static_cast<int>(Trouble::Count); ++trouble) {
    EXPECT_TRUE(met_.contains(static_cast<Trouble>(trouble))) << "never met: trouble " << trouble;
  }
}

TEST(RandomSequences, AreTheSameForTheSameSeed) {
  EXPECT_EQ(Described(RandomSequence(7, 50)), Described(RandomSequence(7, 50)));
  EXPECT_NE(Described(RandomSequence(7, 50)), Described(RandomSequence(8, 50)));
}

TEST(RandomSequences, AreCutDownToTheCallsThatMatter) {
  const Sequence shortest = Shortest(RandomSequence(7, 50), IsLockThenUnlock);
  ASSERT_EQ(shortest.size(), 2U);
  EXPECT_EQ(shortest[0].act, Act::Lock);
  EXPECT_EQ(shortest[1].act, Act::Unlock);
}
