// pxl messages: every text of the catalogue.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/tools/support/program.h"

using nlohmann::json;
using testing::HasSubstr;

TEST(Messages, AreSixtyEightNumberedLines) {
  const Outcome outcome = RunPxl({"messages"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "");
  std::istringstream lines(outcome.output);
  std::string line;
  int count = 0;
  for (; std::getline(lines, line); ++count) EXPECT_EQ(std::stoi(line.substr(0, 2)), count);
  EXPECT_EQ(count, 68);
  EXPECT_THAT(outcome.output, HasSubstr("\n 1  PXL unborn.\n"));
}

TEST(Messages, AreThereAsJson) {
  const json list = json::parse(RunPxl({"messages", "--json"}).output);
  ASSERT_EQ(list.size(), 68U);
  for (std::size_t i = 0; i < list.size(); ++i) EXPECT_EQ(list[i]["index"], i);
  EXPECT_EQ(list[1]["text"], "PXL unborn.");
  EXPECT_EQ(list[54]["text"], "checking world");
}

TEST(Messages, ShowTypographicApostrophes) {
  const Outcome outcome = RunPxl({"messages"});
  EXPECT_THAT(outcome.output, HasSubstr("composition\u2019s resolution"));
  EXPECT_EQ(outcome.output.find("#{"), std::string::npos);
}
