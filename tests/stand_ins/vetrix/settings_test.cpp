// Tests of the debug settings.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "tests/support/system/variables.h"
#include "vetrix_host.h"

namespace {

using vetrix::debug::DebugDatabase;

std::string Entry(const std::string& key) {
  return DebugDatabase::Instance().GetEntry(key, "default");
}

// A temporary file, deleted with the object.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& content)
      : path_(testing::TempDir() + "vetrix_settings_" + std::to_string(std::random_device{}()) +
              ".toml") {
    std::ofstream(path_, std::ios::binary) << content;
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { std::filesystem::remove(path_); }
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

class DebugSettings : public testing::Test {
 protected:
  ~DebugSettings() override { vetrix::host::LoadSettingsText(""); }
};

TEST_F(DebugSettings, ReturnTheDefaultForAnAbsentEntry) {
  EXPECT_EQ(Entry("VirtualAllocFrames"), "default");
}

TEST_F(DebugSettings, ReturnBooleansIntegersAndStringsAsText) {
  ASSERT_TRUE(
      vetrix::host::LoadSettingsText("VirtualAllocFrames = false\n"
                                     "Other = true\n"
                                     "VirtualAllocMinSizeInK3 = -300\n"
                                     "Large = 9223372036854775807\n"
                                     "Text = \" 300abc \\u2019\"\n"));
  EXPECT_EQ(Entry("VirtualAllocFrames"), "false");
  EXPECT_EQ(Entry("Other"), "true");
  EXPECT_EQ(Entry("VirtualAllocMinSizeInK3"), "-300");
  EXPECT_EQ(Entry("Large"), "9223372036854775807");
  EXPECT_EQ(Entry("Text"), " 300abc \xE2\x80\x99");
  EXPECT_EQ(Entry("VirtualAllocMinSizeInK"), "default");
}

TEST_F(DebugSettings, ListWhatWasRead) {
  vetrix::host::LoadSettingsText("b = 2\na = true\n");
  const auto settings = vetrix::host::Settings();
  ASSERT_EQ(settings.size(), 2U);
  EXPECT_EQ(settings[0].key, "a");
  EXPECT_EQ(settings[0].text, "true");
  EXPECT_EQ(settings[1].key, "b");
  EXPECT_EQ(settings[1].text, "2");
}

TEST_F(DebugSettings, ComeFromAFile) {
  const TemporaryFile file("VirtualAllocMinSizeInK3 = 17\n");
  EXPECT_TRUE(vetrix::host::LoadSettingsFile(file.Path()));
  EXPECT_EQ(vetrix::host::SettingsPath(), file.Path());
  EXPECT_EQ(Entry("VirtualAllocMinSizeInK3"), "17");
}

TEST_F(DebugSettings, AreEmptyAfterAFileThatIsNotThere) {
  vetrix::host::LoadSettingsText("a = 1\n");
  testing::internal::CaptureStderr();
  EXPECT_FALSE(vetrix::host::LoadSettingsFile("/nowhere/settings.toml"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vetrix: the settings file /nowhere/settings.toml cannot be read\n");
  EXPECT_EQ(vetrix::host::SettingsPath(), "/nowhere/settings.toml");
  EXPECT_EQ(Entry("a"), "default");
}

TEST_F(DebugSettings, AreEmptyAfterADirectory) {
  testing::internal::CaptureStderr();
  EXPECT_FALSE(vetrix::host::LoadSettingsFile(testing::TempDir()));
  EXPECT_NE(testing::internal::GetCapturedStderr().find("cannot be read"), std::string::npos);
  EXPECT_TRUE(vetrix::host::Settings().empty());
}

TEST_F(DebugSettings, AreEmptyAfterABadFileReportedInOneLine) {
  const TemporaryFile file("a = 1\nb = = 2\n");
  testing::internal::CaptureStderr();
  EXPECT_FALSE(vetrix::host::LoadSettingsFile(file.Path()));
  const std::string told = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(told.starts_with("vetrix: settings " + file.Path() + ", line 2: ")) << told;
  EXPECT_EQ(told.find('\n'), told.size() - 1) << told;
  EXPECT_TRUE(vetrix::host::Settings().empty());
}

TEST_F(DebugSettings, MayHoldAnyCharacter) {
  EXPECT_TRUE(
      vetrix::host::LoadSettingsText("\xEF\xBB\xBF"
                                     "a = '\u00E9\u0466\U0001F600' # \u0466\n"
                                     "\"\u30D4\" = \"\u2028\\u00E9\uFB26\"\n"));
  EXPECT_EQ(Entry("a"), "\u00E9\u0466\U0001F600");
  EXPECT_EQ(Entry("\u30D4"), "\u2028\u00E9\uFB26");
}

TEST_F(DebugSettings, AreEmptyAfterACharacterBeyondASCIIOutOfItsPlace) {
  const std::vector<std::string> bad = {
      "a = 4\n[c\u0466 ", "\na \u0466 = 1",   "\na = \u2C5E\n", "\na = 1 \uFB26",
      "\na = 'x\u0466\n", "\na = 0)\"\u0466", "\na\u00A0= 1\n", "a = \"\"\"\\\n\u0466\u0466"};
  for (const std::string& text : bad) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(vetrix::host::LoadSettingsText(text)) << text;
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(told.starts_with("vetrix: settings (text), line 2: ")) << told;
    EXPECT_EQ(told.find('\xF3'), std::string::npos) << told;
  }
}

TEST_F(DebugSettings, AreEmptyAfterATextThatIsNotUTF8) {
  for (const std::string text : {"a = '\xFF'", "a = '\U000F0466'"}) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(vetrix::host::LoadSettingsText(text));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "vetrix: settings (text): the text is not UTF-8 or contains private characters\n");
  }
}

TEST_F(DebugSettings, LeaveOutValuesOfOtherKinds) {
  testing::internal::CaptureStderr();
  EXPECT_TRUE(vetrix::host::LoadSettingsText("a = 1\nlist = [1, 2]\nreal = 1.5\n"));
  const std::string told = testing::internal::GetCapturedStderr();
  EXPECT_NE(told.find("line 2: list is not a boolean, an integer or a string\n"),
            std::string::npos);
  EXPECT_NE(told.find("line 3: real is not a boolean, an integer or a string\n"),
            std::string::npos);
  EXPECT_EQ(Entry("a"), "1");
  EXPECT_EQ(Entry("list"), "default");
}

TEST_F(DebugSettings, AreEmptyAfterAFileThatIsTooLarge) {
  const std::string most = "a = 1\n" + std::string((std::size_t{1} << 20) - 6, '\n');
  EXPECT_TRUE(vetrix::host::LoadSettingsFile(TemporaryFile(most).Path()));
  EXPECT_EQ(Entry("a"), "1");
  const TemporaryFile file(most + "\n");
  testing::internal::CaptureStderr();
  EXPECT_FALSE(vetrix::host::LoadSettingsFile(file.Path()));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vetrix: the settings file " + file.Path() + " is too large for settings\n");
  EXPECT_EQ(Entry("a"), "default");
}

TEST_F(DebugSettings, AreEmptyAfterOneThatIsNestedWithoutEnd) {
  testing::internal::CaptureStderr();
  EXPECT_FALSE(vetrix::host::LoadSettingsText("a = 1\nb = " + std::string(500000, '[')));
  const std::string told = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(told.starts_with("vetrix: settings (text), line 2: ")) << told;
  EXPECT_EQ(Entry("a"), "default");
}

TEST_F(DebugSettings, AreReportedWithoutControlCharacters) {
  testing::internal::CaptureStderr();
  vetrix::host::LoadSettingsText("\"a\\u001B[2J\\nb\" = [1]\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "vetrix: settings (text), line 1: a?[2J?b is not a boolean, an integer or a string\n");
}

TEST_F(DebugSettings, KeepTheComplaintsUntilTheNext) {
  testing::internal::CaptureStderr();
  vetrix::host::LoadSettingsText("a = 1\nlist = [1, 2]\n");
  EXPECT_EQ(vetrix::host::SettingsComplaints(),
            std::vector<std::string>{
                "settings (text), line 2: list is not a boolean, an integer or a string"});
  vetrix::host::LoadSettingsFile("/nowhere/settings.toml");
  EXPECT_EQ(vetrix::host::SettingsComplaints(),
            std::vector<std::string>{"the settings file /nowhere/settings.toml cannot be read"});
  testing::internal::GetCapturedStderr();
  vetrix::host::LoadSettingsText("a = 1\n");
  EXPECT_TRUE(vetrix::host::SettingsComplaints().empty());
}

// The environment is read once, so each case runs in its own process.
class SettingsVariableDeathTest : public testing::Test {
 protected:
  SettingsVariableDeathTest() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }

  [[noreturn]] static void ExitWhenEntryIs(const char* variable, const std::string& expected) {
    if (variable != nullptr) SetVariable("VETRIX_SETTINGS", variable);
    const bool same = Entry("key") == expected;
    // std::exit does not run the destructor of the file.
    if (variable != nullptr) std::filesystem::remove(variable);
    std::exit(same ? 0 : 1);
  }
};

TEST_F(SettingsVariableDeathTest, NamesNoFileByDefault) {
  UnsetVariable("VETRIX_SETTINGS");
  EXPECT_EXIT(ExitWhenEntryIs(nullptr, "default"), testing::ExitedWithCode(0), "^$");
}

TEST_F(SettingsVariableDeathTest, NamesTheFileThatIsRead) {
  const TemporaryFile file("key = \"stored\"\n");
  EXPECT_EXIT(ExitWhenEntryIs(file.Path().c_str(), "stored"), testing::ExitedWithCode(0), "^$");
}

TEST_F(SettingsVariableDeathTest, MayNameAFileThatIsNotThere) {
  EXPECT_EXIT(ExitWhenEntryIs("/nowhere/settings.toml", "default"), testing::ExitedWithCode(0),
              "cannot be read");
}

}  // namespace
