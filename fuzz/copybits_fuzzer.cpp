// Compares copies between surfaces and within one with the slow copy of the tests.
// Their rectangles are moved as well.
#include <cstddef>
#include <cstdint>

#include "fuzz/bytes.h"
#include "fuzz/demand.h"
#include "tests/support/drawing/copies_by_dice.h"

namespace {

// 16-bit coordinates wrap.
std::int16_t Sum(std::int64_t a, std::int64_t b) {
  const std::int64_t sum = (a + b + 0x8000) & 0xFFFF;
  return static_cast<std::int16_t>(sum - 0x8000);
}

class CopiesOfBytes : public CopiesByDice {
 public:
  explicit CopiesOfBytes(fuzz::Bytes* bytes)
      : CopiesByDice([bytes](std::uint32_t sides) { return bytes->Below(sides); }) {}

  void Check(bool withinAWorld) {
    if (withinAWorld) {
      CheckWithinAWorld();
    } else {
      CheckBetweenWorlds();
    }
  }

 private:
  void TestBody() override {}
};

void CheckOffset(fuzz::Bytes& bytes) {
  const Rect before = {bytes.Take<std::int16_t>(), bytes.Take<std::int16_t>(),
                       bytes.Take<std::int16_t>(), bytes.Take<std::int16_t>()};
  const auto dh = bytes.Take<std::int16_t>();
  const auto dv = bytes.Take<std::int16_t>();
  Rect moved = before;
  MacOffsetRect(&moved, dh, dv);
  const Rect expected = {Sum(before.top, dv), Sum(before.left, dh), Sum(before.bottom, dv),
                         Sum(before.right, dh)};
  fuzz::Demand(moved == expected, "a rectangle was moved elsewhere");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::StopAtFailedExpectations();
  fuzz::Bytes bytes(data, size);
  const int kind = bytes.Byte() % 16;
  if (kind == 0) {
    CheckOffset(bytes);
  } else {
    CopiesOfBytes(&bytes).Check(kind % 2 == 0);
  }
  return 0;
}
