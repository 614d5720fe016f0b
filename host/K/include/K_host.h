/** \file
 * What a host may set in the stand-in K, and read from it. C11 and C++17.
 *
 * Unless it says otherwise, a call is safe on any thread at any time. */
#ifndef K_HOST_H
#define K_HOST_H

#include "platform/K.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Codes -------------------------------------------------------------- */

/** K's own reports: module number 2 in the high half of the code. */
enum {
  K_Code_ADDRESS = 0x20001,  /**< K_FreeRecycledPtr of an address not the pool's */
  K_Code_HANDLE = 0x20002,   /**< K_FreeHandle of what is no live handle */
  K_Code_EXCEPTION = 0x20003 /**< K_TranslateAndReportException */
};

/** Numbers that K's reports and results hold. */
enum {
  K_ReportClass_ERROR = 8, /**< class of K's own reports: the user should see it */
  K_Err_NO_MEMORY = 4      /**< of K_PurgeLoop, when nothing is left to free */
};

/** Tells the version of the header that this library matches.
 * \return the interface version. */
K_API int32_t K_HeaderVersion(void);

/* ---- Handles ------------------------------------------------------------ */

/** Turns the scramble switch, off at first. While it is on, every unlocked block
 * moves to a new address inside K_AllocateHandleClear, K_NewEmptyHandle,
 * K_PurgeHandlesAndCompact and K_MoveUnlockedHandles; its old place is filled
 * with K_ScramblePattern and kept for a while, so that a pointer held across
 * such a call shows the pattern. Under AddressSanitizer it is caught at once.
 * With the switch off only K_PurgeHandlesAndCompact moves blocks.
 * \param on 1 or 0. */
K_API void K_SetScramble(Boolean on);
/** Patterns in memory. */
enum {
  K_ScramblePattern = 0xE5 /**< where a block was before it moved */
};

/** The scramble step by itself, for a library whose own calls allocate: moves
 * every unlocked block when the switch is on. */
K_API void K_MoveUnlockedHandles(void);

/** Makes a handle whose master pointer is null. Quiet.
 * \return the handle, the caller's to free; null when none can be had. */
K_API Handle K_NewEmptyHandle(void);
/** Makes a handle with a block of unset bytes. Quiet, moves nothing and frees
 * nothing.
 * \param size in bytes.
 * \return the handle, the caller's to free; null when the budget or the system
 *     refuses. */
K_API Handle K_NewHandle(uint64_t size);

/** Locks are flags: two locks need one unlock. Locked blocks are neither moved
 * nor purged.
 * \param handle null, and what is no live handle, is left alone. */
K_API void K_LockHandle(Handle handle);
/** Takes the lock back, however often it was set.
 * \param handle null, and what is no live handle, is left alone. */
K_API void K_UnlockHandle(Handle handle);

/** Tells whether something is a live handle, empty or not.
 * \param pointer any; nothing is read through it.
 * \return 1 or 0. */
K_API Boolean K_IsHandle(void* pointer);
/** Tells whether the block of a handle is locked.
 * \param handle any; nothing is read through it.
 * \return 1, or 0, also for what is no live handle. */
K_API Boolean K_IsHandleLocked(Handle handle);

/** Lets memory pressure take the block while it is unlocked; the master pointer
 * becomes null.
 * \param handle null, and what is no live handle, is left alone.
 * \param purgeable 1 or 0. */
K_API void K_SetHandlePurgeable(Handle handle, Boolean purgeable);
/** Takes the block at once, purgeable or not.
 * \param handle any.
 * \return 1, or 0 when it is locked, empty or no handle. */
K_API Boolean K_PurgeHandle(Handle handle);

/** Tells the size of a handle's block.
 * \param handle any.
 * \return the bytes that were asked for; 0 for an empty handle and for what is
 *     none. */
K_API uint64_t K_GetHandleSize(Handle handle);
/** Counts the live handles.
 * \return their number, empty ones included. */
K_API uint64_t K_CountHandles(void);

/* ---- Recycled pointers -------------------------------------------------- */

/** The pool of recycled pointers. Bytes are those of the blocks, which are whole
 * pages and, when larger, up to an eighth more than what was asked for. A re-used
 * block is at most a quarter larger than a new one would be. */
typedef struct K_PoolStatistics {
  uint64_t liveBlocks; /**< blocks that are allocated */
  uint64_t liveBytes;  /**< their bytes */
  uint64_t keptBlocks; /**< freed blocks that wait for re-use */
  uint64_t keptBytes;  /**< their bytes */
  uint64_t peakBytes;  /**< the most that both came to together */
  uint64_t hits;       /**< allocations that got a kept block */
  uint64_t misses;     /**< those that had to ask the system, with success or without */
} K_PoolStatistics;
/** Tells the state of the pool.
 * \param[out] statistics receives it. */
K_API void K_GetPoolStatistics(K_PoolStatistics* statistics);

/** Sets the most bytes that are kept for re-use, applied at once; the oldest go
 * first. K_DefaultPoolLimit at first.
 * \param bytes the limit; 0 keeps none. */
K_API void K_SetPoolLimit(uint64_t bytes);
/** Tells the most bytes that are kept for re-use.
 * \return the limit. */
K_API uint64_t K_GetPoolLimit(void);
/** Limits at first. */
enum {
  K_DefaultPoolLimit = 0x20000000 /**< bytes that the pool keeps */
};

/** Tells whether an address is that of a live block of the pool.
 * \param base any address.
 * \return 1 or 0. */
K_API Boolean K_IsRecycledPtr(const void* base);

/* ---- Checks of recycled pointers ---------------------------------------- */

/** Ways to find stray accesses, for debugging; the sum of those that are on.
 * None is on at first. They cost time and pages: guards and fences are a page
 * each on either side of a block, not counted in the statistics or the budget,
 * and keep each block to the whole pages that its size needs, so that the
 * re-use of nearly the same size ends. */
enum {
  /** What lies between the size and the end of the block, and a page on either
   * side, is filled with K_PoolGuardPattern and compared when the block is
   * freed. A difference is reported as K_Code_GUARD. */
  K_PoolCheck_GUARDS = 1,
  /** A page on either side, beyond the guards if there are any, that cannot be
   * read or written: an access ends the program. */
  K_PoolCheck_FENCES = 2,
  /** Freed blocks are filled with K_PoolFreedPattern. Those that are kept are
   * compared when they are used again or given back; a difference is reported
   * as K_Code_STALE. */
  K_PoolCheck_FILL = 4
};
/** What the checks fill memory with. */
enum {
  K_PoolGuardPattern = 0xA9, /**< guards */
  K_PoolFreedPattern = 0xDB  /**< freed blocks */
};
/** What K reports it under. */
enum {
  K_Code_GUARD = 0x20004, /**< a write outside a block */
  K_Code_STALE = 0x20005  /**< a write into a block after it was freed */
};

/** Sets the checks. Blocks that are live now stay as they are and are checked for
 * what they were made with; unlike new ones, they are not kept for re-use any
 * more.
 * \param checks the sum of those that are on. */
K_API void K_SetPoolChecks(uint32_t checks);
/** Tells the checks.
 * \return the sum of those that are on. */
K_API uint32_t K_GetPoolChecks(void);

/* ---- Shortage ----------------------------------------------------------- */

/** Sets the memory budget. Counted are the blocks
 * of handles, the live and the kept blocks of the pool, and the application
 * memory that was booked. Booked system memory lies in files and does not
 * count, nor can K see what its callers take from the heap. A block that would
 * go over the budget is refused, as if the system had none left; a booking is
 * never refused.
 * \param bytes the budget; 0, as at first, is none. */
K_API void K_SetMemoryBudget(uint64_t bytes);
/** Tells the budget that was set.
 * \return the bytes; 0 when there is none. */
K_API uint64_t K_GetMemoryBudget(void);

/** Asks the application to free memory, at least `bytesNeeded` if it can; gives
 * the bytes it freed, 0 when there was nothing. Runs on the thread that lacks
 * the memory, last of all that K tries; is not called while it runs there. */
typedef uint64_t (*K_Purger)(uint64_t bytesNeeded, void* context);
/** Places for purgers. */
enum {
  K_MostPurgers = 32 /**< so many at a time */
};
/** Adds a purger. They are asked in the order of registration.
 * \param purger what frees memory.
 * \param context handed to it.
 * \return 1, or 0 when all places are taken. */
K_API Boolean K_AddPurger(K_Purger purger, void* context);
/** Undoes one adding of the same pair. A purger that another thread is just
 * running may still finish after it.
 * \param purger as it was added.
 * \param context as it was added. */
K_API void K_RemovePurger(K_Purger purger, void* context);

/* ---- Limits and refusals ------------------------------------------------ */

/** Who sets a limit of memory. */
enum {
  K_MemoryLimit_NONE = 0,   /**< nobody */
  K_MemoryLimit_BUDGET = 1, /**< the application, with K_SetMemoryBudget */
  K_MemoryLimit_GROUP = 2,  /**< the system, for the group of processes that this
                                 one belongs to, as in a container */
  K_MemoryLimit_SYSTEM = 3  /**< the system: it had none left, or no address space */
};

/** The budget that is in force. While the application sets none, it is what the
 * tightest limit of the process group, and of the groups around it, leaves for
 * what K counts: the limit less what others use, the process' own heap and the
 * group's other processes. Pages of files that the group read count as free.
 * On Linux the limits are memory.max and memory.high of control groups of
 * version 2, mounted at /sys/fs/cgroup; elsewhere, and where nothing is limited,
 * there is no such budget. A budget of UINT64_MAX sets the group's limit aside.
 *
 * The limits are read when memory is first asked for, whenever K's memory has
 * grown by a sixteenth of the limit since, and before each refusal; once that
 * finds no limit, it is not done again. */
typedef struct K_MemoryBudget {
  uint64_t bytes; /**< 0 when nobody sets one */
  uint64_t used;  /**< what counts towards it now */
  int32_t setBy;  /**< K_MemoryLimit_NONE, _BUDGET or _GROUP */
} K_MemoryBudget;
/** Tells the budget that is in force.
 * \param[out] budget receives it. */
K_API void K_GetMemoryBudgetInForce(K_MemoryBudget* budget);

/** Reads the limits of the process group anew, from here on out of the files
 * root/proc/self/cgroup and root/sys/fs/cgroup.
 * \param root the folder above them; null is the system's own.
 * \return 1; or 0, and does nothing, when the name has more than 1023 bytes. */
K_API Boolean K_ReadMemoryGroup(const char* root);

/** The refusals of memory so far, each also logged at TRC_Level_NOTE. The purge
 * loop may have found memory after one; each try counts. */
typedef struct K_MemoryRefusals {
  int32_t last;       /**< K_MemoryLimit_*: who refused last */
  uint64_t lastBytes; /**< what K asked for; 0 for its own tables */
  uint64_t byBudget;  /**< so many by the application's budget */
  uint64_t byGroup;   /**< by the limits of the process group */
  uint64_t bySystem;  /**< by the system */
} K_MemoryRefusals;
/** Tells the refusals so far.
 * \param[out] refusals receives them. */
K_API void K_GetMemoryRefusals(K_MemoryRefusals* refusals);

/* ---- Accounting --------------------------------------------------------- */

/** What was booked, in bytes, with K_AccountAllocation and K_AccountSystemAllocation. The
 * totals may be negative when bookings do not balance. */
typedef struct K_MemoryTotals {
  int64_t application;     /**< application memory */
  int64_t system;          /**< system memory */
  int64_t applicationPeak; /**< the most that application memory came to */
  int64_t systemPeak;      /**< the most that system memory came to */
} K_MemoryTotals;
/** Tells what was booked.
 * \param[out] totals receives it. */
K_API void K_GetMemoryTotals(K_MemoryTotals* totals);

/* ---- Time line ---------------------------------------------------------- */

/** What a sample was taken for. */
enum {
  K_TimeLineEvent_START = 0,   /**< the time line was switched on */
  K_TimeLineEvent_BLOCKS = 1,  /**< a recycled pointer was allocated or freed, or
                                    kept blocks were given back */
  K_TimeLineEvent_HANDLES = 2, /**< a handle was made, freed or purged */
  K_TimeLineEvent_BOOKING = 3, /**< memory was booked */
  K_TimeLineEvent_PURGE = 4,   /**< a round of the purge loop has ended, or a
                                    K_PurgeHandlesAndCompact has freed its part */
  K_TimeLineEvent_FAILURE = 5  /**< a refusal, see K_MemoryRefusals */
};

/** All of K's memory at one moment. */
typedef struct K_TimeLineSample {
  uint64_t nanoseconds; /**< since the switching on, by a clock that is never set;
                             never less than the one before */
  uint64_t liveBytes;   /**< of the pool, see K_PoolStatistics */
  uint64_t keptBytes;   /**< of the pool, see K_PoolStatistics */
  uint64_t handleBytes; /**< of the blocks of handles */
  int64_t application;  /**< booked, see K_MemoryTotals */
  int64_t system;       /**< booked, see K_MemoryTotals */
  uint64_t purges;      /**< so many since the switching on */
  uint64_t failures;    /**< so many since the switching on */
  int32_t event;        /**< K_TimeLineEvent_* */
  uint32_t changes;     /**< the changes that the sample stands for */
} K_TimeLineSample;

/** Switches the time line. Switching on forgets what was recorded, takes a first
 * sample and then one at each change. Switching off leaves what was recorded to
 * be read. Off at first; costs next to nothing then, and a fraction of a
 * microsecond a change while it is on.
 * \param on 1 or 0. */
K_API void K_SetTimeLine(Boolean on);
/** Tells whether the time line is on.
 * \return 1 or 0. */
K_API Boolean K_IsTimeLineOn(void);

/** Copies the latest samples, the oldest first. The last one is always the latest
 * change.
 *
 * There are never more than K_MostTimeLineSamples. When so many changes came
 * that the room is used up, neighbouring samples are merged, and from then on
 * each stands for twice as many changes. Of those it is the one with the most
 * memory, live, kept, in handles and booked by the application together: no
 * peak is lost, a short trough may be, and so may an event; the counts tell of
 * all. A last sample that is there for being the latest, though its neighbour
 * stands for its change, has no changes.
 * \param[out] samples where to; or null, for the number alone.
 * \param capacity the most that are copied.
 * \return how many were copied; with null, how many there are. */
K_API uint64_t K_ReadTimeLine(K_TimeLineSample* samples, uint64_t capacity);
/** Room of the time line. */
enum {
  K_MostTimeLineSamples = 4096 /**< samples */
};

/* ---- Reports ------------------------------------------------------------ */

/** What went wrong. */
typedef struct K_Report {
  uint32_t code;    /**< as it was reported: `module` in the high half, `site` in the low */
  uint16_t module;  /**< whose report it is; 0 when the code names none */
  uint16_t site;    /**< the place in the module */
  uint16_t cls;     /**< how the host shows it */
  int32_t error;    /**< 0 when there is none */
  const char* text; /**< UTF-8, one line without newline */
} K_Report;

/** Takes one report, which lives until the sink returns. Reports come one at a
 * time, whatever threads they were made on. */
typedef void (*K_ReportSink)(const K_Report* report, void* context);
/** Replaces the sink. When this returns, the old sink is no longer in use.
 * \param sink what takes the reports; null brings back the default, a line on
 *     standard error with code, class, error and text.
 * \param context handed to the sink. */
K_API void K_SetReportSink(K_ReportSink sink, void* context);

/* ---- Texts -------------------------------------------------------------- */

/** The marks of shifted text. The 8-bit texts that modules look up, print into
 * and report are in Mac OS Roman. A translation may need characters that this
 * set lacks: each run of them stands in the 8-bit text as UTF-8 after
 * K_ShiftOut, up to K_ShiftIn or whatever other ASCII byte comes first.
 * (Before an ASCII byte K_ShiftOut means nothing.) Everything else of such a
 * text is Mac OS Roman as ever, so that it can serve as a print format, take
 * 8-bit arguments, be cut off, and be joined with 8-bit texts from elsewhere:
 * only a character that was cut through is lost, to U+FFFD. Reports are
 * decoded on their way to the sink; who looks texts up for showing them
 * decodes them with K_TextToUTF8. */
enum {
  K_ShiftOut = 0x0E, /**< UTF-8 from here */
  K_ShiftIn = 0x0F   /**< Mac OS Roman from here */
};

/** Decodes an 8-bit text. Writes as much of the UTF-8 text as there is room for,
 * ended by a zero byte and never within a character.
 * \param text the 8-bit text; null is an empty one.
 * \param[out] utf8 where to; may be null when `size` is 0.
 * \param size room in bytes.
 * \return the bytes of the whole, without the zero. */
K_API uint64_t K_TextToUTF8(const char* text, char* utf8, uint64_t size);

/** Limits of translations. A translation is a UTF-8 text of lines of the form
 * \code{.unparsed}
 *     # comment
 *     $$$/OV/PXL/LStr/0028 = der Pixelpuffer wurde geleert.
 * \endcode
 *
 * The key is that of the text in the module's catalogue, or in its code; each
 * stands once. The text runs to the end of the line; blanks around it do not
 * count, but those within an outer pair of straight double quotes do. Markup
 * such as #{rsquo} becomes its character. Empty lines and lines that start with
 * '#' are left out, and either line end, a byte-order mark and a missing last
 * line end are fine. Malformed are: text that is not UTF-8, a line without '=',
 * a key that does not start with "$$$/" or holds blanks, a key given twice, a
 * control character in a key or a text, a text of more than K_LongestTranslation
 * bytes. A file of more than 4 MiB, a pipe and a device are no translations.
 *
 * What has no translation, or an empty one, keeps its default text, and keys
 * that no module knows say nothing. A translation must have the placeholders of
 * the default text, since either may serve as a print format: all that starts
 * with `%`, in the same order; @0 to @9 and ^^L1 in any order. One that has
 * others is refused, which TRC is told once as a problem, and the default text
 * is used. */
enum {
  K_LongestTranslation = 767 /**< bytes of a text */
};

/** Puts the translation of a file in the place of the one in force. Texts that
 * were looked up before stay where they are, in the old language.
 * \param path the file, in UTF-8; null brings back the default texts, which are
 *     in force at first.
 * \param[out] problem says, after a failure, why in one line of UTF-8, which
 *     starts "line N: " for a malformed one; may be null when `size` is 0.
 * \param size room in bytes.
 * \return 1, or 0 when it cannot be read or is malformed: then the texts stay as
 *     they were. */
K_API Boolean K_SetTranslationFile(const char* path, char* problem, uint64_t size);
/** The same with the translation itself.
 * \param text the translation; null brings back the default texts.
 * \param[out] problem as above.
 * \param size room in bytes.
 * \return 1 or 0, as above. */
K_API Boolean K_SetTranslation(const char* text, char* problem, uint64_t size);

/** The same for a language and a folder of translations, each named after its
 * language. A language that is not there, or no tag at all, means the default
 * texts and is no failure.
 * \param folder in UTF-8.
 * \param language a tag such as "de-AT": takes de-AT.txt, else de.txt.
 * \param[out] problem as above.
 * \param size room in bytes.
 * \return 1 or 0, as above. */
K_API Boolean K_SetLanguage(const char* folder, const char* language, char* problem, uint64_t size);

/* ---- Signal ------------------------------------------------------------- */

/** Counts the calls of K_Beep.
 * \return so many. */
K_API uint64_t K_CountBeeps(void);

#ifdef __cplusplus
}

#include <string>

/** Decodes an 8-bit text.
 * \param text the 8-bit text; null is an empty one.
 * \return the whole, in UTF-8. */
inline std::string K_TextToUTF8(const char* text) {
  std::string utf8(K_TextToUTF8(text, nullptr, 0), '\0');
  K_TextToUTF8(text, utf8.data(), utf8.size() + 1);
  return utf8;
}
#endif

#endif
