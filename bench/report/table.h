// The results as lines of text: on the terminal and in a paper.
#ifndef BENCH_REPORT_TABLE_H
#define BENCH_REPORT_TABLE_H

#include <string>

#include "bench/harness/session.h"

namespace bench {

std::string TerminalHeading();
std::string TerminalLine(const Result& result);
// Means, omitted rows, missed goals, and rows that could not be measured.
std::string Closing(const Session& session);

// A Markdown table with a heading for each subject.
std::string Markdown(const Session& session);

}  // namespace bench

#endif
