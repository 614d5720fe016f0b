/** \file
 * What a host may ask of the stand-in TXT besides its import. C11 and C++17. */
#ifndef TXT_HOST_H
#define TXT_HOST_H

#include "platform/TXT.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Tells the version of the header that this library matches.
 * \return the interface version. */
TXT_API int32_t TXT_HeaderVersion(void);

#ifdef __cplusplus
}
#endif

#endif
