#include "bench/harness/table.h"

#include <fmt/format.h>

#include <array>

#include "bench/harness/goals.h"

namespace bench {
namespace {

std::string Milliseconds(const Measured* measured) {
  return measured == nullptr ? "" : fmt::format("{:.4g}", measured->ms);
}

// The plain loop's time is a multiple of ours.
std::string Gain(const Result& result) {
  const Measured* plain = result.Fastest(Role::Plain);
  return plain == nullptr ? "" : fmt::format("{:.1f}", plain->ms / result.Ours().ms);
}

std::string Percent(double part) {
  return fmt::format("{:.1f} %", part * 100);
}

using Cells = std::array<std::string, 12>;

const Cells kHeadings = {"work", "size",    "ms",         "spread", "limit", "ratio",
                         "peer", "peer ms", "peer exact", "plain",  "goal",  "verdict"};
constexpr std::array kWidths = {34, 11, 9, 7, 9, 5, 20, 9, 20, 6, 32, 10};

Cells CellsOf(const Result& result) {
  const Measured* peer = result.Fastest(Role::Peer);
  return {result.name.work,
          result.name.size,
          Milliseconds(&result.Ours()),
          Percent(result.Spread()),
          Milliseconds(result.Fastest(Role::Limit)),
          result.Ratio() > 0 ? fmt::format("{:.2f}", result.Ratio()) : "",
          peer == nullptr ? "" : peer->name,
          Milliseconds(peer),
          peer == nullptr ? "" : TextOf(peer->exactness),
          Gain(result),
          GoalsOf(result),
          NameOf(VerdictOf(result))};
}

std::string Aligned(const Cells& cells) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    line += fmt::format("{:<{}} ", cells[i], kWidths[i]);
  }
  return line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

std::string MarkdownLine(const Cells& cells) {
  std::string line = "|";
  for (const std::string& cell : cells) line += fmt::format(" {} |", cell);
  return line + "\n";
}

std::string MeansText(const Session& session, const char* start) {
  std::string text;
  for (const Mean& mean : MeansOf(session.results)) {
    text += fmt::format(
        "{}{}: {:.2f} of the limit in the geometric mean of its sizes, goal {:.2f}: {}\n", start,
        mean.work, mean.ratio, mean.least, NameOf(mean.verdict));
  }
  return text;
}

}  // namespace

std::string TerminalHeading() {
  return Aligned(kHeadings);
}

std::string TerminalLine(const Result& result) {
  return Aligned(CellsOf(result));
}

std::string Closing(const Session& session) {
  std::string text = fmt::format("\n{}", MeansText(session, ""));
  for (const std::string& remark : session.remarks) text += remark + "\n";
  for (const Verdict verdict : {Verdict::Missed, Verdict::Unmeasured}) {
    for (const Result& result : session.results) {
      if (VerdictOf(result) != verdict) continue;
      text += NameOf(verdict) + ": " + result.name.work + " at " + result.name.size + "\n";
    }
  }
  for (const std::string& failure : session.failures)
    text += fmt::format("could not run: {}\n", failure);
  return text;
}

std::string Markdown(const Session& session) {
  std::string text = fmt::format("{}|", MarkdownLine(kHeadings));
  for (std::size_t i = 0; i < kHeadings.size(); ++i) text += "---|";
  text += "\n";
  for (const Result& result : session.results) text += MarkdownLine(CellsOf(result));
  text += fmt::format("\n{}", MeansText(session, "- "));
  for (const std::string& remark : session.remarks) text += fmt::format("- {}\n", remark);
  return text;
}

}  // namespace bench
