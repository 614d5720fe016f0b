// The calls that make up a report, as they stand in the log.
#ifndef TESTS_CONTRACT_STATE_EXPECTED_REPORTS_H
#define TESTS_CONTRACT_STATE_EXPECTED_REPORTS_H

#include <string>
#include <vector>

using Calls = std::vector<std::string>;

// One list after the other.
Calls Together(const std::vector<Calls>& parts);

// A damaged World.
Calls DamagedWorldReport(const std::string& code);
// Memory is short for an image of this size.
Calls ShortageReport(const std::string& code, int width, int height, int bitsPerChannel);
// An image of this size is larger than any frame.
Calls LimitReport(const std::string& code, int width, int height, int bitsPerChannel,
                  const std::string& gigabytes);
// Any other error with the pixels.
Calls BufferReport(const std::string& code, int error);

#endif
