/** \file
 * What a host may set in the stand-in TRC. C11 and C++17.
 *
 * An event is logged when its level is at least the level set here; all others
 * are dropped at the cost of one comparison. All calls are safe on any thread
 * at any time. */
#ifndef TRC_HOST_H
#define TRC_HOST_H

#include "platform/TRC.h"

#ifdef __cplusplus
extern "C" {
#endif

/** The levels that the host's own libraries use; any other number will do. */
enum {
  TRC_Level_DETAIL = 10,  /**< steps of normal work, births and deaths */
  TRC_Level_NOTE = 20,    /**< odd, but dealt with */
  TRC_Level_PROBLEM = 30, /**< somebody should look at it */
  TRC_Level_SILENT = 1000 /**< as a threshold: nothing is logged */
};

/** Sets the lowest level that is logged. It starts as the decimal number in the
 * environment variable TRC_LEVEL when that holds one, else as
 * TRC_Level_PROBLEM.
 * \param level one of TRC_Level_, or any other number. */
TRC_API void TRC_SetLevel(int32_t level);
/** Tells the lowest level that is logged.
 * \return what was set, or what it started as. */
TRC_API int32_t TRC_GetLevel(void);

/** Takes one event. The texts are never null and live until the sink returns.
 * Events come one at a time, whatever threads they were logged on. */
typedef void (*TRC_Sink)(int32_t level, const char* category, const char* event, const char* text,
                         void* context);

/** Replaces the sink. When this returns, the old sink is no longer in use.
 * \param sink what takes the events; null brings back the default, one line an
 *     event on standard error.
 * \param context handed to the sink. */
TRC_API void TRC_SetSink(TRC_Sink sink, void* context);

#ifdef __cplusplus
}
#endif

#endif
