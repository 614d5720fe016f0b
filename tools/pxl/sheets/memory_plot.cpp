// Draws the time line of K's memory as SVG.
#include "tools/pxl/sheets/memory_plot.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace pxl {
namespace {

using Sample = K_TimeLineSample;

// Places and sizes in pixels.
constexpr int kWidth = 1000;
constexpr int kHeight = 560;
constexpr int kLeft = 96;
constexpr int kRight = 976;
constexpr int kTop = 96;
constexpr int kBottom = 424;
constexpr int kLegendY = 64;
constexpr int kMarkRow = 24;  // from one row of marks to the next
constexpr int kMarkHeight = 12;
constexpr int kColumns = kRight - kLeft;

constexpr const char* kPaper = "#fafaf8";
constexpr const char* kInk = "#18181c";
constexpr const char* kPencil = "#5c5c64";
constexpr const char* kGrid = "#dcdce0";

constexpr double kMebibyte = 1024.0 * 1024.0;

// A kind of memory. The colours are distinct for colour-blind people too.
struct Series {
  const char* name;
  const char* colour;
  double (*bytes)(const Sample&);
};
constexpr std::array<Series, 5> kSeries = {{
    {"pool, live", "#0072b2", [](const Sample& s) { return static_cast<double>(s.liveBytes); }},
    {"pool, kept", "#56b4e9", [](const Sample& s) { return static_cast<double>(s.keptBytes); }},
    {"handles", "#e69f00", [](const Sample& s) { return static_cast<double>(s.handleBytes); }},
    {"application", "#009e73", [](const Sample& s) { return static_cast<double>(s.application); }},
    {"system", "#cc79a7", [](const Sample& s) { return static_cast<double>(s.system); }},
}};

struct Marks {
  const char* name;
  const char* colour;
  std::uint64_t (*count)(const Sample&);
};
constexpr std::array<Marks, 2> kMarks = {{
    {"purges", "#5c5c64", [](const Sample& s) { return s.purges; }},
    {"refusals", "#d55e00", [](const Sample& s) { return s.failures; }},
}};

// A step of 1, 2 or 5 times a power of ten that divides the range into at most
// eight parts.
double StepFor(double range) {
  const double least = range / 8.0;
  const double power = std::pow(10.0, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= least) return factor * power;
  }
  return 10.0 * power;
}

// From 0 to `end` in steps.
struct Axis {
  int steps;
  double step;
  double end;
};

std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '&') {
      escaped += "&amp;";
    } else if (c == '<') {
      escaped += "&lt;";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

class Plotter {
 public:
  Plotter(std::ostream& stream, const MemoryPlot& plot)
      : out_(stream),
        plot_(plot),
        seconds_(std::max(Seconds(plot.samples.back()), 1e-3)),
        memory_(AxisFor(Most())) {}

  void Draw() {
    Print(R"(<svg xmlns="http://www.w3.org/2000/svg" width="{0}" height="{1}" viewBox="0 0 {0} {1}"
  font-family="DejaVu Sans, Helvetica, Arial, sans-serif" font-size="14" fill="{2}">
<rect width="{0}" height="{1}" fill="{3}"/>
)",
          kWidth, kHeight, kPencil, kPaper);
    Text(kLeft, 36, "start", plot_.title, R"( font-size="20" fill="#18181c")");
    DrawMemoryAxis();
    DrawTimeAxis();
    DrawLegend();
    for (const Series& series : kSeries) DrawSeries(series);
    DrawBudget();
    for (std::size_t row = 0; row < kMarks.size(); ++row) DrawMarks(kMarks[row], row);
    Print("</svg>\n");
  }

 private:
  static double Seconds(const Sample& sample) {
    return static_cast<double>(sample.nanoseconds) / 1e9;
  }
  static Axis AxisFor(double most) {
    const double step = StepFor(std::max(most, 1.0));
    const int steps = static_cast<int>(std::ceil(std::max(most, 1.0) / step));
    return {steps, step, steps * step};
  }

  // The maximum of all that is drawn, in MiB.
  double Most() const {
    auto most = static_cast<double>(plot_.budget);
    for (const Sample& sample : plot_.samples) {
      for (const Series& series : kSeries) most = std::max(most, series.bytes(sample));
    }
    return most / kMebibyte;
  }

  double X(double seconds) const { return kLeft + seconds / seconds_ * kColumns; }
  double Y(double mebibytes) const { return kBottom - mebibytes / memory_.end * (kBottom - kTop); }
  std::size_t ColumnOf(const Sample& sample) const {
    return std::min<std::size_t>(static_cast<std::size_t>(X(Seconds(sample)) - kLeft),
                                 kColumns - 1);
  }

  template <typename... Values>
  void Print(fmt::format_string<Values...> format, Values&&... values) {
    out_ << fmt::format(format, std::forward<Values>(values)...);
  }

  void Text(double x, double y, const char* anchor, const std::string& text,
            const char* attributes = "") {
    Print(R"(<text x="{:.1f}" y="{:.1f}" text-anchor="{}"{}>{}</text>)"
          "\n",
          x, y, anchor, attributes, Escaped(text));
  }

  void Line(double x1, double y1, double x2, double y2, const char* colour,
            const char* attributes = "") {
    Print(R"(<line x1="{:.1f}" y1="{:.1f}" x2="{:.1f}" y2="{:.1f}" stroke="{}"{}/>)"
          "\n",
          x1, y1, x2, y2, colour, attributes);
  }

  void DrawMemoryAxis() {
    for (int i = 0; i <= memory_.steps; ++i) {
      const double value = i * memory_.step;
      Line(kLeft, Y(value), kRight, Y(value), i == 0 ? kInk : kGrid);
      Text(kLeft - 10, Y(value) + 5, "end", fmt::format("{:g}", value));
    }
    Text(kLeft - 10, kTop - 18, "end", "MiB");
  }

  void DrawTimeAxis() {
    const bool minutes = seconds_ > 300.0;
    const double unit = minutes ? 60.0 : 1.0;
    const double step = StepFor(seconds_ / unit);
    const double y = kBottom + kMarkRow * static_cast<double>(kMarks.size());
    for (int i = 0; i * step * unit <= seconds_; ++i) {
      const double x = X(i * step * unit);
      Line(x, kBottom, x, kBottom + 5, kInk);
      Text(x, y + 30, "middle", fmt::format("{:g}", i * step));
    }
    Text((kLeft + kRight) / 2.0, y + 56, "middle", minutes ? "minutes" : "seconds");
  }

  void DrawLegend() {
    constexpr double kSwatch = 24.0;
    constexpr double kCharacter = 9.0;  // wide enough for any
    double x = kLeft;
    const auto entry = [&](const std::string& name, const char* colour, const char* attributes) {
      Line(x, kLegendY, x + kSwatch, kLegendY, colour, attributes);
      Text(x + kSwatch + 8, kLegendY + 5, "start", name);
      x += kSwatch + 24 + kCharacter * static_cast<double>(name.size());
    };
    for (const Series& series : kSeries) entry(series.name, series.colour, R"( stroke-width="3")");
    if (plot_.budget > 0) entry("budget", kInk, R"( stroke-dasharray="6 4")");
  }

  // The maximum of each column; a column without a sample repeats the last value.
  std::vector<double> Columns(const Series& series) const {
    std::vector<double> columns(kColumns, -1.0);
    std::vector<double> last(kColumns, -1.0);
    for (const Sample& sample : plot_.samples) {
      const std::size_t column = ColumnOf(sample);
      // A total that does not balance may be negative: it is drawn as nothing.
      const double value = std::max(series.bytes(sample), 0.0) / kMebibyte;
      columns[column] = std::max(columns[column], value);
      last[column] = value;
    }
    double before = 0.0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (columns[i] < 0.0) columns[i] = before;
      if (last[i] >= 0.0) before = last[i];
    }
    return columns;
  }

  void DrawSeries(const Series& series) {
    const std::vector<double> columns = Columns(series);
    Print(R"(<path fill="none" stroke="{}" stroke-width="2" stroke-linejoin="round" d="M{} {:.1f})",
          series.colour, kLeft, Y(columns.front()));
    for (std::size_t i = 1; i < columns.size(); ++i) {
      if (columns[i] != columns[i - 1]) Print("H{}V{:.1f}", kLeft + i, Y(columns[i]));
    }
    Print("H{}\"/>\n", kRight);
  }

  void DrawBudget() {
    if (plot_.budget == 0) return;
    const double y = Y(static_cast<double>(plot_.budget) / kMebibyte);
    Line(kLeft, y, kRight, y, kInk, R"( stroke-dasharray="6 4")");
  }

  // A stroke for each column in which the count grew, and the count at the end.
  void DrawMarks(const Marks& marks, std::size_t row) {
    const double y = kBottom + 14 + kMarkRow * static_cast<double>(row);
    Text(kLeft - 10, y + kMarkHeight, "end", marks.name);
    std::uint64_t before = 0;
    int drawn = -1;
    for (const Sample& sample : plot_.samples) {
      const int column = static_cast<int>(ColumnOf(sample));
      if (marks.count(sample) > before && column != drawn) {
        Line(kLeft + column + 0.5, y, kLeft + column + 0.5, y + kMarkHeight, marks.colour);
        drawn = column;
      }
      before = marks.count(sample);
    }
  }

  std::ostream& out_;
  const MemoryPlot& plot_;
  double seconds_;
  Axis memory_;
};

}  // namespace

void WriteMemoryPlot(std::ostream& stream, const MemoryPlot& plot) {
  Plotter(stream, plot).Draw();
}

}  // namespace pxl
