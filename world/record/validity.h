// The marks of a World record.
#ifndef WORLD_RECORD_VALIDITY_H
#define WORLD_RECORD_VALIDITY_H

#include <cstdint>

#include "PXL.h"
#include "state/messages/reports.h"

// Returns 0 for a handle of a live World: both marks are set. Otherwise reports
// under the site and returns K's code for PXL_Err_INVALID.
[[nodiscard]] std::int32_t PXLp_CheckWorld(PXLp_Site site, PXL_WorldHandle worldH);

#endif
