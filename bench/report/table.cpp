// Formats the results as lines and Markdown tables.
#include "bench/report/table.h"

#include <fmt/format.h>

#include <array>
#include <set>

#include "bench/harness/goals.h"

namespace bench {
namespace {

std::string Time(const Measured* measured) {
  if (measured == nullptr) return "";
  if (measured->ms >= 0.1) return fmt::format("{:.4g} ms", measured->ms);
  if (measured->ms >= 1e-4) return fmt::format("{:.4g} us", measured->ms * 1e3);
  return fmt::format("{:.4g} ns", measured->ms * 1e6);
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

const Cells kHeadings = {"work", "size",      "time",       "spread", "limit", "ratio",
                         "peer", "peer time", "peer exact", "plain",  "goal",  "verdict"};
constexpr std::array kWidths = {34, 11, 9, 7, 9, 5, 20, 9, 20, 6, 32, 10};

Cells CellsOf(const Result& result) {
  const Measured* peer = result.Fastest(Role::Peer);
  return {result.name.work,
          result.name.size,
          Time(&result.Ours()),
          Percent(result.Spread()),
          Time(result.Fastest(Role::Limit)),
          result.Ratio() > 0 ? fmt::format("{:.2f}", result.Ratio()) : "",
          peer == nullptr ? "" : peer->name,
          Time(peer),
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

std::string GroupsText(const Session& session, const char* start) {
  std::string text;
  for (const GroupVerdict& group : JudgeGroups(session.results)) {
    text += fmt::format("{}{}: {}\n", start, group.text, NameOf(group.verdict));
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
  std::string text = fmt::format("\n{}", GroupsText(session, ""));
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

std::string PeersMarkdown(const Session& session) {
  std::string text = "| work | peer | computes what we compute? |\n|---|---|---|\n";
  std::set<std::string> seen;
  for (const Result& result : session.results) {
    for (const Measured& peer : result.all) {
      const std::string exactness = TextOf(peer.exactness);
      if (peer.role != Role::Peer || exactness.empty()) continue;
      const std::string line =
          fmt::format("| {} | {} | {} |\n", result.name.work, peer.name, exactness);
      if (seen.insert(line).second) text += line;
    }
  }
  return seen.empty() ? "" : text;
}

std::string Markdown(const Session& session) {
  std::string text = fmt::format("{}|", MarkdownLine(kHeadings));
  for (std::size_t i = 0; i < kHeadings.size(); ++i) text += "---|";
  text += "\n";
  for (const Result& result : session.results) text += MarkdownLine(CellsOf(result));
  text += fmt::format("\n{}", GroupsText(session, "- "));
  for (const std::string& remark : session.remarks) text += fmt::format("- {}\n", remark);
  return fmt::format("{}\n{}", text, PeersMarkdown(session));
}

}  // namespace bench
