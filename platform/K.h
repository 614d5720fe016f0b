/* K, the utility library: the calls and data that PXL imports.
 *
 * Handles, the recycled-pointer pool, the purge loop, memory accounting,
 * error reports and the lookup of localised texts. Valid C11 and C++17, except
 * for three functions that only C++20 declares. */
#ifndef K_H
#define K_H

#include "PXL_Types.h"

/* K_EXPORTS: K or its replacement is being built. K_STATIC: all is linked into
 * one program. Neither: K is imported. */
#if defined(K_STATIC)
#define K_API
#elif defined(_WIN32) && defined(K_EXPORTS)
#define K_API __declspec(dllexport)
#elif defined(_WIN32)
#define K_API __declspec(dllimport)
#else
#define K_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Handles. K_AllocateHandleClear returns a zero-filled block, or null after it
 * has reported the failure under `code` with the name `what`. */
K_API Handle K_AllocateHandleClear(uint32_t code, const char* what, uint64_t size);
K_API void K_FreeHandle(Handle handle);

/* One attempt at an operation that needs memory: sets *done to 1 when it
 * succeeded and to 0 when memory should be freed before the next attempt. */
typedef int32_t (*K_PurgeAttempt)(void* context, uint8_t* done);
/* Runs the attempt until it is done and frees memory between the attempts.
 * Returns the attempt's result, or 4 when no more memory could be freed. An
 * exception thrown by the attempt passes through. The remaining blocks are not
 * moved. */
K_API int32_t K_PurgeLoop(uint64_t bytesNeeded, K_PurgeAttempt attempt, void* context,
                          Boolean last);

/* Recycled pointers: large blocks of virtual memory that are kept for re-use.
 * The base address of null is null; freeing null does nothing. Blocks are freed
 * by address. */
typedef struct K_RecycledPtr* K_RecycledPtrRef;
K_API K_RecycledPtrRef K_AllocateRecycledPtr(uint32_t ownerCode, const char* label, uint64_t size);
K_API void* K_GetRecycledPtrBaseAddress(K_RecycledPtrRef ref);
K_API void K_FreeRecycledPtr(void* base);

/* Accounting: adds bytes, or with a negative sign subtracts them, in the totals
 * of application and of system memory. */
K_API void K_AccountAllocation(int32_t delta);
K_API void K_AccountSystemAllocation(int32_t delta);

/* Frees purgeable memory and moves the remaining unlocked handles. */
K_API void K_PurgeHandlesAndCompact(void);
K_API void K_Beep(void);

/* Returns 0 when the library matches the caller's header; reports otherwise. */
K_API int32_t K_CheckVersions(uint32_t reportCode, int32_t headerVersion);

/* A catalogue of localisable texts. `key` is "key path=default text"; the
 * lookup stores its result in the entry's cache words. The last entry has a
 * null key, and `count` includes it. */
typedef struct K_LStrEntry {
  const char* key;
  uintptr_t cache[3];
} K_LStrEntry;
struct K_LStrCatalogue {
  const char* moduleName;
  uintptr_t count;
  K_LStrEntry* entries;
  uintptr_t reserved;
};
/* Returns the text of an entry: its translation, or its default text. */
K_API const char* K_ZLookupLStrCache(const K_LStrCatalogue* catalogue, int32_t index, int32_t,
                                     int32_t);

/* The report being built: its text and its error number. */
extern K_API char Kp_G_buffer[1024];
extern K_API int32_t Kp_G_err_buf;

/* Reports. `code` identifies module and place; `cls` decides how the host shows
 * the report. Kp_ReportQuexErrString returns K's code for the error. */
K_API void Kp_ReportErrString(uint32_t code, uint16_t cls, const char* text);
K_API int32_t Kp_ReportQuexErrString(uint32_t code, uint16_t cls, int32_t error, const char* text);
K_API void Kp_SysEnglishError(int32_t error);
K_API void Kp_ReportError(uint32_t code, uint16_t cls);
K_API void K_ReportFailedVerification(uint32_t code, int32_t line, int32_t, const char* text);

#ifdef __cplusplus
}

#include <exception>
#include <string>

K_API std::u16string K_ZStringToUTF16String(const char* zstring);
K_API void K_ReportError(uint32_t code, uint16_t cls, const std::u16string& text);
/* Reports the exception with K's own text; returns an error code for it. */
K_API int32_t K_TranslateAndReportException(const std::exception& exception);
#endif

#endif
