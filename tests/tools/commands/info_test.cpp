// pxl info: versions, settings and geometry.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

using nlohmann::json;
using testing::HasSubstr;

namespace {

json InfoOf(const std::vector<std::string>& more, const std::vector<Setting>& environment = {}) {
  std::vector<std::string> arguments = {"info", "--json"};
  arguments.insert(arguments.end(), more.begin(), more.end());
  const Outcome outcome = RunPxl(arguments, environment);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "");
  return json::parse(outcome.output);
}

}  // namespace

TEST(Info, PrintsVersionsAndDefaultSettings) {
  const json module = InfoOf({})["module"];
  EXPECT_EQ(module["package"], "31.14");
  EXPECT_EQ(module["interface"], 31);
  for (const char* library : {"K", "Q", "TXT"}) EXPECT_GT(module["libraries"][library], 0);
  EXPECT_EQ(module["settings"]["file"], "");
  EXPECT_EQ(module["settings"]["VirtualAllocFrames"], true);
  EXPECT_EQ(module["settings"]["VirtualAllocMinSizeInK3"], 300);
}

TEST(Info, PrintsTheSettingsOfAFileAsTheModuleReadsThem) {
  const TemporaryFolder folder;
  const std::string file = (folder / "settings").string();
  WriteBytes(file, "VirtualAllocFrames = \"1\"\nVirtualAllocMinSizeInK3 = 64\n");
  const json settings = InfoOf({}, {{"VETRIX_SETTINGS", file}})["module"]["settings"];
  EXPECT_EQ(settings["file"], file);
  // "1" is no boolean in words, so it counts as false.
  EXPECT_EQ(settings["VirtualAllocFrames"], false);
  EXPECT_EQ(settings["VirtualAllocMinSizeInK3"], 64);
}

TEST(Info, PrintsTheGeometryOfAPictureAtItsOwnDepth) {
  const json picture = InfoOf({SamplePicture("raccoon-16.png")})["picture"];
  EXPECT_EQ(picture["file"], SamplePicture("raccoon-16.png"));
  EXPECT_EQ(picture["format"], "PNG, 16 bits a channel, RGB");
  EXPECT_EQ(picture["width"], 200);
  EXPECT_EQ(picture["height"], 150);
  EXPECT_EQ(picture["depth"], 64);
  EXPECT_EQ(picture["rowBytes"], 1600);
  EXPECT_EQ(picture["frameSize"], 1600 * 150 + 16 + 4);
}

TEST(Info, PrintsTheGeometryAtAnotherDepth) {
  // Rows are multiples of 16 bytes; those of 8 and 32 bits have a pixel to spare.
  const int rowBytes[] = {208, 816, 1600, 3200};
  const std::string depths[] = {"8", "32", "64", "128"};
  for (std::size_t i = 0; i < 4; ++i) {
    const json picture = InfoOf({SamplePicture("raccoon-16.png"), "--depth", depths[i]})["picture"];
    EXPECT_EQ(picture["depth"], std::stoi(depths[i]));
    EXPECT_EQ(picture["rowBytes"], rowBytes[i]);
    EXPECT_EQ(picture["frameSize"], rowBytes[i] * 150 + (i < 2 ? 16 : 20));
  }
}

TEST(Info, IsReadableWithoutJson) {
  const Outcome outcome = RunPxl({"info", SamplePicture("coffee.png")});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.output, HasSubstr("PXL 31.14, interface 31\n"));
  EXPECT_THAT(outcome.output, HasSubstr("VirtualAllocFrames = true\n"));
  EXPECT_THAT(outcome.output, HasSubstr("PNG, 8 bits a channel, RGB\n"));
  EXPECT_THAT(outcome.output, HasSubstr("480 pixels\n"));
}
