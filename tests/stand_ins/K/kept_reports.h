// Keeps the reports that are made during its life.
#ifndef TESTS_STAND_INS_K_KEPT_REPORTS_H
#define TESTS_STAND_INS_K_KEPT_REPORTS_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "K_host.h"

struct KeptReport {
  std::uint32_t code;
  std::uint16_t cls;
  std::int32_t error;
  std::string text;
  bool operator==(const KeptReport&) const = default;
};

class KeptReports {
 public:
  KeptReports() { K_SetReportSink(Keep, &reports_); }
  KeptReports(const KeptReports&) = delete;
  KeptReports& operator=(const KeptReports&) = delete;
  ~KeptReports() { K_SetReportSink(nullptr, nullptr); }

  // The reports since the last call.
  std::vector<KeptReport> Take() { return std::exchange(reports_, {}); }

 private:
  static void Keep(const K_Report* report, void* context) {
    static_cast<std::vector<KeptReport>*>(context)->push_back(
        {report->code, report->cls, report->error, report->text});
  }

  std::vector<KeptReport> reports_;
};

using Reports = std::vector<KeptReport>;

#endif
