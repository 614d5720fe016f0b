/** \file
 * Settings of the stand-in TRC for hosts. C11 and C++17.
 *
 * An event is logged when its level is at least the level set here; other events
 * cost one comparison. All calls are safe on any thread at any time. */
#ifndef TRC_HOST_H
#define TRC_HOST_H

#include "platform/TRC.h"

#ifdef __cplusplus
extern "C" {
#endif

/** The levels that the host's libraries use; any other number is allowed. */
enum {
  TRC_Level_DETAIL = 10,  /**< steps of normal work, such as births and deaths */
  TRC_Level_NOTE = 20,    /**< unusual, but handled */
  TRC_Level_PROBLEM = 30, /**< needs attention */
  TRC_Level_SILENT = 1000 /**< as the lowest level: nothing is logged */
};

/** Sets the lowest level that is logged. Its initial value is the decimal number in
 * the environment variable TRC_LEVEL; without one, TRC_Level_PROBLEM.
 * \param level one of TRC_Level_, or any other number. */
TRC_API void TRC_SetLevel(int32_t level);
/** Returns the lowest level that is logged.
 * \return the level. */
TRC_API int32_t TRC_GetLevel(void);

/** Receives one event. The texts are never null and are valid until the sink
 * returns. TRC calls the sink on the thread that logs, for one event at a time.
 * The sink may log. */
typedef void (*TRC_Sink)(int32_t level, const char* category, const char* event, const char* text,
                         void* context);

/** Replaces the sink. When this returns, no other thread runs the old one.
 * \param sink receives the events; null restores the default, which prints one line
 *     for each event on standard error.
 * \param context passed to each call of the sink; TRC does not own it. */
TRC_API void TRC_SetSink(TRC_Sink sink, void* context);

#ifdef __cplusplus
}
#endif

#endif
