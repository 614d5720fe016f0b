/** \file
 * What a host may ask of the stand-in Q besides its import. C11 and C++17. */
#ifndef Q_HOST_H
#define Q_HOST_H

#include "platform/Q.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Tells the version of the header that this library matches.
 * \return the interface version. */
Q_API int32_t Q_HeaderVersion(void);

#ifdef __cplusplus
}
#endif

#endif
