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

/* Bytes are those of the blocks, which are whole pages and, when larger, up to
 * an eighth more than what was asked for. Kept blocks are those that wait for
 * re-use; a re-used block is at most a quarter larger than a new one would be.
 * A hit is an allocation that got a kept block, a miss one that had to ask the
 * system, with success or without. `peakBytes` is the most that live and kept
 * blocks came to together. */
typedef struct K_PoolStatistics {
  uint64_t liveBlocks, liveBytes, keptBlocks, keptBytes, peakBytes, hits, misses;
} K_PoolStatistics;
K_API void K_GetPoolStatistics(K_PoolStatistics* statistics);

/* The most bytes that are kept for re-use, applied at once; 0 keeps none. The
 * oldest go first. K_DefaultPoolLimit at first. */
K_API void K_SetPoolLimit(uint64_t bytes);
K_API uint64_t K_GetPoolLimit(void);
enum { K_DefaultPoolLimit = 0x20000000 };

/* Whether `base` is the address of a live block of the pool. */
K_API Boolean K_IsRecycledPtr(const void* base);

/* ---- Checks of recycled pointers ---------------------------------------- */

/* Ways to find stray accesses, for debugging; the sum of those that are on.
 * None is on at first. They cost time and pages: guards and fences are a page
 * each on either side of a block, not counted in the statistics or the budget,
 * and keep each block to the whole pages that its size needs, so that the
 * re-use of nearly the same size ends. */
enum {
  /* What lies between the size and the end of the block, and a page on either
   * side, is filled with K_PoolGuardPattern and compared when the block is
   * freed. A difference is reported as K_Code_GUARD. */
  K_PoolCheck_GUARDS = 1,
  /* A page on either side, beyond the guards if there are any, that cannot be
   * read or written: an access ends the program. */
  K_PoolCheck_FENCES = 2,
  /* Freed blocks are filled with K_PoolFreedPattern. Those that are kept are
   * compared when they are used again or given back; a difference is reported
   * as K_Code_STALE. */
  K_PoolCheck_FILL = 4
};
enum { K_PoolGuardPattern = 0xA9, K_PoolFreedPattern = 0xDB };
/* What K reports it under. */
enum {
  K_Code_GUARD = 0x20004, /* a write outside a block */
  K_Code_STALE = 0x20005  /* a write into a block after it was freed */
};

/* Blocks that are live now stay as they are and are checked for what they were
 * made with; unlike new ones, they are not kept for re-use any more. */
K_API void K_SetPoolChecks(uint32_t checks);
K_API uint32_t K_GetPoolChecks(void);

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

/* ---- Limits and refusals ------------------------------------------------ */

/* Who sets a limit of memory. */
enum {
  K_MemoryLimit_NONE = 0,
  K_MemoryLimit_BUDGET = 1, /* the application, with K_SetMemoryBudget */
  K_MemoryLimit_GROUP = 2,  /* the system, for the group of processes that this
                               one belongs to, as in a container */
  K_MemoryLimit_SYSTEM = 3  /* the system: it had none left, or no address space */
};

/* The budget that is in force. While the application sets none, it is what the
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
  uint64_t bytes; /* 0 when nobody sets one */
  uint64_t used;  /* what counts towards it now */
  int32_t setBy;  /* K_MemoryLimit_NONE, _BUDGET or _GROUP */
} K_MemoryBudget;
K_API void K_GetMemoryBudgetInForce(K_MemoryBudget* budget);

/* Reads the limits of the process group anew, from here on out of the files
 * below the folder `root`: root/proc/self/cgroup and root/sys/fs/cgroup. Null
 * is the system's own. Gives 0, and does nothing, when the name has more than
 * 1023 bytes. */
K_API Boolean K_ReadMemoryGroup(const char* root);

/* The refusals of memory so far, each also logged at TRC_Level_NOTE. The purge
 * loop may have found memory after one; each try counts. */
typedef struct K_MemoryRefusals {
  int32_t last;       /* K_MemoryLimit_*: who refused last */
  uint64_t lastBytes; /* what K asked for; 0 for its own tables */
  uint64_t byBudget, byGroup, bySystem;
} K_MemoryRefusals;
K_API void K_GetMemoryRefusals(K_MemoryRefusals* refusals);

/* ---- Accounting --------------------------------------------------------- */

/* What was booked with K_AccountAllocation and K_AccountSystemAllocation. The
 * totals may be negative when bookings do not balance. */
typedef struct K_MemoryTotals {
  int64_t application, system, applicationPeak, systemPeak;
} K_MemoryTotals;
K_API void K_GetMemoryTotals(K_MemoryTotals* totals);

/* ---- Time line ---------------------------------------------------------- */

/* What a sample was taken for. */
enum {
  K_TimeLineEvent_START = 0,   /* the time line was switched on */
  K_TimeLineEvent_BLOCKS = 1,  /* a recycled pointer was allocated or freed, or
                                  kept blocks were given back */
  K_TimeLineEvent_HANDLES = 2, /* a handle was made, freed or purged */
  K_TimeLineEvent_BOOKING = 3, /* memory was booked */
  K_TimeLineEvent_PURGE = 4,   /* a round of the purge loop has ended, or a
                                  K_PurgeHandlesAndCompact has freed its part */
  K_TimeLineEvent_FAILURE = 5  /* a refusal, see K_MemoryRefusals */
};

/* All of K's memory at one moment. */
typedef struct K_TimeLineSample {
  uint64_t nanoseconds;          /* since the switching on, by a clock that is
                                    never set; never less than the one before */
  uint64_t liveBytes, keptBytes; /* of the pool, see K_PoolStatistics */
  uint64_t handleBytes;          /* of the blocks of handles */
  int64_t application, system;   /* booked, see K_MemoryTotals */
  uint64_t purges, failures;     /* so many since the switching on */
  int32_t event;                 /* K_TimeLineEvent_* */
  uint32_t changes;              /* the changes that the sample stands for */
} K_TimeLineSample;

/* Switching on forgets what was recorded, takes a first sample and then one at
 * each change. Switching off leaves what was recorded to be read. Off at first;
 * costs next to nothing then, and a fraction of a microsecond a change while it
 * is on. */
K_API void K_SetTimeLine(Boolean on);
K_API Boolean K_IsTimeLineOn(void);

/* Copies the latest samples, at most `capacity` of them, the oldest first, and
 * gives their number. With null it only gives the number that there are. The
 * last one is always the latest change.
 *
 * There are never more than K_MostTimeLineSamples. When so many changes came
 * that the room is used up, neighbouring samples are merged, and from then on
 * each stands for twice as many changes. Of those it is the one with the most
 * memory, live, kept, in handles and booked by the application together: no
 * peak is lost, a short trough may be, and so may an event; the counts tell of
 * all. A last sample that is there for being the latest, though its neighbour
 * stands for its change, has no changes. */
K_API uint64_t K_ReadTimeLine(K_TimeLineSample* samples, uint64_t capacity);
enum { K_MostTimeLineSamples = 4096 };

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
 * control character in a key or a text, a text of more than K_LongestTranslation
 * bytes. A file of more than 4 MiB, a pipe and a device are no translations.
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
