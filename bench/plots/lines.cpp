// The line plots: growth of pictures, and both kinds of stores.
#include "bench/plots/lines.h"

#include <fmt/format.h>

namespace bench {
namespace {

// Nanoseconds a pixel of ours and of the limit.
std::string GrowthData(const std::vector<const Result*>& rows, const std::string& work,
                       int number) {
  std::string data = fmt::format("$data{} << END\n", number);
  for (const Result* row : rows) {
    if (row->name.work != work) continue;
    data +=
        fmt::format("{} {:.5g} {:.5g}\n", row->name.scale, row->Ours().ms * 1e6 / row->name.scale,
                    row->Fastest(Role::Limit)->ms * 1e6 / row->name.scale);
  }
  return data + "END\n";
}

const Measured* Find(const Result& row, const std::string& name) {
  for (const Measured& measured : row.all) {
    if (measured.name == name) return &measured;
  }
  return nullptr;
}

// Gigabytes written a second by either manner.
std::string MannerData(const std::vector<const Result*>& rows) {
  std::string data = "$data << END\n";
  for (const Result* row : rows) {
    data += fmt::format("{}", row->name.scale);
    for (const char* manner : {"caching", "streaming"}) {
      data += fmt::format(" {:.4g}", row->name.scale / Find(*row, manner)->ms / 1e6);
    }
    data += "\n";
  }
  return data + "END\n";
}

// The mark is before the first size at which the module streams.
std::string ThresholdMark(const std::vector<const Result*>& rows) {
  for (const Result* row : rows) {
    if (row->Ours().name != "streaming") continue;
    return fmt::format("set arrow 1 from {0}, graph 0 to {0}, graph 1 nohead dashtype 2\n",
                       row->name.scale / 1.4142);
  }
  return "unset arrow 1\n";
}

}  // namespace

void DrawGrowth(const Results& results, std::vector<Drawing>& drawings) {
  const std::string start = "growth ";
  const std::vector<const Result*> rows = RowsOf(results, start);
  if (rows.empty()) return;
  const std::vector<std::string> works = WorksOf(rows);
  std::string script = Preamble();
  std::string plots;
  for (std::size_t i = 0; i < works.size(); ++i) {
    script += GrowthData(rows, works[i], static_cast<int>(i));
    plots += fmt::format(
        "{0}$data{1} using 1:2 with linespoints linecolor {2} title '{3}', "
        "$data{1} using 1:3 with lines linecolor {2} dashtype 3 notitle",
        i == 0 ? "" : ", ", i, i + 1, works[i].substr(start.size()));
  }
  script +=
      "set title 'Nanoseconds a pixel as pictures grow; dotted: the limit'\n"
      "set key outside right\n"
      "set logscale xy\n"
      "set format x '10^{%T}'\n"
      "set xlabel 'pixels'\n"
      "plot " +
      plots + "\n";
  drawings.push_back({"growth", script});
}

void DrawThresholds(const Results& results, std::vector<Drawing>& drawings) {
  const std::string start = "stores ";
  const std::vector<std::string> works = WorksOf(RowsOf(results, start));
  if (works.empty()) return;
  std::string script = Preamble() +
                       "set multiplot layout 2,2 title 'Gigabytes written a second, caching and "
                       "streaming; from the dashed line on the module streams'\n"
                       "set logscale x\n"
                       "set format x '10^{%T}'\n"
                       "set yrange [0:*]\n"
                       "set key bottom left\n"
                       "set xlabel 'bytes written'\n";
  for (const std::string& work : works) {
    const std::vector<const Result*> rows = RowsOf(results, work);
    script += MannerData(rows) + ThresholdMark(rows) +
              fmt::format(
                  "set title '{}'\n"
                  "plot $data using 1:2 with linespoints title 'caching', "
                  "$data using 1:3 with linespoints title 'streaming'\n",
                  work.substr(start.size()));
  }
  drawings.push_back({"threshold", script + "unset multiplot\n"});
}

}  // namespace bench
