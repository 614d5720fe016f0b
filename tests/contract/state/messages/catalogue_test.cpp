// The catalogue of messages.
#include <array>
#include <cstdio>
#include <cstring>

#include "platform/K.h"
#include "tests/support/module/contract.h"

using ::testing::StartsWith;

namespace {

constexpr int kMessages = 68;

// The texts as the translators have them.
const std::array<const char*, kMessages> kTexts = {
    "$$$/OV/PXL/LStr/0000=",
    "$$$/OV/PXL/LStr/0001=PXL unborn.",
    "$$$/OV/PXL/LStr/0002=graphics structure",
    "$$$/OV/PXL/LStr/0003=not enough memory to do pattern dither.",
    "$$$/OV/PXL/LStr/0004=missing parent parameter.",
    "$$$/OV/PXL/LStr/0005=depth mismatch creating device.",
    "$$$/OV/PXL/LStr/0006=not enough memory to allocate color table.",
    "$$$/OV/PXL/LStr/0007=invalid palette depth (%d).",
    "$$$/OV/PXL/LStr/0008=can#{rsquo}t set palette in B&W world.",
    "$$$/OV/PXL/LStr/0009=can#{rsquo}t set palette in non-indexed world.",
    "$$$/OV/PXL/LStr/0010=can#{rsquo}t set palette in shallower world.",
    "$$$/OV/PXL/LStr/0011=can#{rsquo}t set more colors than the world has.",
    "$$$/OV/PXL/LStr/0012=offscreen device",
    "$$$/OV/PXL/LStr/0013=offscreen pixel map",
    "$$$/OV/PXL/LStr/0014=couldn#{rsquo}t get standard system color table.",
    "$$$/OV/PXL/LStr/0015=graphics port",
    "$$$/OV/PXL/LStr/0016=couldn#{rsquo}t find main device, possible corruption.",
    "$$$/OV/PXL/LStr/0017=opening port.",
    "$$$/OV/PXL/LStr/0018=unsupported system palette depth.",
    "$$$/OV/PXL/LStr/0019=no palette for grayscale.",
    "$$$/OV/PXL/LStr/0020=new offscreen pixel buffer",
    "$$$/OV/PXL/LStr/0021=offscreen pixel buffer",
    "$$$/OV/PXL/LStr/0022=32-bit QuickDraw not installed.",
    "$$$/OV/PXL/LStr/0023=invalid depth.",
    "$$$/OV/PXL/LStr/0024=can#{rsquo}t change world depth.",
    "$$$/OV/PXL/LStr/0025=checking buffer size.",
    "$$$/OV/PXL/LStr/0026=insufficient memory for %d x %d image buffer.  Try closing some "
    "windows or reducing Resolution.",
    "$$$/OV/PXL/LStr/0027=changing pixel buffer.",
    "$$$/OV/PXL/LStr/0028=pixel buffer purged!",
    "$$$/OV/PXL/LStr/0029=row size too large (%d).",
    "$$$/OV/PXL/LStr/0030=a locked pixel buffer can#{rsquo}t be reallocated.",
    "$$$/OV/PXL/LStr/0031=strange change in pixel buffer.",
    "$$$/OV/PXL/LStr/0032=attempt to copy into wrong size color table.",
    "$$$/OV/PXL/LStr/0033=installing a color table.",
    "$$$/OV/PXL/LStr/0034=can#{rsquo}t get palette from %d-bit world.",
    "$$$/OV/PXL/LStr/0035=sparse luts not implemented.",
    "$$$/OV/PXL/LStr/0036=bad palette size:",
    "$$$/OV/PXL/LStr/0037=can#{rsquo}t refresh a locked pixel buffer.",
    "$$$/OV/PXL/LStr/0038=installing syncronizer.",
    "$$$/OV/PXL/LStr/0039=unable to kick-start screen-refresh counter.",
    "$$$/OV/PXL/LStr/0040=removing syncronizer.",
    "$$$/OV/PXL/LStr/0041=attempt to syncronize with non-device.",
    "$$$/OV/PXL/LStr/0042=can#{rsquo}t find device.",
    "$$$/OV/PXL/LStr/0043=dummy color table",
    "$$$/OV/PXL/LStr/0044=calculating inverse table.",
    "$$$/OV/PXL/LStr/0045=closing color port.",
    "$$$/OV/PXL/LStr/0046=opening color port.",
    "$$$/OV/PXL/LStr/0047=attempt to share bitmap of different depths (%d <> %d).",
    "$$$/OV/PXL/LStr/0048=pattern dither matrix",
    "$$$/OV/PXL/LStr/0049=lut size mismatch.",
    "$$$/OV/PXL/LStr/0050=steps request out of range.",
    "$$$/OV/PXL/LStr/0051=rebirth.",
    "$$$/OV/PXL/LStr/0052=unbalanced unlock.",
    "$$$/OV/PXL/LStr/0053=this machine does not support color graphics.",
    "$$$/OV/PXL/LStr/0054=checking world",
    "$$$/OV/PXL/LStr/0055=checking globals",
    "$$$/OV/PXL/LStr/0056=bad globals.",
    "$$$/OV/PXL/LStr/0057=double or corrupted death.",
    "$$$/OV/PXL/LStr/0058=purging pixels.",
    "$$$/OV/PXL/LStr/0059=can#{rsquo}t purge locked pixels.",
    "$$$/OV/PXL/LStr/0060=can#{rsquo}t make purged pixels unpurgable (load/lock first).",
    "$$$/OV/PXL/LStr/0061=making pixels purgable.",
    "$$$/OV/PXL/LStr/0062=leaked ^^L1 PXL_Worlds.",
    "$$$/OV/PXL/LStr/0063=large pixel buffer information",
    "$$$/OV/PXL/LStr/0064=Images wider than 4000 pixels can only be displayed to the screen "
    "using Mac OS 8.5 or later.  They can still be rendered at full resolution, and can be "
    "previewed by lowering the composition#{rsquo}s resolution. ",
    "$$$/OV/PXL/LStr/0065=a PXL_NWorld can only be created at 8, 32, or 64 bits per pixel.",
    "$$$/OV/PXL/LStr/0066=Unable to allocate enough memory for the current frame. Either "
    "decrease the memory requirements for the rendering of this frame, or increase the "
    "amount of RAM available per rendering process. For more information, see ",
    "$$$/OV/PXL/LStr/0067=Unable to allocate enough memory to render the current frame. "
    "Decrease the memory requirements for the rendering of this frame. For more information, "
    "see ",
};

// These two end in the address of a help page, which the texts leave open.
bool PointsToHelpPage(int number) {
  return number == 66 || number == 67;
}

const K_LStrEntry& Entry(int number) {
  return PXL_G_zref->entries[number];
}

std::string DefaultText(int number) {
  return K_ZLookupLStrCache(PXL_G_zref, number, 0, 0);
}

}  // namespace

class Catalogue : public Contract {};

TEST_F(Catalogue, HoldsEveryTextAtItsNumber) {
  for (int number = 0; number < kMessages; ++number) {
    const char* wanted = kTexts[static_cast<std::size_t>(number)];
    if (PointsToHelpPage(number)) {
      EXPECT_THAT(Entry(number).key, StartsWith(wanted));
    } else {
      EXPECT_STREQ(Entry(number).key, wanted);
    }
  }
}

TEST_F(Catalogue, KeysCarryTheirNumberInFourDigits) {
  for (int number = 0; number < kMessages; ++number) {
    char prefix[32];
    std::snprintf(prefix, sizeof prefix, "$$$/OV/PXL/LStr/%04d=", number);
    EXPECT_THAT(Entry(number).key, StartsWith(prefix));
  }
}

TEST_F(Catalogue, IsPlainAscii) {
  for (int number = 0; number < kMessages; ++number) {
    for (const char* c = Entry(number).key; *c != 0; ++c) {
      EXPECT_TRUE(*c >= 0x20 && *c < 0x7F) << number;
    }
  }
}

// No character of the address may be taken for a placeholder.
TEST_F(Catalogue, EndsTheMemoryTextsInTheAddressOfAHelpPage) {
  const std::string first = Entry(66).key;
  const std::string second = Entry(67).key;
  const std::string address = first.substr(std::strlen(kTexts[66]));
  EXPECT_THAT(address, StartsWith("https://"));
  EXPECT_EQ(address.find_first_of("@#^% "), std::string::npos);
  EXPECT_EQ(second.substr(std::strlen(kTexts[67])), address);
}

TEST_F(Catalogue, LeavesTheCacheWordsOfEveryTextZero) {
  for (int number = 0; number < kMessages; ++number) {
    EXPECT_EQ(Entry(number).cache[0], 0U) << number;
    EXPECT_EQ(Entry(number).cache[1], 0U) << number;
    EXPECT_EQ(Entry(number).cache[2], 0U) << number;
  }
}

TEST_F(Catalogue, HasCacheWordsThatCanBeWrittenAndLeavesThemToTheLookup) {
  K_LStrEntry& entry = PXL_G_zref->entries[1];
  entry.cache[0] = 11;
  entry.cache[1] = 12;
  entry.cache[2] = 13;
  PXL_WorldHandle worldH = nullptr;
  PXL_NewWorld(nullptr, 0, nullptr, 32, 0, nullptr, &worldH);
  EXPECT_EQ(recorder_.Count("K_ZLookupLStrCache"), 1);
  EXPECT_EQ(entry.cache[0], 11U);
  EXPECT_EQ(entry.cache[1], 12U);
  EXPECT_EQ(entry.cache[2], 13U);
  entry.cache[0] = entry.cache[1] = entry.cache[2] = 0;
}

TEST_F(Catalogue, EndsInAnEntryWithoutKey) {
  EXPECT_EQ(Entry(kMessages).key, nullptr);
  EXPECT_EQ(Entry(kMessages).cache[0], ~uintptr_t{0});
  EXPECT_EQ(Entry(kMessages).cache[1], ~uintptr_t{0});
  EXPECT_EQ(Entry(kMessages).cache[2], 0U);
}

TEST_F(Catalogue, CountsItsEndEntry) {
  EXPECT_STREQ(PXL_G_zref->moduleName, "PXL");
  EXPECT_EQ(PXL_G_zref->count, 69U);
  EXPECT_EQ(PXL_G_zref->reserved, 0U);
}

TEST_F(Catalogue, IsLaidOutInWordsAsTheLookupReadsThem) {
  EXPECT_EQ(sizeof(K_LStrEntry), 32U);
  EXPECT_EQ(sizeof(K_LStrCatalogue), 32U);
  const auto* descriptor = reinterpret_cast<const char*>(PXL_G_zref);
  const char* name = nullptr;
  std::uint64_t count = 0;
  const char* table = nullptr;
  std::uint64_t last = 1;
  std::memcpy(&name, descriptor, 8);
  std::memcpy(&count, descriptor + 8, 8);
  std::memcpy(&table, descriptor + 16, 8);
  std::memcpy(&last, descriptor + 24, 8);
  EXPECT_STREQ(name, "PXL");
  EXPECT_EQ(count, 69U);
  EXPECT_EQ(last, 0U);
  const char* key = nullptr;
  std::memcpy(&key, table + 32, 8);
  EXPECT_STREQ(key, "$$$/OV/PXL/LStr/0001=PXL unborn.");
}

TEST_F(Catalogue, LooksUpAnEmptyTextUnderZero) {
  EXPECT_EQ(DefaultText(0), "");
  EXPECT_EQ(DefaultText(1), "PXL unborn.");
}
