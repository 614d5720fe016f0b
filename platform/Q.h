/* Q: the call that PXL imports, the check of its version. C11 and C++17. */
#ifndef Q_H
#define Q_H

#include <stdint.h>

/* Q_EXPORTS: Q or its replacement is being built. Q_STATIC: all is
 * linked into one program. Neither: Q is imported. */
#if defined(Q_STATIC)
#define Q_API
#elif defined(_WIN32) && defined(Q_EXPORTS)
#define Q_API __declspec(dllexport)
#elif defined(_WIN32)
#define Q_API __declspec(dllimport)
#else
#define Q_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Returns 0 when the library matches the caller's header; reports otherwise. */
Q_API int32_t Q_CheckVersions(uint32_t reportCode, int32_t headerVersion);

#ifdef __cplusplus
}
#endif

#endif
