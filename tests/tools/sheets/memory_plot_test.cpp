// The lines and marks in the plot of K's memory.
#include "tools/pxl/sheets/memory_plot.h"

#include <gmock/gmock.h>

#include <sstream>

using namespace pxl;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr std::uint64_t kMebibyte = 1024 * 1024;

K_TimeLineSample At(double seconds, std::uint64_t liveMebibytes) {
  K_TimeLineSample sample{};
  sample.nanoseconds = static_cast<std::uint64_t>(seconds * 1e9);
  sample.liveBytes = liveMebibytes * kMebibyte;
  return sample;
}

std::string PlotOf(const MemoryPlot& plot) {
  std::ostringstream stream;
  WriteMemoryPlot(stream, plot);
  return stream.str();
}

std::string PathOf(const std::string& svg, const std::string& colour) {
  const std::size_t start = svg.find(R"(<path fill="none" stroke=")" + colour);
  const std::size_t data = svg.find(" d=\"", start) + 4;
  return svg.substr(data, svg.find('"', data) - data);
}

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

constexpr const char* kLive = "#0072b2";
constexpr const char* kPurge = "stroke=\"#5c5c64\"/>";
constexpr const char* kRefusal = "stroke=\"#d55e00\"/>";

}  // namespace

// The plot area goes from 96, 424, the origin, to 976, 96.
TEST(MemoryPlot, DrawsTheSamplesToScale) {
  const std::string svg = PlotOf({"t", {At(0, 0), At(5, 100), At(10, 50)}});
  EXPECT_EQ(PathOf(svg, kLive), "M96 424.0H536V96.0H975V260.0H976");
}

TEST(MemoryPlot, ShowsTheMostOfAColumnAndTheLastAfterwards) {
  const std::string svg = PlotOf({"t", {At(0, 0), At(5.0, 100), At(5.001, 25), At(10, 25)}});
  EXPECT_EQ(PathOf(svg, kLive), "M96 424.0H536V96.0H537V342.0H976");
}

TEST(MemoryPlot, OfOneSampleIsALine) {
  EXPECT_EQ(PathOf(PlotOf({"t", {At(0, 3)}}), kLive), "M96 96.0H976");
}

TEST(MemoryPlot, HasALineForTheBudget) {
  MemoryPlot plot{"t", {At(0, 0), At(10, 100)}};
  EXPECT_THAT(PlotOf(plot), Not(HasSubstr("budget")));
  plot.budget = 200 * kMebibyte;
  const std::string svg = PlotOf(plot);
  EXPECT_THAT(svg, HasSubstr(">budget</text>"));
  EXPECT_THAT(svg, HasSubstr("y1=\"96.0\" x2=\"976.0\" y2=\"96.0\" stroke=\"#18181c\" "
                             "stroke-dasharray"));
}

TEST(MemoryPlot, NamesItsAxesInRoundNumbers) {
  const std::string svg = PlotOf({"Memory & more", {At(0, 0), At(10, 100)}});
  for (const std::string label : {"MiB", "seconds", "0", "20", "100", "2", "10"}) {
    EXPECT_THAT(svg, HasSubstr(">" + label + "</text>"));
  }
  EXPECT_THAT(svg, HasSubstr(">Memory &amp; more</text>"));
  EXPECT_THAT(PlotOf({"t", {At(0, 0), At(600, 100)}}), HasSubstr(">minutes</text>"));
}

TEST(MemoryPlot, MarksPurgesAndRefusalsOnceAColumn) {
  MemoryPlot plot{"t", {At(0, 0), At(2, 1), At(2.0001, 1), At(6, 1), At(10, 1)}};
  plot.samples[1].purges = 1;
  plot.samples[2].purges = 2;
  plot.samples[3].purges = 3;
  plot.samples[4].purges = 3;
  plot.samples[3].failures = 1;
  plot.samples[4].failures = 1;
  const std::string svg = PlotOf(plot);
  EXPECT_EQ(CountOf(svg, kPurge), 2U);
  EXPECT_EQ(CountOf(svg, kRefusal), 1U);
  EXPECT_THAT(svg, HasSubstr(">purges</text>"));
  EXPECT_THAT(svg, HasSubstr(">refusals</text>"));
}

TEST(MemoryPlot, OfNegativeTotalsStaysInside) {
  MemoryPlot plot{"t", {At(0, 0), At(10, 10)}};
  plot.samples[1].system = -5 * static_cast<std::int64_t>(kMebibyte);
  EXPECT_EQ(PathOf(PlotOf(plot), "#cc79a7"), "M96 424.0H976");
}
