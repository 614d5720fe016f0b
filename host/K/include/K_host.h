/* What a host may set in the stand-in K, and read from it. C11 and C++17.
 *
 * Unless it says otherwise, a call is safe on any thread at any time. */
#ifndef K_HOST_H
#define K_HOST_H

#include "platform/K.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Codes -------------------------------------------------------------- */

/* K's own reports: module number 2 in the high half of the code. */
enum {
  K_Code_ADDRESS = 0x20001,  /* K_FreeRecycledPtr of an address not the pool's */
  K_Code_HANDLE = 0x20002,   /* K_FreeHandle of what is no live handle */
  K_Code_EXCEPTION = 0x20003 /* K_TranslateAndReportException */
};

/* The class of K's own reports: an error that the user should see. */
enum { K_ReportClass_ERROR = 8 };

/* The result of K_PurgeLoop when nothing is left to free. */
enum { K_Err_NO_MEMORY = 4 };

/* The version of the header that this library matches. */
K_API int32_t K_HeaderVersion(void);

/* ---- Handles ------------------------------------------------------------ */

/* The scramble switch, off at first. While it is on, every unlocked block
 * moves to a new address inside K_AllocateHandleClear, K_NewEmptyHandle,
 * K_PurgeHandlesAndCompact and K_MoveUnlockedHandles; its old place is filled
 * with K_ScramblePattern and kept for a while, so that a pointer held across
 * such a call shows the pattern. Under AddressSanitizer it is caught at once.
 * With the switch off only K_PurgeHandlesAndCompact moves blocks. */
K_API void K_SetScramble(Boolean on);
enum { K_ScramblePattern = 0xE5 };

/* The scramble step by itself, for a library whose own calls allocate: moves
 * every unlocked block when the switch is on. */
K_API void K_MoveUnlockedHandles(void);

/* A handle whose master pointer is null; null when none can be had. Quiet. */
K_API Handle K_NewEmptyHandle(void);
/* A handle with a block of unset bytes; null when the budget or the system
 * refuses. Quiet, moves nothing and frees nothing. */
K_API Handle K_NewHandle(uint64_t size);

/* Locks are flags: two locks need one unlock. Locked blocks are neither moved
 * nor purged. Null, and what is no live handle, is left alone. */
K_API void K_LockHandle(Handle handle);
K_API void K_UnlockHandle(Handle handle);

/* Whether it is a live handle, empty or not, and whether its block is locked.
 * Any pointer may be asked about; nothing is read through it. */
K_API Boolean K_IsHandle(void* pointer);
K_API Boolean K_IsHandleLocked(Handle handle);

/* Lets memory pressure take the block while it is unlocked; the master pointer
 * becomes null. K_PurgeHandle takes it at once, purgeable or not, and gives 1,
 * or 0 when it is locked, empty or no handle. */
K_API void K_SetHandlePurgeable(Handle handle, Boolean purgeable);
K_API Boolean K_PurgeHandle(Handle handle);

/* The size that was asked for; 0 for an empty handle and for what is none. */
K_API uint64_t K_GetHandleSize(Handle handle);
/* The live handles, empty ones included. */
K_API uint64_t K_CountHandles(void);

/* ---- Recycled pointers -------------------------------------------------- */

/* Bytes are those of the mapped blocks, which are whole pages and, when larger,
 * up to an eighth more than what was asked for. Kept blocks are those that wait for re-use. A hit
 * is an allocation that got a kept block. `peakBytes` is the most that live and kept blocks came to
 * together. */
typedef struct K_PoolStatistics {
  uint64_t liveBlocks, liveBytes, keptBlocks, keptBytes, peakBytes, hits, misses;
} K_PoolStatistics;
K_API void K_GetPoolStatistics(K_PoolStatistics* statistics);

/* The most bytes that are kept for re-use, applied at once; 0 keeps none. The
 * oldest go first. K_DefaultPoolLimit at first. */
K_API void K_SetPoolLimit(uint64_t bytes);
enum { K_DefaultPoolLimit = 0x20000000 };

/* Whether `base` is the address of a live block of the pool. */
K_API Boolean K_IsRecycledPtr(const void* base);

/* ---- Shortage ----------------------------------------------------------- */

/* The memory budget in bytes; 0, as at first, is none. Counted are the blocks
 * of handles, the live and the kept blocks of the pool, and the application
 * memory that was booked. Booked system memory lies in files and does not
 * count, nor can K see what its callers take from the heap. A block that would
 * go over the budget is refused, as if the system had none left; a booking is
 * never refused. */
K_API void K_SetMemoryBudget(uint64_t bytes);
K_API uint64_t K_GetMemoryBudget(void);

/* Asks the application to free memory, at least `bytesNeeded` if it can; gives
 * the bytes it freed, 0 when there was nothing. Runs on the thread that lacks
 * the memory, last of all that K tries; is not called while it runs there. */
typedef uint64_t (*K_Purger)(uint64_t bytesNeeded, void* context);
/* Purgers are asked in the order of registration. Adding gives 0 when all
 * places are taken; removing undoes one adding of the same pair, and a purger
 * that another thread is just running may still finish after it. */
enum { K_MostPurgers = 32 };
K_API Boolean K_AddPurger(K_Purger purger, void* context);
K_API void K_RemovePurger(K_Purger purger, void* context);

/* ---- Accounting --------------------------------------------------------- */

/* What was booked with K_AccountAllocation and K_AccountSystemAllocation. The
 * totals may be negative when bookings do not balance. */
typedef struct K_MemoryTotals {
  int64_t application, system, applicationPeak, systemPeak;
} K_MemoryTotals;
K_API void K_GetMemoryTotals(K_MemoryTotals* totals);

/* ---- Reports ------------------------------------------------------------ */

typedef struct K_Report {
  uint32_t code;    /* as it was reported: `module` in the high half, `site` in the low half */
  uint16_t module;  /* whose report it is; 0 when the code names none */
  uint16_t site;    /* the place in the module */
  uint16_t cls;     /* how the host shows it */
  int32_t error;    /* 0 when there is none */
  const char* text; /* UTF-8, one line without newline */
} K_Report;

/* Takes one report, which lives until the sink returns. Reports come one at a
 * time, whatever threads they were made on. */
typedef void (*K_ReportSink)(const K_Report* report, void* context);
/* Null brings back the default: a line on standard error with code, class,
 * error and text. When this returns, the old sink is no longer in use. */
K_API void K_SetReportSink(K_ReportSink sink, void* context);

/* ---- Texts --------------------------------------------------------------
 *
 * The 8-bit texts that modules look up, print into and report are in Mac OS
 * Roman. A translation may need characters that this set lacks: each run of
 * them stands in the 8-bit text as UTF-8 after K_ShiftOut, up to K_ShiftIn or
 * whatever other ASCII byte comes first. (Before an ASCII byte K_ShiftOut means
 * nothing.) Everything else of such a text is Mac
 * OS Roman as ever, so that it can serve as a print format, take 8-bit
 * arguments, be cut off, and be joined with 8-bit texts from elsewhere: only a
 * character that was cut through is lost, to U+FFFD. Reports are decoded on
 * their way to the sink; who looks texts up for showing them decodes them with
 * K_TextToUTF8. */
enum { K_ShiftOut = 0x0E, K_ShiftIn = 0x0F };

/* Decodes an 8-bit text. Writes as much of the UTF-8 text as `size` bytes
 * hold, ended by a zero byte and never within a character; gives the bytes of
 * the whole, without the zero. `utf8` may be null when `size` is 0; a null text
 * is an empty one. */
K_API uint64_t K_TextToUTF8(const char* text, char* utf8, uint64_t size);

/* A translation is a UTF-8 text of lines of the form
 *
 *     # comment
 *     $$$/OV/PXL/LStr/0028 = der Pixelpuffer wurde geleert.
 *
 * The key is that of the text in the module's catalogue, or in its code; each
 * stands once. The text runs to the end of the line; blanks around it do not
 * count, but those within an outer pair of straight double quotes do. Markup
 * such as #{rsquo} becomes its character. Empty lines and lines that start with
 * '#' are left out, and either line end, a byte-order mark and a missing last
 * line end are fine. Malformed are: text that is not UTF-8, a line without '=',
 * a key that does not start with "$$$/" or holds blanks, a key given twice, a
 * control character in a text, a text of more than K_LongestTranslation bytes.
 *
 * What has no translation, or an empty one, keeps its default text, and keys
 * that no module knows say nothing. A translation must have the placeholders of
 * the default text, since either may serve as a print format: all that starts
 * with '%', in the same order; @0 to @9 and ^^L1 in any order. One that has
 * others is refused, which TRC is told once as a problem, and the default text
 * is used. */
enum { K_LongestTranslation = 767 };

/* Put a translation, from a file or a text, in the place of the one in force;
 * null brings back the default texts, which are in force at first. 0 when it
 * cannot be read or is malformed: then the texts stay as they were, and
 * `problem`, of `size` bytes, says why in one line of UTF-8, which starts
 * "line N: " for a malformed one. `problem` may be null when `size` is 0. Texts
 * that were looked up before stay where they are, in the old language. */
K_API Boolean K_SetTranslationFile(const char* path, char* problem, uint64_t size);
K_API Boolean K_SetTranslation(const char* text, char* problem, uint64_t size);

/* The same for a language tag such as "de-AT" and a folder of translations,
 * each named after its language: takes de-AT.txt, else de.txt. A language that
 * is not there, or no tag at all, means the default texts and is no failure. */
K_API Boolean K_SetLanguage(const char* folder, const char* language, char* problem, uint64_t size);

/* ---- Signal ------------------------------------------------------------- */

/* How often K_Beep was called. */
K_API uint64_t K_CountBeeps(void);

#ifdef __cplusplus
}

#include <string>

/* The whole decoded text. */
inline std::string K_TextToUTF8(const char* text) {
  std::string utf8(K_TextToUTF8(text, nullptr, 0), '\0');
  K_TextToUTF8(text, utf8.data(), utf8.size() + 1);
  return utf8;
}
#endif

#endif
