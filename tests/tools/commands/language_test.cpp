// --language, for every verb.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <nlohmann/json.hpp>

#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

std::string Translation(const std::string& language) {
  return PXL_TRANSLATIONS "/" + language + ".txt";
}

class Language : public testing::Test {
 protected:
  std::string Write(const std::string& name, const std::string& text) const {
    WriteBytes(folder_ / name, text);
    return (folder_ / name).string();
  }

  // The message about an unusable file.
  static void ExpectComplaint(int code, const std::string& file, const std::string& complaint) {
    const Outcome outcome = RunPxl({"--language", file, "messages"});
    EXPECT_EQ(outcome.code, code);
    EXPECT_EQ(outcome.errors, "pxl: " + complaint + "\n");
    EXPECT_EQ(outcome.output, "");
  }

  TemporaryFolder folder_;
};

}  // namespace

TEST_F(Language, TranslatesTheList) {
  const Outcome german = RunPxl({"--language", Translation("de"), "messages"});
  EXPECT_EQ(german.code, 0);
  EXPECT_EQ(german.errors, "");
  EXPECT_THAT(german.output,
              HasSubstr("\n30  ein gesperrter Pixelpuffer kann nicht neu zugewiesen"));
  const Outcome japanese = RunPxl({"--language=" + Translation("ja"), "messages", "--json"});
  EXPECT_EQ(json::parse(japanese.output)[21]["text"], "オフスクリーンピクセルバッファー");
  EXPECT_EQ(json::parse(japanese.output)[0]["text"], "");
}

TEST_F(Language, TranslatesReports) {
  const std::string output = (folder_ / "out.png").string();
  const std::vector<std::string> convert = {
      "convert", SamplePicture("astronaut.png"), "--depth", "128", "-o", output + ".exr"};
  for (const auto& [language, start] : std::vector<std::pair<std::string, std::string>>{
           {"de", "Zum Rendern des aktuellen Frames kann nicht genügend Speicher"},
           {"ja", "現在のフレームのレンダリングに必要なメモリを割り当てられません"}}) {
    std::vector<std::string> arguments = {"--language", Translation(language)};
    arguments.insert(arguments.end(), convert.begin(), convert.end());
    const Outcome outcome = RunPxl(arguments, {{"PXL_MEMORY_BUDGET", "100000"}});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.errors, HasSubstr(": " + start));
    EXPECT_THAT(outcome.errors, HasSubstr("(12805)"));
  }
  EXPECT_THAT(folder_.Names(), IsEmpty());
}

TEST_F(Language, GoesWithEveryVerb) {
  const std::string file = Translation("de");
  EXPECT_EQ(RunPxl({"--language", file, "info"}).output, RunPxl({"info"}).output);
  const Outcome demo = RunPxl({"--language", file, "demo", SamplePicture("astronaut.png"), "-o",
                               (folder_ / "demo").string()},
                              {{"PXL_MEMORY_BUDGET", "100000"}});
  EXPECT_EQ(demo.code, 1);
  EXPECT_THAT(demo.errors, HasSubstr("genügend Speicher"));
}

TEST_F(Language, IsDescribedByTheHelp) {
  EXPECT_THAT(RunPxl({"--help"}).output, HasSubstr("--language FILE"));
}

TEST_F(Language, ReportsATranslationThatIsRefused) {
  const std::string file = Write("odd.txt", "$$$/OV/PXL/LStr/0029 = zu lang\n");
  const Outcome outcome = RunPxl({"--language", file, "messages"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.output, HasSubstr("\n29  row size too large (%d).\n"));
  EXPECT_THAT(outcome.errors, HasSubstr("placeholders differ"));
  EXPECT_THAT(outcome.errors, HasSubstr("$$$/OV/PXL/LStr/0029"));
}

TEST_F(Language, NamesAFileThatWillNotDo) {
  const std::string missing = (folder_ / "none.txt").string();
  ExpectComplaint(1, missing, missing + ": No such file or directory");
  const std::string folder = folder_.path().string();
  ExpectComplaint(1, folder, folder + ": Is a directory");
  ExpectComplaint(1, "/dev/zero", "/dev/zero: is not a regular file");
  const std::string pipe = (folder_ / "pipe").string();
  ASSERT_EQ(mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
  ExpectComplaint(1, pipe, pipe + ": is not a regular file");
  const std::string large = Write("large.txt", std::string((std::size_t{4} << 20) + 1, '\n'));
  ExpectComplaint(1, large, large + ": is too large for a translation");
  const std::string bad = Write("bad.txt", "# Deutsch\n$$$/OV/PXL/LStr/0001\n");
  ExpectComplaint(1, bad, bad + ": line 2: there is no '='");
  const std::string latin = Write("latin.txt",
                                  "$$$/OV/PXL/LStr/0001 = gepr\xFC"
                                  "ft\n");
  ExpectComplaint(1, latin, latin + ": line 1: is not UTF-8");
}

TEST_F(Language, NeedsAFileOnceAndBeforeTheVerb) {
  ExpectComplaint(2, "", "--language: is no file name");
  const std::string file = Translation("de");
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{"--language"},
                                             {"--language", file},
                                             {"--language", file, "frob"},
                                             {"--language", file, "--language", file, "messages"},
                                             {"messages", "--language", file}}) {
    const Outcome outcome = RunPxl(arguments);
    EXPECT_EQ(outcome.code, 2);
    EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: ")) << outcome.errors;
    EXPECT_EQ(outcome.output, "");
  }
}
