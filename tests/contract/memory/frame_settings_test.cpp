// The two settings of the frame allocator.
#include "memory/frame_settings.h"

#include <stdexcept>

#include "tests/support/module/contract.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FrameSettings : public Contract {
 protected:
  void Load(const std::string& enabled, const std::string& threshold) {
    Unload();
    if (!enabled.empty()) recorder_.script.settings["VirtualAllocFrames"] = enabled;
    if (!threshold.empty()) recorder_.script.settings["VirtualAllocMinSizeInK3"] = threshold;
    PXLp_LoadFrameSettings();
  }
};

class PoolFrames : public FrameSettings {};

TEST_F(FrameSettings, HaveDefaultsBeforeTheyAreRead) {
  EXPECT_TRUE(PXLp_frameSettings.poolEnabled);
  EXPECT_EQ(PXLp_frameSettings.poolThresholdKiB, 300);
  EXPECT_FALSE(PXLp_frameSettings.loaded);
  EXPECT_EQ(sizeof PXLp_frameSettings.poolEnabled, 1U);
}

TEST_F(FrameSettings, AreReadWithTheDefaultsAsTexts) {
  PXLp_LoadFrameSettings();
  EXPECT_THAT(Log(), ElementsAre("Instance()", R"(GetEntry("VirtualAllocFrames", "true"))",
                                 "Instance()", R"(GetEntry("VirtualAllocMinSizeInK3", "300"))"));
}

TEST_F(FrameSettings, KeepTheDefaultsWithoutEntries) {
  PXLp_LoadFrameSettings();
  EXPECT_TRUE(PXLp_frameSettings.poolEnabled);
  EXPECT_EQ(PXLp_frameSettings.poolThresholdKiB, 300);
}

TEST_F(FrameSettings, AreReadOnce) {
  PXLp_LoadFrameSettings();
  recorder_.script.settings["VirtualAllocFrames"] = "false";
  ForgetLog();
  PXLp_LoadFrameSettings();
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_TRUE(PXLp_frameSettings.poolEnabled);
}

TEST_F(FrameSettings, OfferTheCurrentValueAndNotTheBuiltInOne) {
  PXLp_frameSettings.poolEnabled = false;
  PXLp_frameSettings.poolThresholdKiB = -12;
  PXLp_LoadFrameSettings();
  EXPECT_THAT(recorder_.LogOf({"GetEntry"}),
              ElementsAre(R"(GetEntry("VirtualAllocFrames", "false"))",
                          R"(GetEntry("VirtualAllocMinSizeInK3", "-12"))"));
  EXPECT_FALSE(PXLp_frameSettings.poolEnabled);
  EXPECT_EQ(PXLp_frameSettings.poolThresholdKiB, -12);
}

TEST_F(FrameSettings, ReadWordsForTruthValues) {
  Load("false", "");
  EXPECT_FALSE(PXLp_frameSettings.poolEnabled);
  Load("true", "");
  EXPECT_TRUE(PXLp_frameSettings.poolEnabled);
}

TEST_F(FrameSettings, TakeAnyOtherTextForFalse) {
  for (const char* text : {"1", "0", "True", "yes", "on", "tru", " "}) {
    Load(text, "");
    EXPECT_FALSE(PXLp_frameSettings.poolEnabled) << text;
    EXPECT_EQ(PXLp_frameSettings.poolThresholdKiB, 300) << text;
  }
}

TEST_F(FrameSettings, ReadDecimalNumbers) {
  Load("", "1024");
  EXPECT_EQ(PXLp_frameSettings.poolThresholdKiB, 1024);
  Load("", "-1");
  EXPECT_EQ(PXLp_frameSettings.poolThresholdKiB, -1);
  Load("", "2147483647");
  EXPECT_EQ(PXLp_frameSettings.poolThresholdKiB, 2147483647);
}

TEST_F(FrameSettings, TakeAnyOtherTextForZero) {
  for (const char* text : {"abc", "0", "-", " ", "true", "2147483648", "-99999999999"}) {
    Load("", text);
    EXPECT_EQ(PXLp_frameSettings.poolThresholdKiB, 0) << text;
    EXPECT_TRUE(PXLp_frameSettings.poolEnabled) << text;
  }
}

TEST_F(FrameSettings, TakeWhatABadStreamGaveForNothing) {
  recorder_.script.inputIsBad = true;
  recorder_.script.settings = {{"VirtualAllocFrames", "true"}, {"VirtualAllocMinSizeInK3", "1024"}};
  PXLp_LoadFrameSettings();
  EXPECT_FALSE(PXLp_frameSettings.poolEnabled);
  EXPECT_EQ(PXLp_frameSettings.poolThresholdKiB, 0);
}

TEST_F(FrameSettings, SkipLeadingBlanksAndIgnoreWhatFollows) {
  Load(" true", " 300abc");
  EXPECT_TRUE(PXLp_frameSettings.poolEnabled);
  EXPECT_EQ(PXLp_frameSettings.poolThresholdKiB, 300);
}

TEST_F(FrameSettings, DoNotKnowTheKeyWithoutTheDigit) {
  recorder_.script.settings["VirtualAllocMinSizeInK"] = "7";
  PXLp_LoadFrameSettings();
  EXPECT_EQ(PXLp_frameSettings.poolThresholdKiB, 300);
}

TEST_F(FrameSettings, AreNotReadAgainAfterAFailure) {
  recorder_.Throw("GetEntry", [] { throw std::runtime_error("no database"); });
  EXPECT_THROW(PXLp_LoadFrameSettings(), std::runtime_error);
  EXPECT_TRUE(PXLp_frameSettings.loaded);
  EXPECT_TRUE(PXLp_frameSettings.poolEnabled);
  EXPECT_EQ(PXLp_frameSettings.poolThresholdKiB, 300);
  ForgetLog();
  PXLp_LoadFrameSettings();
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(FrameSettings, AreNotReadAgainWhenThereIsNoDatabase) {
  recorder_.Throw("Instance", [] { throw 5L; });
  EXPECT_THROW(PXLp_LoadFrameSettings(), long);
  ForgetLog();
  PXLp_LoadFrameSettings();
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(FrameSettings, KeepWhatWasReadBeforeAFailure) {
  recorder_.script.settings["VirtualAllocFrames"] = "false";
  recorder_.script.settings["VirtualAllocMinSizeInK3"] = "5";
  recorder_.Throw(
      "GetEntry", [] { throw std::runtime_error("no database"); }, 2);
  EXPECT_THROW(PXLp_LoadFrameSettings(), std::runtime_error);
  EXPECT_FALSE(PXLp_frameSettings.poolEnabled);
  EXPECT_EQ(PXLp_frameSettings.poolThresholdKiB, 300);
}

TEST_F(PoolFrames, AreStrictlyLargerThanTheThreshold) {
  EXPECT_FALSE(PXLp_IsPoolFrame(307199));
  EXPECT_FALSE(PXLp_IsPoolFrame(307200));
  EXPECT_TRUE(PXLp_IsPoolFrame(307201));
  EXPECT_TRUE(PXLp_IsPoolFrame(0xFFFFFFFFFFFFFFFF));
}

TEST_F(PoolFrames, AreAllButEmptyOnesWithAThresholdOfZero) {
  Load("", "abc");
  EXPECT_FALSE(PXLp_IsPoolFrame(0));
  EXPECT_TRUE(PXLp_IsPoolFrame(1));
}

TEST_F(PoolFrames, ExistOnlyWhileThePoolIsEnabled) {
  Load("1", "0");
  EXPECT_FALSE(PXLp_IsPoolFrame(1));
  EXPECT_FALSE(PXLp_IsPoolFrame(0xFFFFFFFFFFFFFFFF));
}

TEST_F(PoolFrames, UseAThresholdThatWrapsAt32Bits) {
  Load("", "2097151");
  EXPECT_FALSE(PXLp_IsPoolFrame(2147482624));
  EXPECT_TRUE(PXLp_IsPoolFrame(2147482625));
  Load("", "4194304");
  EXPECT_TRUE(PXLp_IsPoolFrame(1));
  Load("", "4194305");
  EXPECT_FALSE(PXLp_IsPoolFrame(1024));
  EXPECT_TRUE(PXLp_IsPoolFrame(1025));
}

TEST_F(PoolFrames, AreNoneWithAThresholdThatWrapsBelowZero) {
  for (const char* threshold : {"2097152", "-1", "4194303"}) {
    Load("", threshold);
    EXPECT_FALSE(PXLp_IsPoolFrame(307201)) << threshold;
    EXPECT_FALSE(PXLp_IsPoolFrame(0x7FFFFFFFFFFFFFFF)) << threshold;
  }
}

// The wrapped threshold is extended with its sign and compared without one.
TEST_F(PoolFrames, AreCountedFromTheTopByANegativeThreshold) {
  Load("", "-1");
  EXPECT_FALSE(PXLp_IsPoolFrame(0xFFFFFFFFFFFFFC00));
  EXPECT_TRUE(PXLp_IsPoolFrame(0xFFFFFFFFFFFFFC01));
  Load("", "2097152");
  EXPECT_FALSE(PXLp_IsPoolFrame(0xFFFFFFFF80000000));
  EXPECT_TRUE(PXLp_IsPoolFrame(0xFFFFFFFF80000001));
}
