// Blits between Worlds of which one is deep.
#include "transfer/deep_blit.h"

#include <bit>
#include <cstring>
#include <limits>

#include "tests/contract/state/scripted_provider.h"
#include "tests/contract/transfer/image.h"
#include "tests/support/module/born_module.h"
#include "tests/support/module/record_fields.h"
#include "tests/support/oracle/channel_oracle.h"

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

template <typename From>
From At(const unsigned char* row, std::size_t i) {
  From value;
  std::memcpy(&value, row + i * sizeof value, sizeof value);
  return value;
}

template <typename To>
void Append(Bytes& bytes, To value) {
  const auto raw = std::bit_cast<std::array<unsigned char, sizeof(To)>>(value);
  bytes.insert(bytes.end(), raw.begin(), raw.end());
}

// A row converted channel by channel.
Bytes ConvertedRow(const unsigned char* row, std::size_t size, std::int32_t from, std::int32_t to) {
  Bytes result;
  if (from == to) return {row, row + size};
  for (std::size_t i = 0; i < size / static_cast<std::size_t>(from / 32); ++i) {
    if (from == 128)
      Append(result, static_cast<std::uint8_t>(oracle::RowFto8(At<std::uint32_t>(row, i))));
    if (from == 64)
      Append(result, static_cast<std::uint8_t>(oracle::From16To8(At<std::uint16_t>(row, i))));
    if (to == 64) Append(result, static_cast<std::uint16_t>(oracle::From8To16(row[i])));
    if (to == 128) Append(result, oracle::ChannelFrom8(row[i]));
  }
  return result;
}

std::string Verification(const std::string& code, int line, const std::string& text) {
  return "K_ReportFailedVerification(" + code + ", " + std::to_string(line) + ", 0, \"" + text +
         "\")";
}

const std::string kBadAccess =
    Verification("0x703E7", 112, "bad pointer access in PXLp_WorldGetBaseAddrXY()");

class DeepBlit : public BornModule {
 protected:
  // Geometry alone; an Image supplies the memory.
  PXL_WorldHandle Deferred(std::int32_t depth, const Rect& rect) {
    return NewWorld(depth, rect, PXL_Flag_DEFERRED);
  }
  std::int32_t Blit(PXL_WorldHandle source, PXL_WorldHandle destination) {
    return PXL_Blit(source, destination, nullptr, nullptr, 0);
  }
};

struct Pair {
  std::int32_t from;
  std::int32_t to;
};

class DeepBlitOf : public DeepBlit, public ::testing::WithParamInterface<Pair> {};

std::string PairName(const ::testing::TestParamInfo<Pair>& info) {
  return std::to_string(info.param.from) + "To" + std::to_string(info.param.to);
}

INSTANTIATE_TEST_SUITE_P(EachPair, DeepBlitOf,
                         ::testing::Values(Pair{128, 128}, Pair{128, 32}, Pair{64, 64},
                                           Pair{64, 32}, Pair{32, 64}, Pair{32, 128}, Pair{32, 32}),
                         PairName);

}  // namespace

TEST_P(DeepBlitOf, ConvertsTheRowsAndNothingAroundThem) {
  const auto [from, to] = GetParam();
  for (const auto& [width, height] :
       {std::pair{1, 1}, {3, 2}, {7, 5}, {17, 3}, {33, 4}, {100, 1}}) {
    for (const bool upsideDown : {false, true}) {
      PXL_WorldHandle sourceH = Deferred(from, Sized(width, height));
      PXL_WorldHandle destinationH = Deferred(to, Sized(width, height));
      Image source(sourceH, 16, upsideDown);
      Image destination(destinationH, 48, !upsideDown);
      from == 128 ? source.FillWithFloats() : source.Fill();
      const Bytes sourceBefore = source.memory;
      const Bytes expected = destination.With([&, depths = GetParam()](std::size_t y) {
        return ConvertedRow(source.Row(y), source.RowSize(), depths.from, depths.to);
      });
      const PXL_World sourceRecord = Record(sourceH);
      const PXL_World destinationRecord = Record(destinationH);

      EXPECT_EQ(PXLp_Blit64(sourceH, destinationH), PXL_Err_NONE);

      EXPECT_EQ(destination.memory, expected) << width << " x " << height;
      EXPECT_EQ(source.memory, sourceBefore);
      EXPECT_THAT(ChangedFields(sourceRecord, Record(sourceH)), IsEmpty());
      EXPECT_THAT(ChangedFields(destinationRecord, Record(destinationH)), IsEmpty());
      EXPECT_THAT(Log(), IsEmpty());
    }
  }
}

TEST_P(DeepBlitOf, OfWorldsWithoutRowsCopiesNothing) {
  const auto [from, to] = GetParam();
  EXPECT_EQ(PXLp_Blit64(Deferred(from, Sized(5, 0)), Deferred(to, Sized(5, 0))), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_P(DeepBlitOf, OfRowsWithoutPixelsCopiesNothing) {
  const auto [from, to] = GetParam();
  PXL_WorldHandle sourceH = Deferred(from, Sized(0, 5));
  PXL_WorldHandle destinationH = Deferred(to, Sized(0, 5));
  const Image source(sourceH, 16);
  const Image destination(destinationH, 16);
  EXPECT_EQ(PXLp_Blit64(sourceH, destinationH), PXL_Err_NONE);
  EXPECT_THAT(destination.memory, Each(kUntouched));
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_P(DeepBlitOf, OfANegativeHeightCopiesNothing) {
  const auto [from, to] = GetParam();
  PXL_WorldHandle source = Deferred(from, Sized(5, 2));
  PXL_WorldHandle destination = Deferred(to, Sized(5, 2));
  Record(source).height = -2;
  Record(destination).height = -2;
  EXPECT_EQ(PXLp_Blit64(source, destination), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_P(DeepBlitOf, OfANegativeWidthCopiesNothing) {
  const auto [from, to] = GetParam();
  PXL_WorldHandle sourceH = Deferred(from, Sized(5, 2));
  PXL_WorldHandle destinationH = Deferred(to, Sized(5, 2));
  const Image source(sourceH, 0);
  const Image destination(destinationH, 0);
  Record(sourceH).width = -2;
  Record(destinationH).width = -2;
  EXPECT_EQ(PXLp_Blit64(sourceH, destinationH), PXL_Err_NONE);
  EXPECT_THAT(destination.memory, Each(kUntouched));
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_P(DeepBlitOf, OfDifferentSizesIsRefusedBeforeAnyRow) {
  const auto [from, to] = GetParam();
  const std::string report =
      from == to
          ? Verification("0x70041", 256, "PXLp_BlitSameDepth() worlds must be same sized (for now)")
      : to == 32
          ? Verification("0x70040", 199, "PXLp_BlitDeepto32() worlds must be same sized (for now)")
          : Verification("0x7003F", 142, "PXLp_Blit32toDeep() worlds must be same sized (for now)");
  const Rect sizes[] = {Sized(6, 2), Sized(4, 2), Sized(5, 3),
                        Sized(5, 1), Sized(2, 5), Sized(5, 0)};
  for (const Rect& size : sizes) {
    PXL_WorldHandle sourceH = Deferred(from, Sized(5, 2));
    PXL_WorldHandle destinationH = Deferred(to, size);
    Image source(sourceH, 0);
    Image destination(destinationH, 0);
    EXPECT_EQ(PXLp_Blit64(sourceH, destinationH), PXL_Err_REFUSED);
    EXPECT_THAT(Log(), ElementsAre(report));
    EXPECT_THAT(destination.memory, Each(kUntouched));
    ForgetLog();
  }
}

TEST_P(DeepBlitOf, ComparesSizesAndNotBounds) {
  const auto [from, to] = GetParam();
  PXL_WorldHandle sourceH = Deferred(from, {10, 20, 12, 25});
  PXL_WorldHandle destinationH = Deferred(to, {-7, 3, -5, 8});
  Image source(sourceH, 0);
  Image destination(destinationH, 0);
  EXPECT_EQ(PXLp_Blit64(sourceH, destinationH), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DeepBlit, IgnoresRectanglesAndMode) {
  PXL_WorldHandle sourceH = Deferred(64, Sized(5, 3));
  PXL_WorldHandle destinationH = Deferred(64, Sized(5, 3));
  Image source(sourceH, 0);
  Image destination(destinationH, 0);
  source.Fill();
  const Rect rect = {1, 1, 2, 2};
  EXPECT_EQ(PXL_Blit(sourceH, destinationH, &rect, &rect, 999), PXL_Err_NONE);
  for (std::size_t y = 0; y < 3; ++y) {
    EXPECT_EQ(std::memcmp(destination.Row(y), source.Row(y), 40), 0);
  }
}

TEST_F(DeepBlit, IsChosenByEitherDepth) {
  for (const auto& [from, to] : {Pair{128, 32}, {64, 32}, {32, 64}, {32, 128}, {64, 64}, {33, 8}}) {
    PXL_WorldHandle source = NewWorld(32, Sized(4, 2));
    PXL_WorldHandle destination = NewWorld(32, Sized(5, 2));
    Record(source).depth = static_cast<std::int16_t>(from);
    Record(destination).depth = static_cast<std::int16_t>(to);
    Blit(source, destination);
    EXPECT_THAT(recorder_.log.size(), 1U);
    EXPECT_EQ(recorder_.Count("K_ReportFailedVerification"), 1);
  }
}

TEST_F(DeepBlit, CallsNothingOfTheDrawingLayer) {
  PXL_WorldHandle shallowH = NewWorld(32, Sized(4, 2));
  PXL_WorldHandle deepH = NewWorld(64, Sized(4, 2));
  PXL_LockPixels(0, shallowH, nullptr);
  PXL_LockPixels(0, deepH, nullptr);
  ForgetLog();
  EXPECT_EQ(Blit(shallowH, deepH), PXL_Err_NONE);
  EXPECT_EQ(Blit(deepH, shallowH), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_EQ(Record(shallowH).pixels.lockCount, 1);
}

TEST_F(DeepBlit, OfAPairWithoutAPathIsReportedAndYetSucceeds) {
  for (const auto& [from, to] :
       {Pair{128, 64}, {64, 128}, {8, 64}, {8, 128}, {64, 8}, {128, 8}, {16, 64}}) {
    PXL_WorldHandle sourceH = Deferred(from, Sized(5, 2));
    PXL_WorldHandle destinationH = Deferred(to, Sized(5, 2));
    Image source(sourceH, 0);
    Image destination(destinationH, 0);
    source.Fill();
    EXPECT_EQ(Blit(sourceH, destinationH), PXL_Err_NONE);
    EXPECT_THAT(Log(), ElementsAre(Verification(
                           "0x70042", 348, "unexpected bitdepth combination in PXLp_Blit64()")));
    EXPECT_THAT(destination.memory, Each(kUntouched)) << from << " to " << to;
  }
}

TEST_F(DeepBlit, OfAPairWithoutAPathIsNotRefusedForItsSize) {
  EXPECT_EQ(Blit(Deferred(128, Sized(5, 2)), Deferred(64, Sized(1, 1))), PXL_Err_NONE);
  EXPECT_THAT(recorder_.log.size(), 1U);
}

TEST_F(DeepBlit, TruncatesFloatsWherePixelsAreRounded) {
  PXL_WorldHandle sourceH = Deferred(128, Sized(3, 1));
  PXL_WorldHandle destinationH = Deferred(32, Sized(3, 1));
  Image source(sourceH, 0);
  Image destination(destinationH, 0);
  const float channels[] = {0.5F,
                            1.0F,
                            2.0F,
                            -0.3F,
                            std::numeric_limits<float>::infinity(),
                            -std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::quiet_NaN(),
                            -0.0F,
                            0.999999F,
                            0.1F,
                            0.2F,
                            0.7F};
  std::memcpy(source.Row(0), channels, sizeof channels);
  EXPECT_EQ(Blit(sourceH, destinationH), PXL_Err_NONE);
  const Bytes row(destination.Row(0), destination.Row(0) + 12);
  EXPECT_THAT(row, ElementsAre(127, 255, 255, 0, 255, 0, 0, 0, 254, 25, 51, 178));
}

TEST_F(DeepBlit, WrapsChannelsOf16BitsAboveFullScale) {
  PXL_WorldHandle sourceH = Deferred(64, Sized(1, 1));
  PXL_WorldHandle destinationH = Deferred(32, Sized(1, 1));
  Image source(sourceH, 0);
  Image destination(destinationH, 0);
  const std::uint16_t channels[] = {32768, 65535, 33000, 32833};
  std::memcpy(source.Row(0), channels, sizeof channels);
  EXPECT_EQ(Blit(sourceH, destinationH), PXL_Err_NONE);
  const Bytes row(destination.Row(0), destination.Row(0) + 4);
  EXPECT_THAT(row, ElementsAre(255, 254, 1, 0));
}

TEST_F(DeepBlit, ReadsTheTablesThatBirthBuilt) {
  PXL_WorldHandle sourceH = Deferred(32, Sized(1, 1));
  PXL_WorldHandle sixteenH = Deferred(64, Sized(1, 1));
  PXL_WorldHandle realH = Deferred(128, Sized(1, 1));
  Image source(sourceH, 0);
  Image sixteen(sixteenH, 0);
  Image real(realH, 0);
  const Bytes pixel = {0, 1, 254, 255};
  std::copy(pixel.begin(), pixel.end(), source.Row(0));
  EXPECT_EQ(Blit(sourceH, sixteenH), PXL_Err_NONE);
  EXPECT_EQ(Blit(sourceH, realH), PXL_Err_NONE);
  EXPECT_EQ(At<std::uint16_t>(sixteen.Row(0), 2), 32640);
  EXPECT_EQ(At<float>(real.Row(0), 2), 0.9960784316062927F);
}

TEST_F(DeepBlit, BeforeTheFirstBirthWidensToZeros) {
  UnloadModule();
  PXL_World records[3]{};
  PXL_World* masters[3];
  PXL_WorldHandle handles[3];
  const std::int16_t depths[] = {32, 64, 128};
  for (int i = 0; i < 3; ++i) {
    records[i].width = records[i].height = 1;
    records[i].depth = depths[i];
    masters[i] = &records[i];
    handles[i] = &masters[i];
  }
  Image source(handles[0], 0);
  Image sixteen(handles[1], 0);
  Image real(handles[2], 0);
  EXPECT_EQ(Blit(handles[0], handles[1]), PXL_Err_NONE);
  EXPECT_EQ(Blit(handles[0], handles[2]), PXL_Err_NONE);
  EXPECT_EQ(Bytes(sixteen.Row(0), sixteen.Row(0) + 8), Bytes(8, 0));
  EXPECT_EQ(Bytes(real.Row(0), real.Row(0) + 16), Bytes(16, 0));
}

TEST_F(DeepBlit, MovesRowsThatOverlapThemselves) {
  for (const std::int32_t depth : {64, 128}) {
    for (const std::ptrdiff_t shift : {-24, 24}) {
      PXL_WorldHandle sourceH = Deferred(depth, Sized(9, 1));
      PXL_WorldHandle destinationH = Deferred(depth, Sized(9, 1));
      Image image(sourceH, 0);
      image.Fill();
      Record(destinationH).pixels.baseAddr = image.Row(0) + shift;
      const Bytes before(image.Row(0), image.Row(0) + image.RowSize());
      EXPECT_EQ(Blit(sourceH, destinationH), PXL_Err_NONE);
      EXPECT_EQ(std::memcmp(image.Row(0) + shift, before.data(), before.size()), 0);
    }
  }
}

TEST_F(DeepBlit, OfAWorldIntoItselfLeavesItAsItIs) {
  PXL_WorldHandle worldH = Deferred(128, Sized(9, 4));
  Image image(worldH, 16);
  image.Fill();
  const Bytes before = image.memory;
  EXPECT_EQ(Blit(worldH, worldH), PXL_Err_NONE);
  EXPECT_EQ(image.memory, before);
}

// A World that begins one row further down reads rows that are overwritten
// just before, so the first row spreads over all.
TEST_F(DeepBlit, MovesOneRowAfterTheOtherFromTheTop) {
  PXL_WorldHandle sourceH = Deferred(64, Sized(4, 5));
  PXL_WorldHandle destinationH = Deferred(64, Sized(4, 5));
  std::vector<std::uint64_t> pixels(4 * 6);
  for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = i;
  Record(sourceH).pixels.baseAddr = pixels.data();
  Record(sourceH).pixels.rowBytes = 32;
  Record(destinationH).pixels.baseAddr = pixels.data() + 4;
  Record(destinationH).pixels.rowBytes = 32;
  EXPECT_EQ(Blit(sourceH, destinationH), PXL_Err_NONE);
  for (std::size_t i = 0; i < pixels.size(); ++i) EXPECT_EQ(pixels[i], i % 4);
}

TEST_F(DeepBlit, MovesTheRowsUpWithoutSpreadingThem) {
  PXL_WorldHandle sourceH = Deferred(64, Sized(4, 5));
  PXL_WorldHandle destinationH = Deferred(64, Sized(4, 5));
  std::vector<std::uint64_t> pixels(4 * 6);
  for (std::size_t i = 0; i < pixels.size(); ++i) pixels[i] = i;
  Record(sourceH).pixels.baseAddr = pixels.data() + 4;
  Record(sourceH).pixels.rowBytes = 32;
  Record(destinationH).pixels.baseAddr = pixels.data();
  Record(destinationH).pixels.rowBytes = 32;
  EXPECT_EQ(Blit(sourceH, destinationH), PXL_Err_NONE);
  for (std::size_t i = 0; i < 4 * 5; ++i) EXPECT_EQ(pixels[i], i + 4);
}

TEST_F(DeepBlit, ReadsTheCachedAddressAlone) {
  PXL_WorldHandle sourceH = Deferred(64, Sized(4, 2));
  ScriptedProvider provider(sourceH);
  PXL_LockPixels(0, sourceH, nullptr);
  EXPECT_EQ(Record(sourceH).pixels.baseAddr, nullptr);
  Image elsewhere(sourceH, 0);
  elsewhere.Fill();
  PXL_WorldHandle destinationH = Deferred(64, Sized(4, 2));
  Image destination(destinationH, 0);
  EXPECT_EQ(Blit(sourceH, destinationH), PXL_Err_NONE);
  EXPECT_EQ(std::memcmp(destination.Row(1), elsewhere.Row(1), 32), 0);
}

TEST_F(DeepBlit, ChecksNoMarks) {
  PXL_WorldHandle sourceH = Deferred(64, Sized(4, 2));
  PXL_WorldHandle destinationH = Deferred(32, Sized(4, 2));
  Image source(sourceH, 0);
  Image destination(destinationH, 0);
  Record(sourceH).headMark = 0;
  Record(destinationH).tailMark = 0;
  EXPECT_EQ(Blit(sourceH, destinationH), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DeepBlit, ChecksDepthsBeforeSizesOnEachPath) {
  PXL_WorldHandle eight = Deferred(8, Sized(1, 1));
  PXL_WorldHandle sixtyFour = Deferred(64, Sized(2, 2));
  ForgetLog();
  EXPECT_EQ(PXLp_BlitSameDepth(sixtyFour, eight, 64), PXL_Err_REFUSED);
  EXPECT_EQ(PXLp_BlitDeepto32(eight, sixtyFour, 128), PXL_Err_REFUSED);
  EXPECT_EQ(PXLp_Blit32toDeep(sixtyFour, eight, 128), PXL_Err_REFUSED);
  EXPECT_THAT(
      Log(),
      ElementsAre(Verification("0x70041", 255, "PXLp_BlitSameDepth() worlds must match depth"),
                  Verification("0x70040", 197, "PXLp_BlitDeepto32() source world depth mismatch"),
                  Verification("0x7003F", 140, "PXLp_Blit32toDeep() dest world depth mismatch")));
}

TEST_F(DeepBlit, StopsAtARowOfADepthThatThePathDoesNotExpect) {
  PXL_WorldHandle sixteen = Deferred(64, Sized(2, 2));
  PXL_WorldHandle real = Deferred(128, Sized(2, 2));
  Image one(sixteen, 0);
  Image other(real, 0);
  EXPECT_EQ(PXLp_BlitDeepto32(sixteen, real, 64), PXL_Err_REFUSED);
  EXPECT_EQ(PXLp_Blit32toDeep(sixteen, real, 128), PXL_Err_REFUSED);
  EXPECT_EQ(PXLp_BlitSameDepth(real, real, 64), PXL_Err_REFUSED);
  EXPECT_THAT(Log(), ElementsAre(kBadAccess, kBadAccess, kBadAccess));
  EXPECT_THAT(other.memory, Each(kUntouched));
}

TEST_F(DeepBlit, DoesNotLookAtTheDepthOfRowsThatAreNotThere) {
  PXL_WorldHandle sixteen = Deferred(64, Sized(2, 0));
  PXL_WorldHandle real = Deferred(128, Sized(2, 0));
  ForgetLog();
  EXPECT_EQ(PXLp_BlitDeepto32(sixteen, real, 64), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
}
