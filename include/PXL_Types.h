/** \file
 * The types that PXL shares with the libraries it imports.
 *
 * PXL.h and the drawing and utility interfaces (QDE.h, K.h) include this header,
 * so that a host can include them in any order and each name is defined once.
 * Valid C11 and C++17. */
#ifndef PXL_TYPES_H
#define PXL_TYPES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A truth value in one byte: 0 or 1. */
typedef uint8_t Boolean;

/** A master pointer: the address of a block of bytes. */
typedef char* Ptr;
/** A handle: the address of a master pointer. Its block may move at any
 * allocation of memory, unless it is locked. */
typedef Ptr* Handle;

/** A rectangle in pixels. The right and bottom edges are exclusive:
 * width = right - left, height = bottom - top. Note the order: top first. */
typedef struct Rect {
  int16_t top;    /**< the first row */
  int16_t left;   /**< the first column */
  int16_t bottom; /**< the row after the last */
  int16_t right;  /**< the column after the last */
} Rect;

/** A drawing port of QDE; an offscreen world is a port as well. */
typedef struct QDE_Port* GrafPtr;
/** The same: every port has colours. */
typedef GrafPtr CGrafPtr;
/** The same: an offscreen world. */
typedef GrafPtr GWorldPtr;

/** A graphics device of QDE. */
typedef struct QDE_Device** GDHandle;

/** A message catalogue of K; opaque here, defined in K.h. */
typedef struct K_LStrCatalogue K_LStrCatalogue;

#ifdef __cplusplus
}
#endif

#endif
