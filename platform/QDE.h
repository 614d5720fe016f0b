/* QDE, the QuickDraw-compatible drawing layer: the calls that PXL imports.
 *
 * Handles, offscreen worlds, ports and devices, CopyBits, and the layer's own
 * calls for 32-bit pixel formats. Valid C11 and C++17. */
#ifndef QDE_H
#define QDE_H

#include "PXL_Types.h"

/* QDE_EXPORTS: QDE or its replacement is being built. QDE_STATIC: all is
 * linked into one program. Neither: QDE is imported. */
#if defined(QDE_STATIC)
#define QDE_API
#elif defined(_WIN32) && defined(QDE_EXPORTS)
#define QDE_API __declspec(dllexport)
#elif defined(_WIN32)
#define QDE_API __declspec(dllimport)
#else
#define QDE_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef struct QDE_ColorTable** CTabHandle;
typedef struct QDE_Region** RgnHandle;

/* A plain bitmap. rowBytes has the stride in its low 14 bits; bit 15 is set if
 * the record is a PixMap. */
typedef struct BitMap {
  Ptr baseAddr;
  int16_t rowBytes;
  Rect bounds;
} BitMap;

/* A pixel map. In an offscreen world baseAddr holds the handle of the pixels
 * while they are unlocked and their address while they are locked; an empty
 * handle there stands for purged pixels. hRes and vRes are 16.16 fixed. */
typedef struct PixMap {
  Ptr baseAddr;
  int16_t rowBytes;
  Rect bounds;
  int16_t pmVersion;
  int16_t packType;
  int32_t packSize;
  int32_t hRes;
  int32_t vRes;
  int16_t pixelType;
  int16_t pixelSize;
  int16_t cmpCount;
  int16_t cmpSize;
  int32_t planeBytes;
  CTabHandle pmTable;
  int32_t pmReserved;
} PixMap;
typedef PixMap** PixMapHandle;

/* Handles. A lock is a flag, not a count. */
QDE_API void HLock(Handle handle);
QDE_API void HUnlock(Handle handle);
/* Returns a handle whose master pointer is null, or null without memory. */
QDE_API Handle NewEmptyHandle(void);

/* Offscreen worlds. NewGWorld returns 0 or a negative error. UpdateGWorld returns
 * flag bits, or, when bit 31 is set, a negative error as int32_t. */
QDE_API int16_t NewGWorld(GWorldPtr* world, int16_t depth, const Rect* bounds, CTabHandle colors,
                          GDHandle device, uint32_t flags);
QDE_API uint32_t UpdateGWorld(GWorldPtr* world, int16_t depth, const Rect* bounds,
                              CTabHandle colors, GDHandle device, uint32_t flags);
QDE_API void DisposeGWorld(GWorldPtr world);
QDE_API GDHandle GetGWorldDevice(GWorldPtr world);
QDE_API PixMapHandle GetPortPixMap(GWorldPtr world);

/* Pixels. LockPixels returns 0 when the pixels were purged. */
QDE_API Boolean LockPixels(PixMapHandle pixels);
QDE_API void UnlockPixels(PixMapHandle pixels);
QDE_API Ptr GetPixBaseAddr(PixMapHandle pixels);

/* The current port and device, shared by the whole process. */
QDE_API void GetPort(GrafPtr* port);
QDE_API void MacSetPort(GrafPtr port);
QDE_API GDHandle GetGDevice(void);
QDE_API void SetGDevice(GDHandle device);

/* Transfer of a rectangle with a QuickDraw transfer mode. */
QDE_API const BitMap* GetPortBitMapForCopyBits(CGrafPtr port);
QDE_API void CopyBits(const BitMap* source, const BitMap* destination, const Rect* sourceRect,
                      const Rect* destinationRect, int16_t mode, RgnHandle mask);

/* Moves a rectangle: dh pixels to the right, dv pixels down. */
QDE_API void MacOffsetRect(Rect* rect, int16_t dh, int16_t dv);
/* Returns the ticks of 1/60 second since the layer was loaded. */
QDE_API uint32_t TickCount(void);

/* Switches the forced building of bitmaps on or off. The other two arguments
 * are 0 where they have no effect. */
QDE_API void QDE_ForceBitmapCreationBitfields(Boolean on, int32_t keepLocal, int32_t bits);
/* The format of a 32-bit world: 0 standard, 1 alternate. */
QDE_API int16_t QDE_GetGWorld32PixmapFormat(GWorldPtr world, int32_t* format);
QDE_API int16_t QDE_SetGWorld32PixmapFormat(GWorldPtr world, int32_t format);
/* Converts 32-bit pixels in place between the two formats; its own inverse. */
QDE_API void QDE_ConvertBitsFast(void* base, int16_t height, int16_t width, int32_t rowBytes);

#ifdef __cplusplus
}
#endif

#endif
