/** \file
 * Functions of the stand-in Q for hosts, in addition to its import. C11 and
 * C++17. Safe on any thread. */
#ifndef Q_HOST_H
#define Q_HOST_H

#include "platform/Q.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Returns the header version that this library implements.
 * \return the interface version. */
Q_API int32_t Q_HeaderVersion(void);

#ifdef __cplusplus
}
#endif

#endif
