// CopyBits against the reference, with everything chosen at random.
#include <iostream>
#include <random>

#include "tests/support/drawing/copies_by_dice.h"

namespace {

constexpr int kRounds = 2000;

class RandomCopies : public CopiesByDice {
 protected:
  RandomCopies() : CopiesByDice([this](std::uint32_t sides) { return Roll(sides); }) {
    std::cout << "seed " << seed_ << "\n";
  }

 private:
  std::uint32_t Roll(std::uint32_t sides) {
    return std::uniform_int_distribution<std::uint32_t>(0, sides - 1)(generator_);
  }

  std::random_device::result_type seed_ = std::random_device()();
  std::mt19937 generator_{seed_};
};

TEST_F(RandomCopies, BetweenWorldsShowWhatTheReferenceShows) {
  for (int round = 0; round < kRounds && !HasFatalFailure(); ++round) CheckBetweenWorlds();
}

TEST_F(RandomCopies, WithinAWorldShowWhatTheReferenceShows) {
  for (int round = 0; round < kRounds && !HasFatalFailure(); ++round) CheckWithinAWorld();
}

}  // namespace
