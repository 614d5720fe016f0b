// pxl doctor: its facts, notes and problems.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "simd/processor_caches.h"
#include "simd/processor_level.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class Doctor : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  // The page and the same as JSON, which must agree on the exit code.
  void Run(std::vector<Setting> environment, const std::vector<std::string>& options = {}) {
    // No variables of the developer, unless the test sets them.
    environment.insert(environment.begin(), {{"VETRIX_SETTINGS", ""}, {"VETRIX_MAPPED_DIR", ""}});
    std::vector<std::string> arguments = options;
    arguments.emplace_back("doctor");
    page_ = RunPxl(arguments, environment);
    arguments.emplace_back("--json");
    const Outcome outcome = RunPxl(arguments, environment);
    facts_ = json::parse(outcome.output);
    EXPECT_EQ(outcome.code, page_.code);
    EXPECT_EQ(facts_["healthy"], page_.code == 0);
    EXPECT_EQ(facts_["problems"].empty(), page_.code == 0);
  }

  void ExpectOneProblem(const std::string& start, const std::string& part) {
    EXPECT_EQ(page_.code, 1);
    ASSERT_EQ(facts_["problems"].size(), 1U) << facts_["problems"];
    const auto problem = facts_["problems"][0].get<std::string>();
    EXPECT_THAT(problem, testing::StartsWith(start));
    EXPECT_THAT(problem, HasSubstr(part));
    EXPECT_THAT(page_.output, testing::EndsWith("\nproblem: " + problem + "\n"));
    EXPECT_THAT(page_.output, Not(HasSubstr("no problems")));
  }

  TemporaryFolder folder_;
  Outcome page_;
  json facts_;
};

// Every text and number, as the page shows it.
std::vector<std::string> LeavesOf(const json& facts) {
  std::vector<std::string> leaves;
  for (const json& value : facts.flatten()) {
    if (value.is_string()) leaves.push_back(value.get<std::string>());
    if (value.is_number()) leaves.push_back(value.dump());
  }
  return leaves;
}

}  // namespace

TEST_F(Doctor, FindsAHealthyMachineWell) {
  Run({{"VETRIX_MAPPED_DIR", folder_.path().string()}});
  EXPECT_EQ(page_.code, 0);
  EXPECT_EQ(page_.errors, "");
  EXPECT_THAT(page_.output, testing::EndsWith("\nno problems\n"));
  EXPECT_EQ(facts_["versions"]["package"], "31.14");
  EXPECT_EQ(facts_["versions"]["interface"], 31);
  EXPECT_EQ(facts_["versions"]["revision"], 14);
  for (const char* library : {"K", "Q", "TXT"}) EXPECT_GT(facts_["versions"][library], 0);
  for (const char* library : {"QDE", "vetrix", "TRC"}) {
    EXPECT_TRUE(facts_["versions"].at(library).is_null());
  }
  EXPECT_THAT(folder_.Names(), IsEmpty());
}

TEST_F(Doctor, ReportsTheLevelOfTheProcessorAndItsReason) {
  Run({});
  const json processor = facts_["processor"];
  EXPECT_EQ(processor["level"], simd::NameOf(simd::ProcessorLevel()));
  EXPECT_EQ(processor["there"].size() + processor["missing"].size(), 5U);
  EXPECT_EQ(processor["cacheOfACore"], simd::ProcessorCaches().own);
  EXPECT_EQ(processor["shareOfTheLastCache"], simd::ProcessorCaches().shared);
  const auto reason = processor["reason"].get<std::string>();
  if (simd::ProcessorLevel() == simd::Level::Avx512) {
    EXPECT_EQ(reason, "the highest level");
  } else {
    EXPECT_THAT(reason, HasSubstr(" needs "));
    EXPECT_THAT(reason, HasSubstr(processor["missing"].back().get<std::string>()));
  }
}

TEST_F(Doctor, ReportsTheSameFactsInBothForms) {
  WriteBytes(folder_ / "settings", "VirtualAllocMinSizeInK3 = 64\nOther = \"odd\"\n");
  Run({{"VETRIX_SETTINGS", Path("settings")}, {"PXL_MEMORY_BUDGET", "123456789"}});
  // The free space may have changed between the two.
  facts_["mappedFiles"].erase("freeSpace");
  const std::vector<std::string> leaves = LeavesOf(facts_);
  EXPECT_GT(leaves.size(), 30U);
  for (const std::string& leaf : leaves) EXPECT_THAT(page_.output, HasSubstr(leaf));
}

TEST_F(Doctor, ReportsTheOriginOfEachSetting) {
  Run({});
  EXPECT_EQ(facts_["settings"]["file"], "");
  EXPECT_THAT(page_.output, HasSubstr("VirtualAllocFrames       true (default)\n"));
  EXPECT_THAT(page_.output, HasSubstr("VirtualAllocMinSizeInK3  300 (default)\n"));

  WriteBytes(folder_ / "settings", "VirtualAllocMinSizeInK3 = 64\nOther = \"odd\"\n");
  Run({{"VETRIX_SETTINGS", Path("settings")}});
  const json settings = facts_["settings"];
  EXPECT_EQ(settings["file"], Path("settings"));
  EXPECT_EQ(settings["VirtualAllocFrames"], (json{{"value", true}, {"origin", "default"}}));
  EXPECT_EQ(settings["VirtualAllocMinSizeInK3"],
            (json{{"value", 64}, {"origin", "file"}, {"text", "64"}}));
  EXPECT_EQ(settings["Other"], (json{{"value", "odd"}, {"origin", "file"}, {"used", false}}));
  EXPECT_THAT(page_.output, HasSubstr("VirtualAllocMinSizeInK3  64 (from the file)\n"));
  EXPECT_THAT(facts_["notes"], IsEmpty());
}

TEST_F(Doctor, NotesSettingsThatAreNotReadAsTheyStand) {
  WriteBytes(folder_ / "settings", "VirtualAllocFrames = \"1\"\nlist = [1]\n");
  Run({{"VETRIX_SETTINGS", Path("settings")}});
  EXPECT_EQ(page_.code, 0);
  EXPECT_EQ(facts_["settings"]["VirtualAllocFrames"]["value"], false);
  EXPECT_THAT(facts_["notes"],
              ElementsAre("settings " + Path("settings") +
                              ", line 2: list is not a boolean, an integer or a string",
                          "VirtualAllocFrames = 1 is read as false"));
  EXPECT_THAT(page_.output, HasSubstr("\nnote: VirtualAllocFrames = 1 is read as false\n"));
}

TEST_F(Doctor, NotesASettingsFileThatIsNotThere) {
  Run({{"VETRIX_SETTINGS", Path("none")}});
  EXPECT_EQ(page_.code, 0);
  EXPECT_THAT(facts_["notes"],
              ElementsAre("the settings file " + Path("none") + " cannot be read"));
  EXPECT_EQ(facts_["settings"]["VirtualAllocFrames"]["origin"], "default");
}

TEST_F(Doctor, FindsAFolderWithoutRoomForMappedFiles) {
  Run({{"VETRIX_MAPPED_DIR", Path("missing")}});
  ExpectOneProblem("mapped files in " + Path("missing") + ": ", "cannot make a file in ");
  EXPECT_EQ(facts_["mappedFiles"]["folder"], Path("missing"));
  EXPECT_EQ(facts_["mappedFiles"]["namedBy"], "VETRIX_MAPPED_DIR");
  EXPECT_EQ(facts_["mappedFiles"]["reservation"], false);
  EXPECT_TRUE(facts_["mappedFiles"]["freeSpace"].is_null());
  WriteBytes(folder_ / "file", "");
  Run({{"VETRIX_MAPPED_DIR", Path("file")}});
  ExpectOneProblem("mapped files in " + Path("file") + ": ", "cannot make a file in ");
}

TEST_F(Doctor, FindsABudgetThatIsTooSmallForAFrame) {
  Run({{"PXL_MEMORY_BUDGET", "100000"}});
  ExpectOneProblem("a frame of 31.6 MiB (33177620 bytes) is not available",
                   ": refused by the application");
  EXPECT_EQ(facts_["memory"]["budget"], 100000);
  EXPECT_EQ(facts_["memory"]["budgetSetBy"], "the application");
  EXPECT_EQ(facts_["memory"]["frame"], false);
}

TEST_F(Doctor, ReportsTheLimitOfThePool) {
  Run({});
  EXPECT_EQ(facts_["memory"]["mostThatItKeeps"], 512 << 20);
  EXPECT_EQ(facts_["memory"]["liveBlocks"], 0);
  EXPECT_EQ(facts_["memory"]["frame"], true);
}

TEST_F(Doctor, FindsATranslationThatIsNotThere) {
  Run({}, {"--language", Path("none.txt")});
  ExpectOneProblem("the translation " + Path("none.txt") + ": ", "No such file or directory");
  EXPECT_EQ(facts_["language"]["file"], Path("none.txt"));
  EXPECT_EQ(facts_["language"]["texts"], "the module's own");
}

TEST_F(Doctor, ReportsTheTranslationInForce) {
  Run({}, {"--language", PXL_TRANSLATIONS "/de.txt"});
  EXPECT_EQ(page_.code, 0);
  EXPECT_EQ(facts_["language"]["file"], PXL_TRANSLATIONS "/de.txt");
  EXPECT_EQ(facts_["language"]["texts"], "from the file");
  EXPECT_EQ(RunPxl({"--language", "", "doctor"}).code, 2);
}
