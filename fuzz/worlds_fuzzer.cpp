// Compares sequences of calls on one World, with failures of the imports, with the
// model of the model tests.
#include <cstddef>
#include <cstdint>

#include "fuzz/bytes.h"
#include "fuzz/demand.h"
#include "tests/model/player.h"

namespace {

// As many calls as the tests' sequences have.
constexpr std::size_t kMostCalls = 80;

class PlayedByBytes : public Player {
 public:
  void Play(fuzz::Bytes bytes) {
    // One kind of memory for all: a World must not be re-sized across the threshold.
    const Memory memory = bytes.Byte() % 2 == 0 ? Memory::Pool : Memory::Heap;
    const Sequence sequence = SequenceOf(bytes);
    const std::string difference = Player::Play(sequence, memory);
    if (!difference.empty()) fuzz::Stop("\n" + Described(sequence) + difference);
  }

 private:
  void TestBody() override {}

  static Sequence SequenceOf(fuzz::Bytes& bytes) {
    const Dice roll = [&bytes](std::size_t sides) {
      return static_cast<int>(bytes.Below(static_cast<std::uint32_t>(sides)));
    };
    Sequence sequence;
    while (!bytes.Empty() && sequence.size() < kMostCalls) sequence.push_back(RandomStep(roll));
    return sequence;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::StopAtFailedExpectations();
  PlayedByBytes().Play({data, size});
  return 0;
}
