// Prints a line for each row.
#include "bench/report/reporter.h"

#include <iostream>

#include "bench/harness/machine.h"
#include "bench/report/table.h"

namespace bench {

bool Reporter::ReportContext(const Context& /*context*/) {
  GetOutputStream() << MachineText() << "\n" << TerminalHeading() << std::flush;
  return true;
}

void Reporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (!run.error_occurred) continue;
    session_->failures.push_back(run.run_name.function_name + ": " + run.error_message);
    GetErrorStream() << session_->failures.back() << "\n";
  }
  for (; printed_ < session_->results.size(); ++printed_) {
    GetOutputStream() << TerminalLine(session_->results[printed_]) << std::flush;
  }
}

void Reporter::Finalize() {
  GetOutputStream() << Closing(*session_) << std::flush;
}

}  // namespace bench
