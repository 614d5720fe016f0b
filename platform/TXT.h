/* TXT: the call that PXL imports, the check of its version. C11 and C++17. */
#ifndef TXT_H
#define TXT_H

#include <stdint.h>

/* TXT_EXPORTS: TXT or its replacement is being built. TXT_STATIC: all is
 * linked into one program. Neither: TXT is imported. */
#if defined(TXT_STATIC)
#define TXT_API
#elif defined(_WIN32) && defined(TXT_EXPORTS)
#define TXT_API __declspec(dllexport)
#elif defined(_WIN32)
#define TXT_API __declspec(dllimport)
#else
#define TXT_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Returns 0 when the library matches the caller's header; reports otherwise. */
TXT_API int32_t TXT_CheckVersions(uint32_t reportCode, int32_t headerVersion);

#ifdef __cplusplus
}
#endif

#endif
