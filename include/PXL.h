/** \file
 * PXL, the bitmap module: image buffers ("Worlds") for a compositing host.
 *
 * A World is a rectangle of pixels at 8, 32, 64 or 128 bits per pixel, accessed
 * through a relocatable handle. The host creates, locks, re-sizes, clears,
 * converts and blits Worlds with the functions below and disposes of them.
 * Valid C11 and C++17; 64-bit systems only.
 *
 * \par Status
 * Functions that can fail return an int32_t: 0 for success, one of PXL_Err_...,
 * a negative code of the drawing layer, or a pixel provider's own code. Each
 * failure is also reported once, at the place that detects it, through the
 * utility library K; "reports" below means that.
 *
 * \par Pointers
 * No function tests a handle or a required pointer for null. Only functions
 * whose description says so test whether a handle holds a live World.
 *
 * \par Threads
 * The module starts no threads and takes no locks. The pixel functions may run
 * on any thread at any time. One thread at a time may use a World. The host must
 * serialise birth and death, creation and disposal of Worlds, reports, and any
 * call on a World with a drawing surface.
 *
 * \par Exceptions
 * No exception leaves the module, except those that the core library throws
 * while the debug settings are read for the first time: they pass out of
 * PXL_AllocateFrameQuiet, PXL_NewWorld and the calls that re-allocate pixels. A
 * C++ host compiles its calls accordingly (/EHs, not /EHsc). */
#ifndef PXL_H
#define PXL_H

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

#include "PXL_Types.h"

/** \def PXL_API
 * Marks the library's exports. PXL_EXPORTS: the library is being built.
 * PXL_STATIC: the module is linked into the program. Neither: the library is
 * imported. */
#if defined(PXL_STATIC)
#define PXL_API
#elif defined(_WIN32) && defined(PXL_EXPORTS)
#define PXL_API __declspec(dllexport)
#elif defined(_WIN32)
#define PXL_API __declspec(dllimport)
#else
#define PXL_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Constants ---------------------------------------------------------- */

/** Status codes. */
enum {
  PXL_Err_NONE = 0,      /**< success */
  PXL_Err_FAILED = 1,    /**< a drawing surface moved while it was reloaded */
  PXL_Err_INVALID = 2,   /**< module not born, or not a live World */
  PXL_Err_REFUSED = 3,   /**< contradictory arguments, or a check that failed */
  PXL_Err_NO_MEMORY = 4, /**< not enough memory, or a frame over 2 GiB */
  PXL_Err_VERSION = 7,   /**< the library has another version than the caller's header */
  PXL_Err_PURGED = 0x701 /**< the pixels were purged, and there was no output for it */
};

/** Numbers of the module and of its interface. */
enum {
  PXL_ModuleNumber = 7,     /**< of the module: the high half of its report codes */
  PXL_InterfaceVersion = 31 /**< of this header, for PXL_CheckVersions */
};

/** Creation flags. Other bits are stored in the record and have no meaning. */
enum {
  PXL_Flag_KEEP_LOCAL = 0x0008,  /**< surface: pixels in main memory */
  PXL_Flag_PURGEABLE = 0x0020,   /**< surface: pixels may be purged. The module
                                      sets it after a re-size that lost the
                                      pixels */
  PXL_Flag_CLEAR = 0x0100,       /**< clear to zero; not with DEFERRED */
  PXL_Flag_NO_PLATFORM = 0x0200, /**< module memory instead of a surface */
  PXL_Flag_ALT_ORDER = 0x0400,   /**< no surface: channels in order 1 */
  PXL_Flag_DEFERRED = 0x0800,    /**< geometry only, no pixel memory */
  PXL_Flag_MAPPED = 0x1000       /**< with DEFERRED: pixels in a mapped file */
};

/** Depth codes: bits per pixel, or SHARE for the parent's depth. */
enum {
  PXL_Depth_SHARE = 0, /**< the depth of the parent */
  PXL_Depth_8 = 8,     /**< one byte, an index into a colour table */
  PXL_Depth_32 = 32,   /**< four 8-bit channels */
  PXL_Depth_64 = 64,   /**< four 16-bit channels, full scale 32768 */
  PXL_Depth_128 = 128  /**< four floats, nominal range 0.0 to 1.0 */
};

/** Orders of the four channels of a 32-bit pixel, in memory. */
enum {
  PXL_ChannelOrder_STANDARD = 0, /**< the drawing layer's default format */
  PXL_ChannelOrder_ALTERNATE = 1 /**< its other format: the bytes reversed */
};

/* ---- Records ------------------------------------------------------------ */

/** A source of pixel memory on demand: see the record. */
typedef struct PXL_PixelProvider PXL_PixelProvider;
/** A source of pixel memory on demand. Each operation returns 0 or an error code.
 * The first three receive `context`. */
struct PXL_PixelProvider {
  int32_t (*mapPixels)(void* context, void** frame);   /**< first lock */
  int32_t (*unmapPixels)(void* context, void** frame); /**< last unlock */
  int32_t (*freePixels)(void* context, void** frame);  /**< disposal */
  int32_t (*release)(PXL_PixelProvider** provider);    /**< after freePixels */
  void* context;                                       /**< the provider's own */
};

/** The pixel memory of a World and the state of its lock. */
typedef struct PXL_PixelBuffer {
  int32_t lockCount;           /**< nested locks; negative once unbalanced */
  void* frame;                 /**< the allocation, or null */
  uint64_t frameSize;          /**< its size in bytes */
  uint64_t alignOffset;        /**< bytes from frame to the first pixel, 0..15 */
  void* baseAddr;              /**< the first pixel; null while unlocked, and
                                    always null with a provider */
  int32_t rowBytes;            /**< bytes from one row to the next */
  PXL_PixelProvider* provider; /**< null for frames and surfaces */
} PXL_PixelBuffer;

/** A World. The host may read the record through its handle between calls; the
 * module alone writes it. Any call of the module may move the record. */
typedef struct PXL_World {
  uint32_t headMark;      /**< PXL_LiveMark while the World is live, else 0 */
  uint32_t flags;         /**< as passed to PXL_NewWorld */
  int16_t width;          /**< in pixels, bounds.right - bounds.left */
  int16_t height;         /**< in pixels, bounds.bottom - bounds.top */
  Rect bounds;            /**< as passed at creation; at the origin after an update */
  int16_t depth;          /**< 8, 32, 64 or 128 bits per pixel */
  uint8_t ownsHandle;     /**< 1: the module allocated the handle */
  uint8_t hasFrame;       /**< 1: frame memory, a provider, or deferred */
  GWorldPtr gworld;       /**< the drawing surface, or null */
  GDHandle gdevice;       /**< its device */
  uint8_t hasGWorld;      /**< 1: all pixel access goes through the surface */
  PXL_PixelBuffer pixels; /**< memory and lock state */
  uint32_t tailMark;      /**< the same as headMark */
} PXL_World;

/** Marks in memory. */
enum {
  PXL_LiveMark = 0xBECCA /**< of a live World, and of the module between birth and death */
};

/** The handle of a World: the address of a master pointer. */
typedef PXL_World** PXL_WorldHandle;

/** A pixel of 8-bit channels. Channel k of one width is channel k of the others;
 * the World's channel order decides which channel is alpha. */
typedef struct PXL_Pixel8 {
  uint8_t channel[4]; /**< full scale 255 */
} PXL_Pixel8;
/** A pixel of 16-bit channels. */
typedef struct PXL_Pixel16 {
  uint16_t channel[4]; /**< full scale 32768 */
} PXL_Pixel16;
/** A pixel of single-precision channels. */
typedef struct PXL_PixelF {
  float channel[4]; /**< nominal range 0.0 to 1.0 */
} PXL_PixelF;

/** The state of the module. */
typedef struct PXL_ModuleState {
  uint32_t bornMark;  /**< PXL_LiveMark between birth and death, else 0 */
  uint32_t birthArg;  /**< the argument of PXL_Birth */
  int32_t worldCount; /**< live Worlds */
} PXL_ModuleState;

/* ---- Exported data ------------------------------------------------------ */

/** The module's state, for the host to read. */
extern PXL_API PXL_ModuleState PXLp_G;

/** The module's message catalogue, for K_ZLookupLStrCache. */
extern PXL_API K_LStrCatalogue* PXL_G_zref;

/* ---- Life of the module ------------------------------------------------- */

/** Begins the module's life: marks the state, zeroes the count of Worlds, builds
 * the conversion tables and selects the conversions for the processor. Call it
 * once, before any World is created; a second birth is reported and changes
 * nothing.
 * \param birthArg any number; kept in the state.
 * \return always 0. */
PXL_API int32_t PXL_Birth(uint32_t birthArg);

/** Ends the module's life. Worlds that still exist are neither freed nor
 * reported.
 * \return 0, or PXL_Err_INVALID, reported, when the module is not alive. */
PXL_API int32_t PXL_Death(void);

/** Returns the version of the package.
 * \return the interface in the high 16 bits, the revision in the low. */
PXL_API uint32_t PXL_PkgObjectVersion(void);

/** Compares the caller's header with the library, and, on the first call of the
 * process only, the imported libraries with the headers that PXL was built with.
 * May be called before birth.
 * \param reportCode the report code of a mismatch of the caller's header.
 * \param headerVersion PXL_InterfaceVersion of the caller's header.
 * \return 0, or PXL_Err_VERSION after a report. */
PXL_API int32_t PXL_CheckVersions(uint32_t reportCode, int32_t headerVersion);

/* ---- Worlds ------------------------------------------------------------- */

/** Creates a World. The caller disposes of it.
 *
 * Worlds of 8 and 32 bits get a drawing surface unless NO_PLATFORM is set;
 * deeper ones, and 32-bit ones with NO_PLATFORM, get module memory, whose
 * first pixel lies on a 16-byte boundary. Pixels are cleared only with
 * PXL_Flag_CLEAR.
 * A row holds at most 32766 pixels (32765 at 8 and 32 bits), a frame at most
 * 0x7FFFFFFF bytes.
 *
 * \param parentH the World whose depth is taken when `depth` is
 *     PXL_Depth_SHARE, and whose size is taken when `rect` is null; may be null
 *     when neither is needed.
 * \param flags PXL_Flag_... At the depths 64 and 128 only the bits of 0x1B28 are
 *     accepted.
 * \param rect the bounds, stored unchanged, origin included; or null.
 * \param depth a depth code; a negative code stands for its absolute value.
 * \param reserved ignored.
 * \param worldH the caller's own handle, of at least sizeof(PXL_World) bytes, in
 *     which the World is built; or null.
 * \param[out] outWorldH receives a handle that the module allocates; or null.
 *     Exactly one of `worldH` and `outWorldH` is not null.
 * \return 0, or PXL_Err_INVALID (module not born), PXL_Err_REFUSED,
 *     PXL_Err_NO_MEMORY, or an error of the drawing layer. A failure leaves
 *     nothing allocated; `*outWorldH` is then null, or unchanged if birth, handle
 *     or flags were refused. */
PXL_API int32_t PXL_NewWorld(PXL_WorldHandle parentH, uint32_t flags, const Rect* rect,
                             int32_t depth, uint32_t reserved, PXL_WorldHandle worldH,
                             PXL_WorldHandle* outWorldH);

/** Disposes of a World: its pixels, its marks, and its handle if the module
 * allocated it. Locks are not checked.
 * \param worldH the World; the handle becomes invalid if the module allocated
 *     it.
 * \return 0; PXL_Err_INVALID if the handle does not hold a live World; or the
 *     provider's error, in which case the World is disposed of but still
 *     counted. */
PXL_API int32_t PXL_DisposeWorld(PXL_WorldHandle worldH);

/** Changes bounds and, for a World with a drawing surface, depth in place. The
 * pixels' content is lost. A World without pixel memory stays as it is.
 *
 * \param newDepth a depth in bits per pixel; 0 keeps the depth.
 * \param newBounds null keeps the size; otherwise the World takes this size, and
 *     its bounds start at the origin. Without a surface, a rectangle of the same
 *     size changes nothing.
 * \param surfaceArg passed to the drawing layer.
 * \param ignoredArg ignored.
 * \param worldH an unlocked World. Note the order: it is the last argument.
 * \return 0; PXL_Err_INVALID; PXL_Err_REFUSED (locked, another depth without a
 *     surface, a row too long); PXL_Err_NO_MEMORY, after which the World keeps
 *     its old geometry, with pixels of that size if they could be allocated
 *     again, else without pixels; or an error of the drawing layer. After a
 *     failed re-size, do not re-size the World again but dispose of it: the
 *     record holds the size of the new pixels with the old ones. */
PXL_API int32_t PXL_UpdateWorld(int32_t newDepth, const Rect* newBounds, int32_t surfaceArg,
                                void* ignoredArg, PXL_WorldHandle worldH);

/* ---- Locks -------------------------------------------------------------- */

/** Keeps the pixels at a stable address, pixels.baseAddr (with a provider:
 * PXLp_GetPixBaseAddr). Locks nest; each needs one unlock. A World without
 * pixels is not changed.
 *
 * \param reserved ignored.
 * \param worldH the World.
 * \param[out] purgedOut receives 1 if the surface's pixels were purged (the
 *     World is then not locked, and the result is 0), else 0; may be null.
 * \return 0; PXL_Err_INVALID (`purgedOut` is then not written); PXL_Err_PURGED
 *     if `purgedOut` is null and the pixels were purged; or the provider's
 *     error, after which the World counts as locked. */
PXL_API int32_t PXL_LockPixels(uint32_t reserved, PXL_WorldHandle worldH, uint8_t* purgedOut);

/** Locks, after re-creating the pixels if they were purged.
 *
 * \param reserved ignored.
 * \param worldH the World.
 * \param[out] loadedOut receives 0 if purged pixels could not be re-created for
 *     lack of memory (the result is then 0 and the World not locked), 1 if
 *     no pixels had to be re-created or all were; other failures of the
 *     re-creation leave it unchanged. May be null.
 * \param[out] reloadedOut receives 1 if the pixels were re-created and are
 *     locked: their content is undefined and has to be drawn again; else 0. May
 *     be null.
 * \return the result of PXL_LockPixels, or the error of the re-creation. */
PXL_API int32_t PXL_LoadLockPixels(uint32_t reserved, PXL_WorldHandle worldH, uint8_t* loadedOut,
                                   uint8_t* reloadedOut);

/** Releases one lock. An unlock too many is reported, and the next lock only
 * balances it.
 * \param worldH the World; anything but a live World is reported. */
PXL_API void PXL_UnlockPixels(PXL_WorldHandle worldH);

/** Returns the address of the pixels, locked or not.
 * \param worldH the World, which is not checked.
 * \return the address of the first pixel, or null when the World has none. */
PXL_API void* PXLp_GetPixBaseAddr(PXL_WorldHandle worldH);

/* ---- Filling and copying ------------------------------------------------ */

/** Fills all rows, padding included, with zero bytes: transparent black.
 * \param worldH a World that has pixels (locked, with a provider); it is not
 *     checked.
 * \return always 0. */
PXL_API int32_t PXL_ClearWorldToZeros(PXL_WorldHandle worldH);

/** Fills all rows, padding included, with a 32-bit pattern, lowest byte first:
 * one pixel at 32 bits, a channel pair at 64, one channel at 128.
 * \param worldH the World, which is not checked. Without pixels it is not
 *     changed if `value` is not 0, and must not be passed if `value` is 0; a
 *     World without rows is not supported.
 * \param value the pattern.
 * \return always 0. */
PXL_API int32_t PXL_ClearWorldToLong(PXL_WorldHandle worldH, int32_t value);

/** Copies the pixels of a World into another, converting channel widths.
 *
 * If neither is deeper than 32 bits, the drawing layer copies `sourceRect` to
 * `destinationRect` with a transfer mode. Both need a drawing surface. The
 * result is 0.
 *
 * Otherwise rectangles and mode are ignored, the Worlds must be of equal width
 * and height, the caller holds both locked, and pixels are converted channel by
 * channel: 32 bits to 64 or 128 as PXL_Pixel8to16 and PXL_Pixel8toF do; 64 to
 * 32 as PXL_Pixel16to8 does; 128 to 32 clamped and truncated (0.5 becomes 127,
 * where PXL_PixelFto8 rounds to 128; NaN becomes 0). A pair that is not
 * supported (64 with 128, 8 with a deep one) is reported; the result is still 0,
 * and nothing is copied.
 *
 * The addresses are taken from pixels.baseAddr, which is always null in a World
 * with a provider: convert such a World pixel by pixel.
 *
 * \param sourceH the World that is read.
 * \param destinationH the World that is written.
 * \param sourceRect the pixels that are read, in the source's coordinates; null:
 *     all its bounds.
 * \param destinationRect the pixels that are written, in the destination's
 *     coordinates; null: all its bounds.
 * \param mode the transfer mode; any other index counts as 0:
 * \code{.unparsed}
 *  0 srcCopy   4 notSrcCopy   8 blend    12 addMax       16 ditherCopy
 *  1 srcOr     5 notSrcOr     9 addPin   13 subOver      17 transparent
 *  2 srcXor    6 notSrcXor   10 addOver  14 adMin        18 hilite
 *  3 srcBic    7 notSrcBic   11 subPin   15 ditherCopy
 * \endcode
 * \return 0, or PXL_Err_REFUSED, reported, when one is deep and the sizes
 *     differ. */
PXL_API int32_t PXL_Blit(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH,
                         const Rect* sourceRect, const Rect* destinationRect, uint16_t mode);

/* ---- Channel order ------------------------------------------------------ */

/* None of these checks or locks the World. */

/** Reports whether the order of the World's channels can be set.
 * \param worldH the World, which is not checked.
 * \param[out] canSet receives 1 for 32 bits per pixel, else 0.
 * \return always 0. */
PXL_API int32_t PXL_CanSetChannelOrder(PXL_WorldHandle worldH, uint8_t* canSet);

/** Returns the order of the World's channels.
 * \param worldH the World, which is not checked.
 * \param[out] order receives PXL_ChannelOrder_...; unchanged if the drawing layer
 *     returns neither of the two.
 * \return 0 or an error of the drawing layer. */
PXL_API int32_t PXL_GetChannelOrder(PXL_WorldHandle worldH, uint32_t* order);

/** Sets the order of the channels and converts the pixels in place.
 * \param worldH the World, which is not checked; without a surface it must have
 *     pixels.
 * \param order PXL_ChannelOrder_... Any other order converts the pixels of a
 *     World without surface on every call and is not recorded.
 * \return 0, PXL_Err_REFUSED for another depth than 32, or an error of the
 *     drawing layer. */
PXL_API int32_t PXL_SetChannelOrder(PXL_WorldHandle worldH, int32_t order);

/** Records an order without converting anything.
 * \param worldH the World, which is not checked.
 * \param order PXL_ChannelOrder_...
 * \return always 0. */
PXL_API int32_t PXL_AssumeChannelOrder(PXL_WorldHandle worldH, int32_t order);

/* ---- Memory ------------------------------------------------------------- */

/** Allocates a frame of uninitialised memory, from the heap or, above a
 * threshold, from K's recycled pool. When memory is short, purges what the host
 * can purge and tries again. Reports nothing. Any thread may call it once the
 * first call has returned.
 * \param size in bytes.
 * \param reserved ignored.
 * \param[out] frame receives the address or null. The caller owns the frame and
 *     frees it with PXL_FreeFrame.
 * \return 0, PXL_Err_NO_MEMORY, or the purge loop's own code; the caller owns a
 *     frame that comes with a code too. */
PXL_API int32_t PXL_AllocateFrameQuiet(uint64_t size, uint64_t reserved, void** frame);

/** Frees a frame.
 * \param frame the frame, or null.
 * \param size the requested size in bytes.
 * \return always 0. */
PXL_API int32_t PXL_FreeFrame(void* frame, uint64_t size);

/** Reports that pixels could not be allocated.
 * \param error for PXL_Err_NO_MEMORY and -108 the message names width, height and
 *     depth; for any other error it contains the system's wording; 0 is not
 *     reported.
 * \param rowBytes bytes per row; 0 if not known.
 * \param width in pixels.
 * \param height in pixels.
 * \param depth in bits per pixel.
 * \return always 0. */
PXL_API int32_t PXL_ReportWorldAllocationFailure(int32_t error, int32_t rowBytes, int16_t width,
                                                 int16_t height, int16_t depth);

/* ---- Single pixels ------------------------------------------------------ */

/** \name Single pixels
 * These need no birth, run on any thread, and always return 0. Source and
 * destination may overlap.
 * \{ */

/** Clamps each channel to 0.0 .. 1.0. NaN and -0.0 stay unchanged.
 * \param[in,out] pixel any floats.
 * \return always 0. */
PXL_API int32_t PXL_ClipPixelF(PXL_PixelF* pixel);
/** Clamps, multiplies by 32768, rounds halves upward; NaN becomes 0. The product
 * is a float, the rounding is done in double.
 * \param source any floats.
 * \param[out] destination 0 to 32768.
 * \return always 0. */
PXL_API int32_t PXL_PixelFto16(const PXL_PixelF* source, PXL_Pixel16* destination);
/** The same with the factor 255.
 * \param source any floats.
 * \param[out] destination 0 to 255.
 * \return always 0. */
PXL_API int32_t PXL_PixelFto8(const PXL_PixelF* source, PXL_Pixel8* destination);
/** v / 32768. Nothing is clamped.
 * \param source 0 to 65535.
 * \param[out] destination 0.0 to just below 2.0.
 * \return always 0. */
PXL_API int32_t PXL_Pixel16toF(const PXL_Pixel16* source, PXL_PixelF* destination);
/** v / 255: a double product with the double nearest to 1/255, rounded to
 * float.
 * \param source 0 to 255.
 * \param[out] destination 0.0 to 1.0.
 * \return always 0. */
PXL_API int32_t PXL_Pixel8toF(const PXL_Pixel8* source, PXL_PixelF* destination);
/** (v * 255 + 16384) >> 15, the low 8 bits: values from 32833 on wrap.
 * \param source 0 to 65535.
 * \param[out] destination 0 to 255.
 * \return always 0. */
PXL_API int32_t PXL_Pixel16to8(const PXL_Pixel16* source, PXL_Pixel8* destination);
/** (v * 32768 + 128) / 255, truncated.
 * \param source 0 to 255.
 * \param[out] destination 0 to 32768.
 * \return always 0. */
PXL_API int32_t PXL_Pixel8to16(const PXL_Pixel8* source, PXL_Pixel16* destination);

/** \} */

#ifdef __cplusplus
}
#endif

/* ---- Layout ------------------------------------------------------------- */

/* Records are shared with the host as memory; their layout is the interface. */
static_assert(sizeof(void*) == 8, "PXL is a 64-bit interface");

static_assert(sizeof(Rect) == 8, "Rect");
static_assert(offsetof(Rect, top) == 0, "Rect.top");
static_assert(offsetof(Rect, left) == 2, "Rect.left");
static_assert(offsetof(Rect, bottom) == 4, "Rect.bottom");
static_assert(offsetof(Rect, right) == 6, "Rect.right");

static_assert(sizeof(PXL_PixelProvider) == 40, "PXL_PixelProvider");
static_assert(offsetof(PXL_PixelProvider, mapPixels) == 0, "mapPixels");
static_assert(offsetof(PXL_PixelProvider, unmapPixels) == 8, "unmapPixels");
static_assert(offsetof(PXL_PixelProvider, freePixels) == 16, "freePixels");
static_assert(offsetof(PXL_PixelProvider, release) == 24, "release");
static_assert(offsetof(PXL_PixelProvider, context) == 32, "context");

static_assert(sizeof(PXL_PixelBuffer) == 56, "PXL_PixelBuffer");
static_assert(offsetof(PXL_PixelBuffer, lockCount) == 0, "lockCount");
static_assert(offsetof(PXL_PixelBuffer, frame) == 8, "frame");
static_assert(offsetof(PXL_PixelBuffer, frameSize) == 16, "frameSize");
static_assert(offsetof(PXL_PixelBuffer, alignOffset) == 24, "alignOffset");
static_assert(offsetof(PXL_PixelBuffer, baseAddr) == 32, "baseAddr");
static_assert(offsetof(PXL_PixelBuffer, rowBytes) == 40, "rowBytes");
static_assert(offsetof(PXL_PixelBuffer, provider) == 48, "provider");

static_assert(sizeof(PXL_World) == 112, "PXL_World");
static_assert(offsetof(PXL_World, headMark) == 0, "headMark");
static_assert(offsetof(PXL_World, flags) == 4, "flags");
static_assert(offsetof(PXL_World, width) == 8, "width");
static_assert(offsetof(PXL_World, height) == 10, "height");
static_assert(offsetof(PXL_World, bounds) == 12, "bounds");
static_assert(offsetof(PXL_World, depth) == 20, "depth");
static_assert(offsetof(PXL_World, ownsHandle) == 22, "ownsHandle");
static_assert(offsetof(PXL_World, hasFrame) == 23, "hasFrame");
static_assert(offsetof(PXL_World, gworld) == 24, "gworld");
static_assert(offsetof(PXL_World, gdevice) == 32, "gdevice");
static_assert(offsetof(PXL_World, hasGWorld) == 40, "hasGWorld");
static_assert(offsetof(PXL_World, pixels) == 48, "pixels");
static_assert(offsetof(PXL_World, tailMark) == 104, "tailMark");

static_assert(sizeof(PXL_Pixel8) == 4, "PXL_Pixel8");
static_assert(sizeof(PXL_Pixel16) == 8, "PXL_Pixel16");
static_assert(sizeof(PXL_PixelF) == 16, "PXL_PixelF");
static_assert(offsetof(PXL_Pixel8, channel) == 0, "PXL_Pixel8.channel");
static_assert(offsetof(PXL_Pixel16, channel) == 0, "PXL_Pixel16.channel");
static_assert(offsetof(PXL_PixelF, channel) == 0, "PXL_PixelF.channel");

static_assert(sizeof(PXL_ModuleState) == 12, "PXL_ModuleState");
static_assert(offsetof(PXL_ModuleState, bornMark) == 0, "bornMark");
static_assert(offsetof(PXL_ModuleState, birthArg) == 4, "birthArg");
static_assert(offsetof(PXL_ModuleState, worldCount) == 8, "worldCount");

#endif
