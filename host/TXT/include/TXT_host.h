/** \file
 * Functions of the stand-in TXT for hosts, in addition to its import. C11 and
 * C++17. Safe on any thread. */
#ifndef TXT_HOST_H
#define TXT_HOST_H

#include "platform/TXT.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Returns the header version that this library implements.
 * \return the interface version. */
TXT_API int32_t TXT_HeaderVersion(void);

#ifdef __cplusplus
}
#endif

#endif
