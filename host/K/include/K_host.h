/** \file
 * Settings and readings of the stand-in K for hosts. C11 and C++17.
 *
 * Unless its description says otherwise, a call is safe on any thread at any
 * time. Sizes are in bytes. */
#ifndef K_HOST_H
#define K_HOST_H

#include "platform/K.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Codes -------------------------------------------------------------- */

/** K's own reports: module number 2 in the high half of the code. */
enum {
  K_Code_ADDRESS = 0x20001,  /**< K_FreeRecycledPtr of an address outside of the pool */
  K_Code_HANDLE = 0x20002,   /**< K_FreeHandle of a handle that is not live */
  K_Code_EXCEPTION = 0x20003 /**< K_TranslateAndReportException */
};

/** Numbers in K's reports and results. */
enum {
  K_ReportClass_ERROR = 8, /**< class of K's own reports: to be shown to the user */
  K_Err_NO_MEMORY = 4      /**< result of K_PurgeLoop when nothing is left to free */
};

/** Returns the header version that this library implements.
 * \return the interface version. */
K_API int32_t K_HeaderVersion(void);

/* ---- Handles ------------------------------------------------------------ */

/** Switches scrambling on or off; it is off at first. While it is on, every
 * unlocked block moves to a new address inside K_AllocateHandleClear,
 * K_NewEmptyHandle, K_PurgeHandlesAndCompact and K_MoveUnlockedHandles. Its old
 * place is filled with K_ScramblePattern and stays allocated for some time, so
 * that a pointer kept across such a call points to the pattern; AddressSanitizer
 * reports an access through it at once. While scrambling is off, only
 * K_PurgeHandlesAndCompact moves blocks.
 * \param on 1 or 0. */
K_API void K_SetScramble(Boolean on);
/** Patterns in memory. */
enum {
  K_ScramblePattern = 0xE5 /**< the old place of a block that moved */
};

/** Moves every unlocked block if scrambling is on. For libraries whose own calls
 * allocate memory. */
K_API void K_MoveUnlockedHandles(void);

/** Makes a handle whose master pointer is null. Reports nothing.
 * \return the handle, which the caller frees; null when memory is short. */
K_API Handle K_NewEmptyHandle(void);
/** Makes a handle with a block of unset bytes. Reports, moves and frees nothing.
 * \param size in bytes.
 * \return the handle, which the caller frees; null when the budget or the system
 *     refuses. */
K_API Handle K_NewHandle(uint64_t size);

/** Locks the block of a handle: while it is locked, it neither moves nor is
 * purged. A lock is a flag: one unlock undoes any number of locks.
 * \param handle null, or a handle that is not live, has no effect. */
K_API void K_LockHandle(Handle handle);
/** Unlocks the block of a handle.
 * \param handle null, or a handle that is not live, has no effect. */
K_API void K_UnlockHandle(Handle handle);

/** Returns whether a pointer is a live handle, empty or not.
 * \param pointer any; nothing is read through it.
 * \return 1 or 0. */
K_API Boolean K_IsHandle(void* pointer);
/** Returns whether the block of a handle is locked.
 * \param handle any; nothing is read through it.
 * \return 1 or 0; 0 also when the handle is not live. */
K_API Boolean K_IsHandleLocked(Handle handle);

/** Sets whether K may purge the block, while it is unlocked, when memory is short;
 * the master pointer of a purged block is null.
 * \param handle null, or a handle that is not live, has no effect.
 * \param purgeable 1 or 0. */
K_API void K_SetHandlePurgeable(Handle handle, Boolean purgeable);
/** Purges the block at once, purgeable or not.
 * \param handle any.
 * \return 1, or 0 when the handle is locked, empty or not live. */
K_API Boolean K_PurgeHandle(Handle handle);

/** Returns the size of a handle's block.
 * \param handle any.
 * \return the requested bytes; 0 when the handle is empty or not live. */
K_API uint64_t K_GetHandleSize(Handle handle);
/** Returns the number of live handles.
 * \return the number, empty ones included. */
K_API uint64_t K_CountHandles(void);

/* ---- Recycled pointers -------------------------------------------------- */

/** The pool of recycled pointers. Byte counts are those of whole blocks: a block
 * has the requested size rounded up to whole pages and, when large, up to an
 * eighth more. A re-used block is at most a quarter larger than a new one. */
typedef struct K_PoolStatistics {
  uint64_t liveBlocks; /**< blocks that are allocated */
  uint64_t liveBytes;  /**< their bytes */
  uint64_t keptBlocks; /**< freed blocks that are kept for re-use */
  uint64_t keptBytes;  /**< their bytes */
  uint64_t peakBytes;  /**< the highest sum of liveBytes and keptBytes */
  uint64_t hits;       /**< allocations that re-used a kept block */
  uint64_t misses;     /**< all others, failed ones included */
} K_PoolStatistics;
/** Reads the state of the pool.
 * \param[out] statistics receives the state; not null. */
K_API void K_GetPoolStatistics(K_PoolStatistics* statistics);

/** Sets the limit of the bytes that are kept for re-use; K_DefaultPoolLimit at
 * first. Kept blocks above the limit are freed at once, the oldest first.
 * \param bytes the limit; 0 keeps no block. */
K_API void K_SetPoolLimit(uint64_t bytes);
/** Returns the limit of the bytes that are kept for re-use.
 * \return the limit. */
K_API uint64_t K_GetPoolLimit(void);
/** Defaults of the pool. */
enum {
  K_DefaultPoolLimit = 0x20000000 /**< the limit of kept bytes: 512 MiB */
};

/** Returns whether an address is the start of a live block of the pool.
 * \param base any address.
 * \return 1 or 0. */
K_API Boolean K_IsRecycledPtr(const void* base);

/* ---- Checks of recycled pointers ---------------------------------------- */

/** Checks that find stray accesses, for debugging; their values are added. All
 * are off at first. They cost time and memory: guards and fences add one page
 * each on either side of a block, which neither the statistics nor the budget
 * count. With them a block has exactly the pages that its size needs, so that it
 * is re-used only for the same number of pages. */
enum {
  /** The bytes between the requested size and the end of the block, and a page on
   * either side, are filled with K_PoolGuardPattern and compared when the block
   * is freed. A difference is reported as K_Code_GUARD. */
  K_PoolCheck_GUARDS = 1,
  /** A page on either side, outside of the guards if there are any, cannot be
   * read or written: an access ends the program. */
  K_PoolCheck_FENCES = 2,
  /** Freed blocks are filled with K_PoolFreedPattern. Kept blocks are compared
   * when they are re-used or released to the system; a difference is reported as
   * K_Code_STALE. */
  K_PoolCheck_FILL = 4
};
/** Byte values with which the checks fill memory. */
enum {
  K_PoolGuardPattern = 0xA9, /**< guards */
  K_PoolFreedPattern = 0xDB  /**< freed blocks */
};
/** Codes of the reports of the checks. */
enum {
  K_Code_GUARD = 0x20004, /**< a write outside a block */
  K_Code_STALE = 0x20005  /**< a write into a block after it was freed */
};

/** Sets the checks. Blocks that are live keep the guards and fences that they were
 * made with and are checked accordingly; when these differ from the new ones,
 * the blocks are not kept for re-use.
 * \param checks the sum of the checks that are on. */
K_API void K_SetPoolChecks(uint32_t checks);
/** Returns the checks.
 * \return the sum of the checks that are on. */
K_API uint32_t K_GetPoolChecks(void);

/* ---- Shortage ----------------------------------------------------------- */

/** Sets the memory budget. It counts the blocks of handles, the live and the kept
 * blocks of the pool, and the application memory that was booked. It does not
 * count booked system memory, which lies in files, and heap memory of callers,
 * which K does not know. A block that would exceed the budget is refused, as if
 * the system were out of memory; a booking is never refused.
 * \param bytes the budget; 0, the initial value, means none. */
K_API void K_SetMemoryBudget(uint64_t bytes);
/** Returns the budget that was set.
 * \return the bytes; 0 when there is none. */
K_API uint64_t K_GetMemoryBudget(void);

/** A routine of the application that frees memory, at least `bytesNeeded` if
 * possible. Returns the bytes freed, 0 when there were none. K calls it on the
 * thread that needs the memory, after all other ways to free memory, and never
 * while a purger runs on that thread. */
typedef uint64_t (*K_Purger)(uint64_t bytesNeeded, void* context);
/** Limit of purgers. */
enum {
  K_MostPurgers = 32 /**< purgers registered at the same time */
};
/** Registers a purger. Purgers are called in the order of registration.
 * \param purger the routine.
 * \param context passed to each call; K does not own it.
 * \return 1, or 0 when `purger` is null or K_MostPurgers are registered. */
K_API Boolean K_AddPurger(K_Purger purger, void* context);
/** Removes one registration of this purger and context. A call of the purger on
 * another thread may still run when this returns.
 * \param purger as it was registered.
 * \param context as it was registered. */
K_API void K_RemovePurger(K_Purger purger, void* context);

/* ---- Limits and refusals ------------------------------------------------ */

/** Sources of a memory limit or of a refusal. */
enum {
  K_MemoryLimit_NONE = 0,   /**< none */
  K_MemoryLimit_BUDGET = 1, /**< the application, with K_SetMemoryBudget */
  K_MemoryLimit_GROUP = 2,  /**< the limit of the process group, as in a container */
  K_MemoryLimit_SYSTEM = 3  /**< the system: out of memory or of address space */
};

/** The budget in force. If the application sets none, the limits of the process
 * group and of the groups around it apply: the budget is the tightest limit less
 * the memory of the group that K does not count, which is the process' own heap
 * and the group's other processes. Pages of files that the group read count as
 * free. On Linux the limits are memory.max and memory.high of control groups of
 * version 2, mounted at /sys/fs/cgroup; without such a limit, and on other
 * systems, there is no such budget. A budget of UINT64_MAX overrides the limits
 * of the group.
 *
 * The limits are read at the first allocation, each time K's memory has grown by
 * a sixteenth of the limit since the last reading, and before each refusal. After
 * a reading that found no limit they are not read again. */
typedef struct K_MemoryBudget {
  uint64_t bytes; /**< 0 when there is none */
  uint64_t used;  /**< the bytes that count towards it now */
  int32_t setBy;  /**< K_MemoryLimit_NONE, _BUDGET or _GROUP */
} K_MemoryBudget;
/** Reads the budget in force.
 * \param[out] budget receives the budget; not null. */
K_API void K_GetMemoryBudgetInForce(K_MemoryBudget* budget);

/** Reads the limits of the process group again, now and in future from the files
 * root/proc/self/cgroup and root/sys/fs/cgroup.
 * \param root the folder above them; null means the root of the file system.
 * \return 1; or 0, without an effect, when `root` is longer than 1023 bytes. */
K_API Boolean K_ReadMemoryGroup(const char* root);

/** The refused allocations so far; each is logged at TRC_Level_NOTE as well. Every
 * attempt of a purge loop counts, even if a later attempt succeeds. */
typedef struct K_MemoryRefusals {
  int32_t last;       /**< K_MemoryLimit_*: the source of the last refusal */
  uint64_t lastBytes; /**< its size; 0 for K's own tables */
  uint64_t byBudget;  /**< number of refusals by the application's budget */
  uint64_t byGroup;   /**< number by the limits of the process group */
  uint64_t bySystem;  /**< number by the system */
} K_MemoryRefusals;
/** Reads the refusals so far.
 * \param[out] refusals receives the refusals; not null. */
K_API void K_GetMemoryRefusals(K_MemoryRefusals* refusals);

/* ---- Accounting --------------------------------------------------------- */

/** The sums of the bookings of K_AccountAllocation and K_AccountSystemAllocation, in
 * bytes. A sum is negative when more was released than allocated. */
typedef struct K_MemoryTotals {
  int64_t application;     /**< application memory */
  int64_t system;          /**< system memory */
  int64_t applicationPeak; /**< the highest value of `application` */
  int64_t systemPeak;      /**< the highest value of `system` */
} K_MemoryTotals;
/** Reads the sums of the bookings.
 * \param[out] totals receives the sums; not null. */
K_API void K_GetMemoryTotals(K_MemoryTotals* totals);

/* ---- Time line ---------------------------------------------------------- */

/** The events that cause a sample. */
enum {
  K_TimeLineEvent_START = 0,   /**< the time line was switched on */
  K_TimeLineEvent_BLOCKS = 1,  /**< a recycled pointer was allocated or freed, or
                                    kept blocks were released */
  K_TimeLineEvent_HANDLES = 2, /**< a handle was made, freed or purged */
  K_TimeLineEvent_BOOKING = 3, /**< memory was booked */
  K_TimeLineEvent_PURGE = 4,   /**< a round of the purge loop ended, or
                                    K_PurgeHandlesAndCompact freed memory */
  K_TimeLineEvent_FAILURE = 5  /**< a refusal, see K_MemoryRefusals */
};

/** K's memory at one moment. */
typedef struct K_TimeLineSample {
  uint64_t nanoseconds; /**< since the time line was switched on, by a monotonic
                             clock: never less than in the sample before */
  uint64_t liveBytes;   /**< of the pool: see K_PoolStatistics */
  uint64_t keptBytes;   /**< of the pool: see K_PoolStatistics */
  uint64_t handleBytes; /**< the sizes of all handles */
  int64_t application;  /**< booked: see K_MemoryTotals */
  int64_t system;       /**< booked: see K_MemoryTotals */
  uint64_t purges;      /**< purges since the time line was switched on */
  uint64_t failures;    /**< refusals since the time line was switched on */
  int32_t event;        /**< K_TimeLineEvent_* */
  uint32_t changes;     /**< number of changes that the sample represents */
} K_TimeLineSample;

/** Switches the time line on or off; it is off at first. Switching it on discards
 * all samples, takes a first one, and from then on one at each change. Switching
 * it off keeps the samples for K_ReadTimeLine. A change costs one comparison
 * while it is off and a fraction of a microsecond while it is on.
 * \param on 1 or 0. */
K_API void K_SetTimeLine(Boolean on);
/** Returns whether the time line is on.
 * \return 1 or 0. */
K_API Boolean K_IsTimeLineOn(void);

/** Copies the latest samples, the oldest first. The last one is always the latest
 * change.
 *
 * There are at most K_MostTimeLineSamples. When there is no room for more,
 * neighbouring samples are merged, and from then on each represents twice as many
 * changes. The sample with the most memory (the sum of live, kept, in handles and
 * booked by the application) represents the others: no peak is lost, but a short
 * minimum or an event may be; the counts include all of them. If the latest
 * change is represented by an earlier sample, it follows as a last sample of its
 * own whose `changes` is 0.
 * \param[out] samples receives the samples; null to ask for their number.
 * \param capacity the largest number of samples to copy.
 * \return the number of samples copied; if `samples` is null, of those present. */
K_API uint64_t K_ReadTimeLine(K_TimeLineSample* samples, uint64_t capacity);
/** Limit of the time line. */
enum {
  K_MostTimeLineSamples = 4096 /**< samples */
};

/* ---- Reports ------------------------------------------------------------ */

/** One report. */
typedef struct K_Report {
  uint32_t code;    /**< as reported: `module` in the high half, `site` in the low */
  uint16_t module;  /**< the number of the module; 0 when the code names none */
  uint16_t site;    /**< the place in the module */
  uint16_t cls;     /**< the class, which decides how the host shows it */
  int32_t error;    /**< 0 when there is none */
  const char* text; /**< UTF-8, one line without a newline */
} K_Report;

/** Receives one report, which is valid until the sink returns. K calls the sink on
 * the thread that reports, for one report at a time. The sink may call K. */
typedef void (*K_ReportSink)(const K_Report* report, void* context);
/** Replaces the sink. When this returns, no other thread runs the old one.
 * \param sink receives the reports; null restores the default, which prints a line
 *     with code, class, error and text on standard error.
 * \param context passed to each call of the sink; K does not own it. */
K_API void K_SetReportSink(K_ReportSink sink, void* context);

/* ---- Texts -------------------------------------------------------------- */

/** The marks of shifted text. The 8-bit texts that modules look up, print into
 * and report are in Mac OS Roman. A translation may need characters that this
 * set lacks: each run of them is stored in the 8-bit text as UTF-8 after
 * K_ShiftOut, up to K_ShiftIn or the first other ASCII byte. (K_ShiftOut before
 * an ASCII byte has no effect.) All other bytes of such a text are Mac OS Roman,
 * so that it can be used as a print format, take 8-bit arguments, be cut, and be
 * joined with other 8-bit texts; a cut through a character replaces that
 * character by U+FFFD. Reports are decoded before they reach the sink; a host
 * that looks up texts to show them decodes them with K_TextToUTF8. */
enum {
  K_ShiftOut = 0x0E, /**< UTF-8 from here */
  K_ShiftIn = 0x0F   /**< Mac OS Roman from here */
};

/** Decodes an 8-bit text. Writes as many whole characters of the UTF-8 text as
 * fit, and a zero byte.
 * \param text the 8-bit text; null means an empty one.
 * \param[out] utf8 receives the text; may be null when `size` is 0.
 * \param size the bytes at `utf8`.
 * \return the bytes of the complete UTF-8 text, without the zero byte. */
K_API uint64_t K_TextToUTF8(const char* text, char* utf8, uint64_t size);

/** Limits of translations. A translation is a UTF-8 text of lines of the form
 * \code{.unparsed}
 *     # comment
 *     $$$/OV/PXL/LStr/0028 = der Pixelpuffer wurde geleert.
 * \endcode
 *
 * The key is that of the text in the module's catalogue or code; each key occurs
 * once. The text ends with the line. Blanks around it are ignored, except within
 * an outer pair of straight double quotes. Markup such as #{rsquo} becomes its
 * character. Empty lines and lines that start with '#' are ignored; both kinds of
 * line end, a byte-order mark and a missing last line end are allowed. A
 * translation is malformed if it is not UTF-8, or contains a line without '=', a
 * key that does not start with "$$$/" or contains blanks, the same key twice, a
 * control character in a key or a text, or a text of more than
 * K_LongestTranslation bytes. Files of more than 4 MiB, pipes and devices are
 * refused.
 *
 * A key without a translation, or with an empty one, keeps its default text; keys
 * that no module uses are ignored. A translation must have the placeholders of
 * the default text, since either may be used as a print format: all that start
 * with `%`, in the same order; @0 to @9 and ^^L1 in any order. A translation with
 * others is logged once at TRC_Level_PROBLEM, and the default text is used. */
enum {
  K_LongestTranslation = 767 /**< bytes of a text */
};

/** Replaces the translation in force by that of a file. Texts that were looked up
 * before stay valid and unchanged.
 * \param path the file, in UTF-8; null restores the default texts, which are in
 *     force at first.
 * \param[out] problem receives the reason of a failure, one line of UTF-8, which
 *     starts "line N: " when the file is malformed, and an empty text on success;
 *     may be null when `size` is 0.
 * \param size the bytes at `problem`.
 * \return 1, or 0 when the file cannot be read or is malformed: then the
 *     translation in force does not change. */
K_API Boolean K_SetTranslationFile(const char* path, char* problem, uint64_t size);
/** Like K_SetTranslationFile, with the content of the file.
 * \param text the translation; null restores the default texts.
 * \param[out] problem as for K_SetTranslationFile.
 * \param size the bytes at `problem`.
 * \return 1 or 0, as for K_SetTranslationFile. */
K_API Boolean K_SetTranslation(const char* text, char* problem, uint64_t size);

/** Like K_SetTranslationFile, for a language and a folder with a file for each
 * language. A language without a file, and a text that is not a language tag,
 * select the default texts and are not a failure.
 * \param folder the folder, in UTF-8; null selects the default texts.
 * \param language a tag such as "de-AT", which selects de-AT.txt, else de.txt;
 *     null selects the default texts.
 * \param[out] problem as for K_SetTranslationFile.
 * \param size the bytes at `problem`.
 * \return 1 or 0, as for K_SetTranslationFile. */
K_API Boolean K_SetLanguage(const char* folder, const char* language, char* problem, uint64_t size);

/* ---- Signal ------------------------------------------------------------- */

/** Returns the number of calls of K_Beep in this process.
 * \return the number. */
K_API uint64_t K_CountBeeps(void);

#ifdef __cplusplus
}

#include <string>

/** Decodes an 8-bit text.
 * \param text the 8-bit text; null means an empty one.
 * \return the complete text, in UTF-8. */
inline std::string K_TextToUTF8(const char* text) {
  std::string utf8(K_TextToUTF8(text, nullptr, 0), '\0');
  K_TextToUTF8(text, utf8.data(), utf8.size() + 1);
  return utf8;
}
#endif

#endif
