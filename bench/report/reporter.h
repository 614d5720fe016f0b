// Prints each row as it is done.
#ifndef BENCH_REPORT_REPORTER_H
#define BENCH_REPORT_REPORTER_H

#include <benchmark/benchmark.h>

#include "bench/harness/session.h"

namespace bench {

class Reporter : public benchmark::BenchmarkReporter {
 public:
  explicit Reporter(Session& session) : session_(&session) {}

  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  Session* session_;
  std::size_t printed_ = 0;
};

}  // namespace bench

#endif
