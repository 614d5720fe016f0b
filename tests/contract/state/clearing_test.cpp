// Clearing of Worlds.
#include <cstring>
#include <numeric>
#include <type_traits>

#include "tests/contract/state/scripted_provider.h"
#include "tests/support/module/born_module.h"
#include "tests/support/module/record_fields.h"
#include "tests/support/system/page_before_nothing.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

static_assert(std::is_same_v<decltype(&PXL_ClearWorldToZeros), std::int32_t (*)(PXL_WorldHandle)>);
static_assert(std::is_same_v<decltype(&PXL_ClearWorldToLong),
                             std::int32_t (*)(PXL_WorldHandle, std::int32_t)>);

using Bytes = std::vector<unsigned char>;

Bytes Copied(const void* from, std::size_t size) {
  const auto* bytes = static_cast<const unsigned char*>(from);
  return {bytes, bytes + size};
}

template <typename Value>
Value At(const void* from, std::size_t index) {
  Value value;
  std::memcpy(&value, static_cast<const char*>(from) + index * sizeof value, sizeof value);
  return value;
}

class Clearing : public BornModule {
 protected:
  // The whole frame, what lies before and behind the rows included.
  Bytes FrameOf(PXL_WorldHandle worldH) {
    const PXL_PixelBuffer& pixels = Record(worldH).pixels;
    return Copied(pixels.frame, pixels.frameSize);
  }
  // The expected frame: only the rows are filled.
  Bytes Expected(PXL_WorldHandle worldH, const Bytes& pattern) {
    const PXL_World& world = Record(worldH);
    Bytes bytes(world.pixels.frameSize, 0xA5);
    const auto size =
        static_cast<std::size_t>(world.pixels.rowBytes) * static_cast<std::size_t>(world.height);
    for (std::size_t i = 0; i < size; ++i) bytes[world.pixels.alignOffset + i] = pattern[i % 4];
    return bytes;
  }
};

constexpr auto kPattern = std::int32_t{0x12345678};
const Bytes kPatternBytes = {0x78, 0x56, 0x34, 0x12};

}  // namespace

TEST_F(Clearing, ClearsASingleWord) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(1, 1));
  Record(worldH).pixels.rowBytes = 4;
  EXPECT_EQ(PXL_ClearWorldToZeros(worldH), PXL_Err_NONE);
  EXPECT_EQ(At<std::uint32_t>(PXLp_GetPixBaseAddr(worldH), 0), 0U);
  EXPECT_EQ(At<std::uint32_t>(PXLp_GetPixBaseAddr(worldH), 1), 0xA5A5A5A5U);
}

TEST_F(Clearing, CoversAllRowsWithTheirPaddingAndNothingElse) {
  recorder_.script.blockOffset = 5;
  for (const std::int32_t depth : {32, 64, 128}) {
    PXL_WorldHandle worldH = NewWorld(depth, Sized(5, 3), PXL_Flag_NO_PLATFORM);
    const PXL_World before = Record(worldH);
    ASSERT_EQ(before.pixels.alignOffset, 11U);
    EXPECT_EQ(PXL_ClearWorldToLong(worldH, kPattern), PXL_Err_NONE);
    EXPECT_EQ(FrameOf(worldH), Expected(worldH, kPatternBytes));
    EXPECT_EQ(PXL_ClearWorldToZeros(worldH), PXL_Err_NONE);
    EXPECT_EQ(FrameOf(worldH), Expected(worldH, {0, 0, 0, 0}));
    EXPECT_THAT(ChangedFields(before, Record(worldH)), IsEmpty());
    EXPECT_THAT(Log(), IsEmpty());
  }
}

TEST_F(Clearing, ToAValueOfZeroIsTheSameAsToZeros) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(5, 3));
  EXPECT_EQ(PXL_ClearWorldToLong(worldH, 0), PXL_Err_NONE);
  EXPECT_EQ(FrameOf(worldH), Expected(worldH, {0, 0, 0, 0}));
}

TEST_F(Clearing, GivesAPixelOf32BitsTheValue) {
  PXL_WorldHandle worldH = NewWorld(32, Sized(5, 3), PXL_Flag_NO_PLATFORM);
  const auto value = static_cast<std::int32_t>(0xFF00FF00);
  EXPECT_EQ(PXL_ClearWorldToLong(worldH, value), PXL_Err_NONE);
  const void* base = PXLp_GetPixBaseAddr(worldH);
  // Five pixels and three spare ones in each row.
  for (std::size_t i = 0; i < 8 * 3; ++i) EXPECT_EQ(At<std::int32_t>(base, i), value);
}

TEST_F(Clearing, GivesAPixelOf64BitsTheHalvesOfTheValueLowOneFirst) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(5, 3));
  PXL_ClearWorldToLong(worldH, kPattern);
  const void* base = PXLp_GetPixBaseAddr(worldH);
  for (std::size_t i = 0; i < std::size_t{4} * 6 * 3; ++i) {
    EXPECT_EQ(At<std::uint16_t>(base, i), i % 2 == 0 ? 0x5678 : 0x1234);
  }
}

TEST_F(Clearing, GivesAChannelOf128BitsThePatternOfTheValue) {
  PXL_WorldHandle worldH = NewWorld(128, Sized(5, 3));
  PXL_ClearWorldToLong(worldH, 0x3F800000);
  const void* base = PXLp_GetPixBaseAddr(worldH);
  for (std::size_t i = 0; i < std::size_t{4} * 5 * 3; ++i) EXPECT_EQ(At<float>(base, i), 1.0F);
}

TEST_F(Clearing, GivesFourPixelsOf8BitsTheBytesOfTheValueLowOneFirst) {
  PXL_WorldHandle worldH = NewWorld(8, Sized(20, 3));
  EXPECT_EQ(PXL_ClearWorldToLong(worldH, kPattern), PXL_Err_NONE);
  const Bytes pixels = Copied(SurfacePixels(worldH), std::size_t{32} * 3);
  for (std::size_t i = 0; i < pixels.size(); ++i) EXPECT_EQ(pixels[i], kPatternBytes[i % 4]);
}

TEST_F(Clearing, AcceptsANegativeValue) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(5, 3));
  PXL_ClearWorldToLong(worldH, -1);
  EXPECT_EQ(FrameOf(worldH), Expected(worldH, {0xFF, 0xFF, 0xFF, 0xFF}));
}

TEST_F(Clearing, LeavesTheLastOneToThreeBytesOfTheWholeArea) {
  for (const int rowBytes : {7, 9, 10}) {
    recorder_.script.surfaceRowBytes = static_cast<std::int16_t>(rowBytes);
    PXL_WorldHandle worldH = NewWorld(8, Sized(5, 3));
    ASSERT_EQ(Record(worldH).pixels.rowBytes, rowBytes);
    const std::size_t area = static_cast<std::size_t>(rowBytes) * 3;
    for (const std::int32_t value : {kPattern, 0}) {
      void* base = SurfacePixels(worldH);
      std::memset(base, 0xA5, area);
      PXL_ClearWorldToLong(worldH, value);
      const Bytes pixels = Copied(base, area);
      for (std::size_t i = 0; i < area; ++i) {
        const unsigned char filled = value == 0 ? 0 : kPatternBytes[i % 4];
        EXPECT_EQ(pixels[i], i < area / 4 * 4 ? filled : 0xA5) << rowBytes << " at " << i;
      }
    }
  }
}

TEST_F(Clearing, WritesAtAnyAddress) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(5, 3));
  Bytes memory(200, 0xA5);
  Record(worldH).pixels.baseAddr = memory.data() + 1;
  PXL_ClearWorldToLong(worldH, kPattern);
  EXPECT_EQ(memory[0], 0xA5);
  EXPECT_EQ(memory[1], 0x78);
  EXPECT_EQ(memory[144], 0x12);
  EXPECT_EQ(memory[145], 0xA5);
}

TEST_F(Clearing, GoesByTheCachedAddressWhenThereIsOne) {
  PXL_WorldHandle worldH = NewWorld(32, Sized(3, 2));
  std::vector<std::int32_t> elsewhere(8, 1);
  Record(worldH).pixels.baseAddr = elsewhere.data();
  EXPECT_EQ(PXL_ClearWorldToZeros(worldH), PXL_Err_NONE);
  EXPECT_THAT(elsewhere, ::testing::Each(0));
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(Clearing, AsksAnUnlockedSurfaceForItsAddressAndLocksNothing) {
  PXL_WorldHandle worldH = NewWorld(32, Sized(3, 2));
  for (const std::int32_t value : {kPattern, 0}) {
    ForgetLog();
    EXPECT_EQ(PXL_ClearWorldToLong(worldH, value), PXL_Err_NONE);
    EXPECT_THAT(Log(), ElementsAre("GetPortPixMap(gworld1)", "GetPixBaseAddr(map of gworld1)"));
    EXPECT_EQ(At<std::int32_t>(SurfacePixels(worldH), 7), value);
  }
}

TEST_F(Clearing, ReachesThePixelsOfALockedProvider) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(5, 3), PXL_Flag_DEFERRED);
  ScriptedProvider provider(worldH);
  PXL_LockPixels(0, worldH, nullptr);
  PXL_ClearWorldToLong(worldH, kPattern);
  EXPECT_EQ(At<std::int32_t>(provider.Pixels(), 35), kPattern);
  EXPECT_EQ(At<std::int32_t>(provider.Pixels(), 36), 0);
}

TEST_F(Clearing, DoesNotCheckTheWorld) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(5, 3));
  Record(worldH).headMark = 0;
  EXPECT_EQ(PXL_ClearWorldToZeros(worldH), PXL_Err_NONE);
  EXPECT_EQ(FrameOf(worldH), Expected(worldH, {0, 0, 0, 0}));
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(Clearing, OfAWorldWithoutPixelsToAValueDoesNothing) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(5, 3), PXL_Flag_DEFERRED);
  const PXL_World before = Record(worldH);
  EXPECT_EQ(PXL_ClearWorldToLong(worldH, 1), PXL_Err_NONE);
  EXPECT_THAT(ChangedFields(before, Record(worldH)), IsEmpty());
}

TEST_F(Clearing, OfAWorldWithoutRowsToZerosDoesNothing) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(5, 0));
  EXPECT_EQ(PXL_ClearWorldToZeros(worldH), PXL_Err_NONE);
  EXPECT_EQ(FrameOf(worldH), Bytes(20, 0xA5));
}

TEST_F(Clearing, OfAWorldWithoutRowsAndPixelsToZerosDoesNothing) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(5, 0), PXL_Flag_DEFERRED);
  EXPECT_EQ(PXL_ClearWorldToZeros(worldH), PXL_Err_NONE);
}

TEST_F(Clearing, CountsMoreBytesThan32BitsHold) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(5, 272));
  // Four gibibytes and sixteen bytes: a product that wraps would leave the 16,
  // all of them on the one page that is there.
  Record(worldH).pixels.rowBytes = 15790321;
  PageBeforeNothing memory((std::size_t{1} << 32) + 4096);
  Record(worldH).pixels.baseAddr = memory.Base();
  EXPECT_DEATH(PXL_ClearWorldToZeros(worldH), "");
}
