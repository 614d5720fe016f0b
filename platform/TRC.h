/* TRC, the logging library: the call that PXL imports. C11 and C++17. */
#ifndef TRC_H
#define TRC_H

#include <stdint.h>

/* TRC_EXPORTS: TRC or its replacement is being built. TRC_STATIC: all is
 * linked into one program. Neither: TRC is imported. */
#if defined(TRC_STATIC)
#define TRC_API
#elif defined(_WIN32) && defined(TRC_EXPORTS)
#define TRC_API __declspec(dllexport)
#elif defined(_WIN32)
#define TRC_API __declspec(dllimport)
#else
#define TRC_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Logs an event of a category. A higher level marks a more important event. */
TRC_API void TRC_Log(int32_t level, const char* category, const char* event, const char* text);

#ifdef __cplusplus
}
#endif

#endif
