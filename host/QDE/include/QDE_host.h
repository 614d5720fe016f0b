/* What a host may ask of the stand-in QDE besides its imports. C11 and C++17.
 *
 * What is there: handles (in K's store), ticks, rectangles, the current port
 * and device, and the conversion between the two 32-bit pixel formats.
 *
 * What is not there yet: offscreen surfaces. NewGWorld stores null and gives
 * -50, UpdateGWorld gives -50 with bit 31 set, the calls on a world's 32-bit
 * format give -50, and CopyBits draws nothing and leaves -50 as the layer's
 * error. Since no world, pixel map or port can be made, their accessors know
 * null only, and give null or 0 for it. */
#ifndef QDE_HOST_H
#define QDE_HOST_H

#include "platform/QDE.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The result of the last call that can fail: 0 or a negative number. For the
 * whole process, as the current port is. */
QDE_API int16_t QDE_Error(void);

#ifdef __cplusplus
}
#endif

#endif
