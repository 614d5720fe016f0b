// The two memory messages.
#ifndef MEMORY_FAILURE_REPORT_H
#define MEMORY_FAILURE_REPORT_H

#include <cstdint>

#include "state/messages/Messages.h"

// Reports that byteCount bytes for an image of width x height pixels at depth
// bits cannot be had. Gives 0, or the code of what was thrown on the way; the
// message is then not reported.
std::int32_t PXLp_ReportMemoryMessage(std::uint64_t byteCount, std::int32_t width,
                                      std::int32_t height, std::int32_t depth, PXLp_Site site);

#endif
