// The sink of the kept reports.
#include "tests/support/host/kept_reports.h"

#include <utility>

namespace {

constexpr std::size_t kTextLength = 1024;

}  // namespace

std::ostream& operator<<(std::ostream& stream, const KeptReport& report) {
  return stream << std::hex << report.code << std::dec << " class " << report.cls << " error "
                << report.error << ": " << report.text;
}

KeptReports::KeptReports(std::size_t room) : spareTexts_(room) {
  reports_.reserve(room);
  for (std::string& text : spareTexts_) text.reserve(kTextLength);
  K_SetReportSink(Keep, this);
}

KeptReports::~KeptReports() {
  K_SetReportSink(nullptr, nullptr);
}

KeptReport KeptReports::Last() const {
  return reports_.empty() ? KeptReport{} : reports_.back();
}

void KeptReports::Forget() {
  for (KeptReport& report : reports_) spareTexts_.push_back(std::move(report.text));
  reports_.clear();
}

Reports KeptReports::Take() {
  return std::exchange(reports_, {});
}

std::string KeptReports::NextText() {
  if (spareTexts_.empty()) return {};
  std::string text = std::move(spareTexts_.back());
  spareTexts_.pop_back();
  return text;
}

void KeptReports::Keep(const K_Report* report, void* context) {
  auto& kept = *static_cast<KeptReports*>(context);
  std::string text = kept.NextText();
  text = report->text;
  kept.reports_.push_back({report->code, report->cls, report->error, std::move(text)});
}
