// The marks of a World record.
#ifndef WORLD_RECORD_VALIDITY_H
#define WORLD_RECORD_VALIDITY_H

#include <cstdint>

#include "PXL.h"
#include "state/messages/Messages.h"

// Whether the handle holds a live World: both marks stand. If not, reports
// under the site and gives what K makes of PXL_Err_INVALID; 0 means go on.
[[nodiscard]] std::int32_t PXLp_CheckWorld(PXLp_Site site, PXL_WorldHandle worldH);

#endif
