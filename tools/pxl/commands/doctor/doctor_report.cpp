// The doctor's report as text and as JSON.
#include "tools/pxl/commands/doctor/doctor_report.h"

#include <fmt/format.h>

#include <ostream>
#include <utility>

#include "tools/pxl/system/console.h"

namespace pxl {
namespace {

// "freeSpace" for "free space".
std::string InOneWord(const std::string& words) {
  std::string word;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const bool starts = i > 0 && words[i - 1] == ' ' && words[i] >= 'a' && words[i] <= 'z';
    if (words[i] != ' ') word += starts ? static_cast<char>(words[i] - 'a' + 'A') : words[i];
  }
  return word;
}

}  // namespace

void DoctorReport::BeginSection(const std::string& title) {
  sections_.push_back({title, {}});
}

void DoctorReport::Add(const std::string& label, Json value, const std::string& text) {
  sections_.back().findings.push_back({label, std::move(value), text});
}

void DoctorReport::AddBytes(const std::string& label, std::uint64_t bytes) {
  Add(label, bytes, BytesText(bytes));
}

void DoctorReport::PrintText(std::ostream& stream) const {
  for (const Section& section : sections_) {
    stream << section.title << "\n";
    for (const Finding& finding : section.findings) {
      stream << OneLine(fmt::format("  {:24} {}", finding.label, finding.text)) << "\n";
    }
  }
  stream << "\n";
  for (const std::string& note : notes_) stream << OneLine("note: " + note) << "\n";
  for (const std::string& problem : problems_) stream << OneLine("problem: " + problem) << "\n";
  if (IsHealthy()) stream << "no problems\n";
}

Json DoctorReport::AsJson() const {
  Json report;
  for (const Section& section : sections_) {
    Json& facts = report[InOneWord(section.title)] = Json::object();
    for (const Finding& finding : section.findings) facts[InOneWord(finding.label)] = finding.value;
  }
  report["notes"] = notes_;
  report["problems"] = problems_;
  report["healthy"] = IsHealthy();
  return report;
}

std::string BytesText(std::uint64_t bytes) {
  constexpr double kMebibyte = 1024.0 * 1024.0;
  return fmt::format("{:.1f} MiB ({} bytes)", static_cast<double>(bytes) / kMebibyte, bytes);
}

}  // namespace pxl
