// CopyBits: scaling, clipping, tables, overlap and refusals.
#include <initializer_list>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "TRC_host.h"
#include "tests/support/drawing/surfaces.h"

namespace {

class CopyBitsTest : public Surfaces {
 protected:
  static void Copy(GWorldPtr source, GWorldPtr destination, const Rect& from, const Rect& to,
                   std::int16_t mode = 0) {
    CopyBits(GetPortBitMapForCopyBits(source), GetPortBitMapForCopyBits(destination), &from, &to,
             mode, nullptr);
  }
  // The columns that a row of `from` pixels shows when it is drawn `to` wide.
  static std::vector<int> Scaled(int from, int to) {
    GWorldPtr source = Make(8, Sized(from, 1));
    GWorldPtr destination = Make(8, Sized(to, 1));
    for (int x = 0; x < from; ++x) *At(source, x, 0) = static_cast<std::uint8_t>(x);
    Copy(source, destination, Sized(from, 1), Sized(to, 1));
    std::vector<int> columns(At(destination, 0, 0), At(destination, 0, 0) + to);
    DisposeGWorld(destination);
    DisposeGWorld(source);
    return columns;
  }
  static std::uint8_t IndexOf(int red, int green, int blue) {
    GWorldPtr source = Make(32, Sized(1, 1));
    GWorldPtr destination = Make(8, Sized(1, 1));
    const std::uint8_t pixel[] = {0x99, static_cast<std::uint8_t>(red),
                                  static_cast<std::uint8_t>(green),
                                  static_cast<std::uint8_t>(blue)};
    std::memcpy(At(source, 0, 0), pixel, 4);
    Copy(source, destination, Sized(1, 1), Sized(1, 1));
    const std::uint8_t index = *At(destination, 0, 0);
    DisposeGWorld(destination);
    DisposeGWorld(source);
    return index;
  }
  // A pixel of `value` copied from a world of one format to another.
  static std::vector<std::uint8_t> Reordered(std::int32_t from, std::int32_t to) {
    GWorldPtr source = Make(32, Sized(1, 1));
    GWorldPtr destination = Make(32, Sized(1, 1));
    EXPECT_EQ(QDE_SetGWorld32PixmapFormat(source, from), 0);
    EXPECT_EQ(QDE_SetGWorld32PixmapFormat(destination, to), 0);
    const std::uint8_t pixel[] = {1, 2, 3, 4};
    std::memcpy(At(source, 0, 0), pixel, 4);
    Copy(source, destination, Sized(1, 1), Sized(1, 1));
    std::vector<std::uint8_t> bytes(At(destination, 0, 0), At(destination, 0, 0) + 4);
    DisposeGWorld(destination);
    DisposeGWorld(source);
    return bytes;
  }
};

TEST_F(CopyBitsTest, ShowsTheNearestPixelToTheUpperLeft) {
  EXPECT_EQ(Scaled(3, 6), (std::vector{0, 0, 1, 1, 2, 2}));
  EXPECT_EQ(Scaled(6, 3), (std::vector{0, 2, 4}));
  EXPECT_EQ(Scaled(5, 3), (std::vector{0, 1, 3}));
  EXPECT_EQ(Scaled(3, 5), (std::vector{0, 0, 1, 1, 2}));
  EXPECT_EQ(Scaled(1, 4), (std::vector{0, 0, 0, 0}));
}

TEST_F(CopyBitsTest, KeepsTheScaleWhenItClips) {
  GWorldPtr source = Make(8, Sized(3, 1));
  GWorldPtr destination = Make(8, Sized(6, 1));
  for (int x = 0; x < 3; ++x) *At(source, x, 0) = static_cast<std::uint8_t>(x + 1);
  Fill(destination, 0);
  Copy(source, destination, {0, 0, 1, 3}, {0, -3, 1, 3});
  EXPECT_EQ(std::vector<int>(At(destination, 0, 0), At(destination, 0, 0) + 6),
            (std::vector{2, 3, 3, 0, 0, 0}));
  // Beyond the source there is nothing to draw.
  Fill(destination, 0);
  Copy(source, destination, {0, -1, 1, 5}, {0, 0, 1, 6});
  EXPECT_EQ(std::vector<int>(At(destination, 0, 0), At(destination, 0, 0) + 6),
            (std::vector{0, 1, 2, 3, 0, 0}));
  DisposeGWorld(destination);
  DisposeGWorld(source);
}

TEST_F(CopyBitsTest, ReachesToTheEndsOfTheCoordinates) {
  GWorldPtr source = Make(8, {32766, 32766, 32767, 32767});
  GWorldPtr destination = Make(8, {-32768, -32768, -32766, -32766});
  Fill(source, 7);
  Fill(destination, 0);
  Copy(source, destination, {-32768, -32768, 32767, 32767}, {-32768, -32768, 32767, 32767});
  EXPECT_EQ(*At(destination, -32768, -32768), 0);
  Copy(source, destination, {32766, 32766, 32767, 32767}, {-32768, -32768, 32767, 32767});
  EXPECT_EQ(*At(destination, -32767, -32767), 7);
  Fill(destination, 0);
  Copy(source, destination, {-32768, -32768, 32767, 32767}, {-32768, -32768, -32767, -32767});
  EXPECT_EQ(*At(destination, -32768, -32768), 0);
  DisposeGWorld(destination);
  DisposeGWorld(source);
}

TEST_F(CopyBitsTest, FindsTheNearestColors) {
  EXPECT_EQ(IndexOf(0x80, 0x80, 0x80), 249);
  EXPECT_EQ(IndexOf(0xC8, 0x64, 0x32), 58);
  EXPECT_EQ(IndexOf(0x64, 0xC8, 0x96), 116);
  EXPECT_EQ(IndexOf(0x01, 0x01, 0x01), 255);
}

TEST_F(CopyBitsTest, BringsEveryIndexBackFrom32Bits) {
  GWorldPtr indexed = Make(8, Sized(16, 16));
  GWorldPtr back = Make(8, Sized(16, 16));
  GWorldPtr deep = Make(32, Sized(16, 16));
  std::uint8_t* pixels = PixelsOf(indexed);
  for (std::size_t i = 0; i < 256; ++i) pixels[i] = static_cast<std::uint8_t>(i);
  for (const std::int32_t format : {0, 1}) {
    ASSERT_EQ(QDE_SetGWorld32PixmapFormat(deep, format), 0);
    Fill(deep, 0xFF);
    Copy(indexed, deep, Sized(16, 16), Sized(16, 16));
    EXPECT_EQ(*(At(deep, 3, 2) + (format == 0 ? 0 : 3)), 0);
    Copy(deep, back, Sized(16, 16), Sized(16, 16));
    EXPECT_EQ(Bytes(back), Bytes(indexed));
    Fill(back, 0);
  }
  for (GWorldPtr world : {indexed, back, deep}) DisposeGWorld(world);
}

TEST_F(CopyBitsTest, ReordersBetweenFormatsAndKeepsTheFourthByte) {
  EXPECT_EQ(Reordered(0, 0), (std::vector<std::uint8_t>{1, 2, 3, 4}));
  EXPECT_EQ(Reordered(1, 1), (std::vector<std::uint8_t>{1, 2, 3, 4}));
  EXPECT_EQ(Reordered(0, 1), (std::vector<std::uint8_t>{4, 3, 2, 1}));
  EXPECT_EQ(Reordered(1, 0), (std::vector<std::uint8_t>{4, 3, 2, 1}));
}

TEST_F(CopyBitsTest, MapsIndicesBetweenDifferentTables) {
  GWorldPtr source = Make(8, Sized(2, 1));
  *At(source, 0, 0) = 0;
  *At(source, 1, 0) = 9;
  // A pixel map of the caller's, whose table has black first and then red.
  QDE_ColorTable table{1024, 0, 1, {{0, {0, 0, 0}}, {9, {0xFFFF, 0, 0}}}};
  QDE_ColorTable* master = &table;
  std::uint8_t mine[2] = {9, 9};
  PixMap map = MapOf(source);
  map.baseAddr = reinterpret_cast<Ptr>(mine);
  map.pmTable = &master;
  const Rect all = Sized(2, 1);
  map.rowBytes = static_cast<std::int16_t>(0x8000 | 2);
  const auto* bits = reinterpret_cast<const BitMap*>(&map);
  CopyBits(GetPortBitMapForCopyBits(source), bits, &all, &all, 0, nullptr);
  EXPECT_EQ(QDE_Error(), 0);
  EXPECT_EQ(mine[0], 9);  // white is nearer to red than to black
  mine[0] = 0;
  mine[1] = 9;
  CopyBits(bits, GetPortBitMapForCopyBits(source), &all, &all, 0, nullptr);
  EXPECT_EQ(*At(source, 0, 0), 255);
  EXPECT_EQ(*At(source, 1, 0), 35);
  // With the bit set, an entry's place is its index.
  table.ctFlags = std::numeric_limits<std::int16_t>::min();
  mine[1] = 1;
  CopyBits(bits, GetPortBitMapForCopyBits(source), &all, &all, 0, nullptr);
  EXPECT_EQ(*At(source, 1, 0), 35);
  // Of the same seed, indices are copied.
  table.ctSeed = 8;
  CopyBits(bits, GetPortBitMapForCopyBits(source), &all, &all, 0, nullptr);
  EXPECT_EQ(*At(source, 1, 0), 1);
  DisposeGWorld(source);
}

TEST_F(CopyBitsTest, TakesAPixelMapOfTheCallersWithoutATable) {
  std::uint8_t mine[] = {35, 185};
  PixMap map{};
  map.baseAddr = reinterpret_cast<Ptr>(mine);
  map.rowBytes = static_cast<std::int16_t>(0x8000 | 2);
  map.bounds = Sized(2, 1);
  map.pixelSize = 8;
  GWorldPtr destination = Make(32, Sized(2, 1));
  CopyBits(reinterpret_cast<const BitMap*>(&map), GetPortBitMapForCopyBits(destination),
           &map.bounds, &map.bounds, 0, nullptr);
  const std::uint8_t expected[] = {0, 0xFF, 0, 0, 0, 0, 0xFF, 0};
  EXPECT_EQ(std::memcmp(PixelsOf(destination), expected, 8), 0);
  DisposeGWorld(destination);
}

TEST_F(CopyBitsTest, ReadsAllBeforeItWritesWhereCallersMapsShareMemory) {
  std::vector<std::uint8_t> memory(64);
  const auto mapAt = [&memory](std::size_t offset, int depth, int stride) {
    PixMap map{};
    map.baseAddr = reinterpret_cast<Ptr>(memory.data() + offset);
    map.rowBytes = static_cast<std::int16_t>(0x8000 | stride);
    map.bounds = Sized(2, 2);
    map.pixelSize = static_cast<std::int16_t>(depth);
    return map;
  };
  const PixMap narrow = mapAt(8, 8, 4);
  const PixMap wide = mapAt(0, 32, 8);
  memory[8] = 35;    // red
  memory[9] = 185;   // green
  memory[12] = 210;  // blue
  memory[13] = 0;    // white
  CopyBits(reinterpret_cast<const BitMap*>(&narrow), reinterpret_cast<const BitMap*>(&wide),
           &narrow.bounds, &wide.bounds, 0, nullptr);
  const std::uint8_t expected[] = {0, 0xFF, 0, 0,    0, 0,    0xFF, 0,
                                   0, 0,    0, 0xFF, 0, 0xFF, 0xFF, 0xFF};
  EXPECT_EQ(std::memcmp(memory.data(), expected, sizeof expected), 0);
}

TEST_F(CopyBitsTest, ReadsAllBeforeItWritesWhereTheStridesDiffer) {
  std::vector<std::uint8_t> memory = {1, 2, 0, 0, 3, 4, 0, 0, 5, 6};
  const auto mapOf = [&memory](int stride) {
    PixMap map{};
    map.baseAddr = reinterpret_cast<Ptr>(memory.data());
    map.rowBytes = static_cast<std::int16_t>(0x8000 | stride);
    map.bounds = Sized(2, 3);
    map.pixelSize = 8;
    return map;
  };
  const PixMap narrow = mapOf(2);
  const PixMap wide = mapOf(4);
  const Rect all = Sized(2, 3);
  const auto* narrowBits = reinterpret_cast<const BitMap*>(&narrow);
  const auto* wideBits = reinterpret_cast<const BitMap*>(&wide);
  CopyBits(wideBits, narrowBits, &all, &all, 0, nullptr);
  EXPECT_EQ(memory, (std::vector<std::uint8_t>{1, 2, 3, 4, 5, 6, 0, 0, 5, 6}));
  CopyBits(narrowBits, wideBits, &all, &all, 0, nullptr);
  EXPECT_EQ(memory, (std::vector<std::uint8_t>{1, 2, 3, 4, 3, 4, 0, 0, 5, 6}));
}

TEST_F(CopyBitsTest, DrawsNothingForEmptyRectanglesWithoutAnError) {
  GWorldPtr source = Make(8, Sized(2, 2));
  GWorldPtr destination = Make(8, Sized(2, 2));
  Fill(source, 1);
  Fill(destination, 2);
  Copy(source, destination, Sized(0, 2), Sized(2, 2));
  Copy(source, destination, Sized(2, 2), {2, 2, 1, 1});
  EXPECT_EQ(QDE_Error(), 0);
  EXPECT_EQ(*At(destination, 0, 0), 2);
  DisposeGWorld(destination);
  DisposeGWorld(source);
}

TEST_F(CopyBitsTest, DrawsNothingInModesThatAreNotThereAndLeavesTheError) {
  GWorldPtr source = Make(8, Sized(2, 2));
  GWorldPtr destination = Make(8, Sized(2, 2));
  Fill(source, 1);
  Fill(destination, 2);
  for (const std::int16_t mode : std::initializer_list<std::int16_t>{
           8, 15, 31, 40, 49, 51, 63, 64 + 8, 64 + 40, 128, 0x4000, -1, -0x8000}) {
    Copy(source, destination, Sized(2, 2), Sized(2, 2), mode);
    EXPECT_EQ(QDE_Error(), -50) << mode;
    Copy(source, source, Sized(2, 2), Sized(2, 2));
    EXPECT_EQ(QDE_Error(), 0);
  }
  EXPECT_EQ(*At(destination, 0, 0), 2);
  DisposeGWorld(destination);
  DisposeGWorld(source);
}

TEST_F(CopyBitsTest, DrawsNothingWithoutBitmapsRectanglesOrWithAMask) {
  GWorldPtr world = Make(8, Sized(2, 2));
  const BitMap* bits = GetPortBitMapForCopyBits(world);
  const Rect rect = Sized(1, 1);
  char something = 0;
  const auto expectRefusal = [](const BitMap* source, const BitMap* destination, const Rect* from,
                                const Rect* to, RgnHandle mask) {
    K_FreeHandle(NewEmptyHandle());  // leaves no error
    ASSERT_EQ(QDE_Error(), 0);
    CopyBits(source, destination, from, to, 0, mask);
    EXPECT_EQ(QDE_Error(), -50);
  };
  expectRefusal(nullptr, nullptr, &rect, &rect, nullptr);
  expectRefusal(bits, nullptr, &rect, &rect, nullptr);
  expectRefusal(nullptr, bits, &rect, &rect, nullptr);
  expectRefusal(bits, bits, nullptr, &rect, nullptr);
  expectRefusal(bits, bits, &rect, nullptr, nullptr);
  expectRefusal(bits, bits, &rect, &rect, reinterpret_cast<RgnHandle>(&something));
  DisposeGWorld(world);
}

TEST_F(CopyBitsTest, DrawsNothingFromRecordsThatAreNoPixelMaps) {
  GWorldPtr world = Make(8, Sized(2, 2));
  const BitMap* bits = GetPortBitMapForCopyBits(world);
  const Rect rect = Sized(1, 1);
  std::uint8_t mine[64] = {};
  PixMap sound = MapOf(world);
  sound.baseAddr = reinterpret_cast<Ptr>(mine);
  const auto expectRefusal = [&](const PixMap& map) {
    CopyBits(reinterpret_cast<const BitMap*>(&map), bits, &rect, &rect, 0, nullptr);
    EXPECT_EQ(QDE_Error(), -50);
  };
  PixMap map = sound;
  map.rowBytes = 16;  // a bitmap
  expectRefusal(map);
  map = sound;
  map.rowBytes = static_cast<std::int16_t>(0xC010);  // a port
  expectRefusal(map);
  map = sound;
  map.pixelSize = 16;
  expectRefusal(map);
  map = sound;
  map.bounds = Sized(17, 2);  // rows longer than their stride
  expectRefusal(map);
  map = sound;
  map.bounds = Sized(0, 2);
  expectRefusal(map);
  CopyBits(reinterpret_cast<const BitMap*>(&sound), bits, &rect, &rect, 0, nullptr);
  EXPECT_EQ(QDE_Error(), 0);
  DisposeGWorld(world);
}

TEST_F(CopyBitsTest, DrawsNothingWithPurgedOrLostPixels) {
  GWorldPtr kept = Make(8, Sized(2, 2));
  GWorldPtr purged = Make(8, Sized(2, 2), QDE_Flag_PIX_PURGE);
  Fill(kept, 3);
  Press();
  Copy(purged, kept, Sized(2, 2), Sized(2, 2));
  EXPECT_EQ(QDE_Error(), -109);
  EXPECT_EQ(*At(kept, 0, 0), 3);
  Copy(kept, purged, Sized(2, 2), Sized(2, 2));
  EXPECT_EQ(QDE_Error(), -109);
  MapOf(kept).baseAddr = nullptr;
  Copy(kept, purged, Sized(2, 2), Sized(2, 2));
  EXPECT_EQ(QDE_Error(), -109);
  DisposeGWorld(purged);
  DisposeGWorld(kept);
}

class PinningNotes : public CopyBitsTest {
 protected:
  PinningNotes() {
    TRC_SetSink(Keep, &texts_);
    TRC_SetLevel(TRC_Level_NOTE);
  }
  ~PinningNotes() override {
    TRC_SetLevel(level_);
    TRC_SetSink(nullptr, nullptr);
  }
  std::vector<std::string> Take() { return std::exchange(texts_, {}); }

 private:
  static void Keep(std::int32_t, const char* category, const char* event, const char* text,
                   void* context) {
    static_cast<std::vector<std::string>*>(context)->push_back(std::string(category) + " " + event +
                                                               ": " + text);
  }
  std::vector<std::string> texts_;
  std::int32_t level_ = TRC_GetLevel();
};

TEST_F(PinningNotes, TellOfPixelsThatNobodyLocked) {
  GWorldPtr source = Make(8, Sized(2, 2));
  GWorldPtr destination = Make(8, Sized(2, 2));
  const std::string aboutSource = "QDE CopyBits: source pixels are not locked; pinned for the call";
  const std::string aboutDestination =
      "QDE CopyBits: destination pixels are not locked; pinned for the call";
  Copy(source, destination, Sized(2, 2), Sized(2, 2));
  EXPECT_EQ(Take(), (std::vector{aboutSource, aboutDestination}));
  // The pins are gone.
  EXPECT_FALSE(K_IsHandleLocked(reinterpret_cast<Handle>(MapOf(source).baseAddr)));
  EXPECT_FALSE(K_IsHandleLocked(reinterpret_cast<Handle>(MapOf(destination).baseAddr)));
  ASSERT_EQ(LockPixels(GetPortPixMap(source)), 1);
  Copy(source, destination, Sized(2, 2), Sized(2, 2));
  EXPECT_EQ(Take(), std::vector{aboutDestination});
  ASSERT_EQ(LockPixels(GetPortPixMap(destination)), 1);
  Copy(source, destination, Sized(2, 2), Sized(2, 2));
  EXPECT_EQ(Take(), std::vector<std::string>{});
  // The locks are not.
  const Ptr base = GetPixBaseAddr(GetPortPixMap(source));
  K_FreeHandle(NewEmptyHandle());
  EXPECT_EQ(GetPixBaseAddr(GetPortPixMap(source)), base);
  DisposeGWorld(destination);
  DisposeGWorld(source);
}

TEST_F(PinningNotes, LeaveAnUnlockedWorldUnlockedThatIsCopiedToItself) {
  GWorldPtr world = Make(8, Sized(2, 2));
  Copy(world, world, Sized(2, 1), {1, 0, 2, 2});
  EXPECT_EQ(Take().size(), 2U);
  EXPECT_FALSE(K_IsHandleLocked(reinterpret_cast<Handle>(MapOf(world).baseAddr)));
  DisposeGWorld(world);
}

}  // namespace
