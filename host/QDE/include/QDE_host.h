/** \file
 * What the stand-in QDE offers to a host besides its imports. C11 and C++17.
 *
 * Supported: handles (in K's store), ticks, rectangles, offscreen worlds
 * of 8 and 32 bits per pixel, ports with their colours, devices, the two 32-bit
 * pixel formats, and CopyBits in all transfer modes.
 *
 * Not supported: masks (CopyBits draws nothing and leaves -50).
 *
 * Threads. Calls on handles, TickCount and QDE_ConvertBitsFast may be made on
 * any thread. All others share the current port and device and the list of
 * worlds: the host lets one thread at a time call them. Memory pressure may
 * come from any thread meanwhile. */
#ifndef QDE_HOST_H
#define QDE_HOST_H

#include "platform/QDE.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Errors ------------------------------------------------------------- */

/** Returns the result of the last call that can fail. There is one for the whole
 * process, like the current port. Setting and getting the port or the device,
 * UnlockPixels and DisposeGWorld do not change it, so that the result of CopyBits
 * can still be read after them.
 * \return 0 or one of the codes below. */
QDE_API int16_t QDE_Error(void);

/** Results of QDE's calls. */
enum {
  QDE_Err_PARAMETER = -50,    /**< null, not live, empty, too wide, unknown flag or mode */
  QDE_Err_MEMORY_FULL = -108, /**< no memory, even after purging */
  QDE_Err_PURGED = -109,      /**< CopyBits: a side's pixels are purged or lost */
  QDE_Err_DEPTH = -157        /**< a depth other than 0, 8 and 32 */
};

/* ---- Worlds ------------------------------------------------------------- */

/** \page qde_worlds Worlds of QDE
 * \code{.unparsed}
 * NewGWorld
 * depth   8, 32, or 0 for that of the main device, whose device record the
 *         world then shares. The other published depths are not made: -157.
 * bounds  not empty. A row takes its pixels' bytes rounded up to 16 bytes, or
 *         to 4 or 2 where 16 would reach 0x4000; a wider one is refused with
 *         -50. That leaves 16382 pixels at 8 bits and 4095 at 32.
 * colors  at 8 bits a table, of which the world takes a copy, or null for the
 *         standard one; -50 without entries or with more than 256. Not looked
 *         at otherwise.
 * device  used with the flag noNewDevice (2) only: the world shares it, and its
 *         depth counts, and at 8 bits a copy of its table; null stands for the
 *         main device, but then `depth` and `colors` count. The device has to
 *         outlive the world.
 * flags   pixPurge (1) makes the pixels purgeable for the life of the world.
 *         useTempMem (4), keepLocal (8), 16 and 32 change nothing; others are
 *         refused with -50.
 * The pixels are not cleared. *world is null after a failure.
 *
 * UpdateGWorld
 * flags   none, clipPix, stretchPix, either with ditherPix, all with or without
 *         keepLocal; others are refused with -50. The device is not looked at.
 * When size, depth or colour table change, or the pixels were purged or lost,
 * new pixels are allocated, unlocked and unset. A table is the same as another
 * when CopyBits takes it so; null is the standard one here too. clipPix carries
 * the old pixels over, one for one from the upper left corner on, stretchPix
 * scales them to the new size; both do nothing for purged pixels, and find the
 * nearest colours where depth or table changed, or dither with ditherPix. When
 * nothing changed, the pixels stay, locked or not, and the bounds may move. The
 * 32-bit format stays as long as the depth does, and starts as 0. The port's
 * colours stay.
 * The result combines mapPix (8 bits with another table), newDepth, newRowBytes
 * and reallocPix (new pixels were allocated); 0 means none of these.
 * After a failure the world is as it was, but the pixels of a
 * purgeable one may have been taken by the shortage itself.
 *
 * Both move all unlocked blocks when K's scramble switch is on, and ask K to
 * free what it can before they return -108.
 *
 * A pixel map and its device stand at the same address until the world is
 * updated or disposed of; the handle of the map stays for the world's life.
 * hRes and vRes are 72; pmVersion, packType, packSize, planeBytes and
 * pmReserved are 0; rowBytes has bit 15 set and bit 14 clear; pmTable is never
 * null.
 *
 * DisposeGWorld makes the null port current if the world's was, and the main
 * device if the world's own was. This and all other calls ignore an address that
 * is no live world; those with a result return null, 0 or -50.
 * \endcode */

/** The bits of the flags of NewGWorld and UpdateGWorld, and of the latter's
 * result. */
enum {
  QDE_Flag_PIX_PURGE = 0x1,          /**< new: purgeable pixels */
  QDE_Flag_NO_NEW_DEVICE = 0x2,      /**< new: share the device */
  QDE_Flag_USE_TEMP_MEM = 0x4,       /**< new: changes nothing */
  QDE_Flag_KEEP_LOCAL = 0x8,         /**< both: changes nothing */
  QDE_Flag_MAP_PIX = 0x10000,        /**< result: 8 bits with another table */
  QDE_Flag_NEW_DEPTH = 0x20000,      /**< result: another depth */
  QDE_Flag_NEW_ROW_BYTES = 0x80000,  /**< result: rows of other bytes */
  QDE_Flag_REALLOC_PIX = 0x100000,   /**< result: new pixels were allocated */
  QDE_Flag_CLIP_PIX = 0x10000000,    /**< update: carry the old pixels over */
  QDE_Flag_STRETCH_PIX = 0x20000000, /**< update: scale them to the new size */
  QDE_Flag_DITHER_PIX = 0x40000000   /**< update: and dither them */
};

/* ---- Pixels ------------------------------------------------------------- */

/** \page qde_pixels Pixels of QDE
 * \code{.unparsed}
 * Pixels are a relocatable block of K's store. baseAddr of the pixel map holds
 * its handle while the pixels are unlocked, its address while they are locked,
 * and null after they were lost (QDE_LosePixelsInFailedUpdates). An empty
 * handle there stands for purged pixels. A caller may store one: it then
 * belongs to the layer, which frees it when it allocates new pixels, and the
 * former pixels are lost.
 *
 * LockPixels returns 0, without a lock, when the pixels are purged or lost. A
 * lock is a flag: any number of locks is undone by one UnlockPixels.
 * GetPixBaseAddr returns the address of the pixels, locked or not, or null when
 * there are none; without a lock it is valid until the next call that moves or
 * frees blocks.
 * \endcode */

/* ---- Colour tables ------------------------------------------------------ */

/** A colour; components have 16 bits. */
typedef struct QDE_RGBColor {
  uint16_t red;   /**< 0 to 65535 */
  uint16_t green; /**< 0 to 65535 */
  uint16_t blue;  /**< 0 to 65535 */
} QDE_RGBColor;
/** An entry of a colour table. */
typedef struct QDE_ColorSpec {
  int16_t value;    /**< its index, unless bit 15 of ctFlags is set */
  QDE_RGBColor rgb; /**< its colour */
} QDE_ColorSpec;
/** A colour table. The first ctSize + 1 entries count. An entry's index is its
 * `value`, or its place when bit 15 of ctFlags is set. Tables of equal seed are
 * the same. */
typedef struct QDE_ColorTable {
  int32_t ctSeed;             /**< one for each content */
  int16_t ctFlags;            /**< bit 15: an entry's index is its place */
  int16_t ctSize;             /**< the number of entries, less 1 */
  QDE_ColorSpec ctTable[256]; /**< the entries */
} QDE_ColorTable;

/** Returns the standard table of 256 colours, shared by all 8-bit worlds without
 * their own. 32-bit worlds share another one, with a single, unused entry.
 * \return the table, not to be changed. */
QDE_API CTabHandle QDE_StandardColors(void);

/* ---- Ports and devices -------------------------------------------------- */

/** \page qde_ports Ports and devices of QDE
 * \code{.unparsed}
 * The current port is null at first, the current device is the main one. Both
 * calls keep what they are given without looking at it; SetGDevice of null
 * makes the main device current. Which port goes with which device is the
 * caller's business. CopyBits draws with the colours of the current port, and
 * with the initial ones when that is none of a live world; it does not look at
 * the current device.
 * \endcode */

/** The colours that a port draws with. Two ports of one world share them. */
enum {
  QDE_PortColor_FORE,   /**< foreground; black at first */
  QDE_PortColor_BACK,   /**< background; white at first */
  QDE_PortColor_OP,     /**< pin or weight of the arithmetic modes; black at first */
  QDE_PortColor_HILITE, /**< highlight; CCCC CCCC FFFF at first */
  QDE_PortColorCount    /**< how many there are */
};
/** Reads a colour of a port.
 * \param port of a live world.
 * \param which QDE_PortColor_...
 * \param[out] color receives it.
 * \return 0; -50 for what is no port of a live world, no such colour, or null. */
QDE_API int16_t QDE_GetPortColor(GWorldPtr port, int32_t which, QDE_RGBColor* color);
/** Sets a colour of a port.
 * \param port of a live world.
 * \param which QDE_PortColor_...
 * \param color what it becomes.
 * \return 0; -50 as above. */
QDE_API int16_t QDE_SetPortColor(GWorldPtr port, int32_t which, const QDE_RGBColor* color);

/** Returns the main device: direct, 32 bits, 1920 by 1080, without pixels.
 * \return the device. */
QDE_API GDHandle QDE_MainDevice(void);

/** Kinds of devices. */
enum {
  QDE_DeviceType_INDEXED = 0, /**< pixels are indices */
  QDE_DeviceType_DIRECT = 2   /**< pixels are colours */
};
/** The record behind a GDHandle. The pixel map of a world's device is the
 * world's own. */
typedef struct QDE_Device {
  int16_t gdType;      /**< QDE_DeviceType_... */
  PixMapHandle gdPMap; /**< its pixel map */
  Rect gdRect;         /**< its bounds */
} QDE_Device;

/* ---- 32-bit formats ----------------------------------------------------- */

/** \page qde_formats 32-bit formats of QDE
 * \code{.unparsed}
 * Format 0 keeps the bytes of a pixel in the order A, R, G, B in memory,
 * format 1 in the order B, G, R, A. QDE_SetGWorld32PixmapFormat converts the
 * pixels in place. Both calls return -50 for a null or 8-bit
 * world, a null variable, and a format other than 0 and 1.
 * \endcode */

/** Returns whether QDE_ForceBitmapCreationBitfields was last switched on. It has no
 * effect on new worlds.
 * \return 1 or 0. */
QDE_API Boolean QDE_IsBitmapCreationForced(void);

/* ---- CopyBits ----------------------------------------------------------- */

/** \page qde_copybits CopyBits of QDE
 * \code{.unparsed}
 * Source and destination are the pixel maps of worlds, copies of them, or
 * pixel maps of the caller's of 8 or 32 bits with the address of their pixels;
 * the latter two count as format 0, and with a null pmTable as standard
 * colours. Bitmaps of 1 bit are refused with -50.
 *
 * Scaling takes the nearest pixel to the upper left: column i of dw columns,
 * counted from destinationRect.left, shows column floor(i * sw / dw) of the sw
 * of sourceRect; rows likewise. Both bounds clip what is drawn without
 * changing the scale. An empty rectangle draws nothing and is no error.
 *
 * The result is as if the source had been read completely before the first
 * pixel was written.
 *
 * Modes. Formulas hold for each component s of a source pixel and d of the
 * destination, of 8 bits; of the port's colours, which have 16, the high byte
 * counts. F is the foreground, B the background, P the op colour.
 *
 *    bits of s that are   0 (black)  1 (white)   of indices
 *     0  srcCopy          F          B           s
 *     1  srcOr            F          d           s | d
 *     2  srcXor           ~d         d           s ^ d
 *     3  srcBic           B          d           d & ~s
 *     4  notSrcCopy       B          F           ~s
 *     5  notSrcOr         d          F           d | ~s
 *     6  notSrcXor        d          ~d          d ^ ~s
 *     7  notSrcBic        d          B           d & s
 *    32  blend            (s * P + d * (65535 - P)) / 65535, rounded down, with
 *                         all 16 bits of P
 *    33  addPin           min(s + d, P)
 *    34  addOver          s + d modulo 256
 *    35  subPin           max(d - s, P)
 *    36  transparent      the source pixel, or none of the background's colour
 *    37  adMax            max(s, d)
 *    38  subOver          d - s modulo 256
 *    39  adMin            min(s, d)
 *    50  hilite           where the source is not white, the background's colour
 *                         becomes the highlight colour, and the other way round
 *    +64 ditherCopy, or any other mode with dithering
 *
 * In modes 0 to 7 each bit of s takes its bit from one of two values, so that
 * with a black foreground and a white background 1 is s & d, 2 ~(s ^ d), and so
 * on. But srcCopy and notSrcCopy with other colours mix them, to the nearest:
 * (F * (255 - s) + B * s) / 255, and with F and B exchanged. Foreground and
 * background count in no other mode, but for 36 and 50 as said.
 *
 * 32 to 32 bits: srcCopy copies the fourth byte of the source, in the order of
 * the destination; all other modes leave that of the destination. 8 to 32 takes
 * the table's colours, black for an index beyond the table; srcCopy writes a
 * fourth byte of 0.
 *
 * 8 to 8 with the same table (of one seed, or of one content): modes 0 to 7 work
 * on indices as above if foreground and background are black and white, 2 and 6
 * always; 36 copies indices. Nothing of that needs dithering.
 *
 * All else to 8 bits works on the colours of both tables and takes the nearest
 * of the destination's, for any current device: the smallest sum of squared
 * differences, at a tie the lowest index, 0 in an empty table. A pixel whose
 * colour a mode leaves as it is keeps its index, other than in 0 and 4. hilite
 * swaps the nearest colours of the table to the two, so that doing it twice
 * brings the colours back.
 *
 * Dithering, to 8 bits only, spreads what the nearest colour of a pixel misses:
 * 7 sixteenths to the right, 3, 5 and 1 to the left, straight and right below,
 * rows from the top and pixels from the left of what is drawn. The sum for a
 * pixel is taken to the nearest whole, halves upward, the colour with it limited
 * to 0 and 255. A pixel of a colour of the table is drawn as it is and hands on
 * what came to it, so that flat areas stay clean.
 *
 * Pixels need not be locked: CopyBits pins them for the call and notes it in
 * the log (category "QDE"). With purged pixels, an unknown mode, a mask, or
 * anything null it draws nothing and leaves an error.
 * \endcode */

/* ---- Failures on request ------------------------------------------------ */

/** The calls that can be made to fail. */
enum {
  QDE_Call_NEW_GWORLD,        /**< NewGWorld */
  QDE_Call_UPDATE_GWORLD,     /**< UpdateGWorld, for a live world */
  QDE_Call_GET_PIXMAP_FORMAT, /**< QDE_GetGWorld32PixmapFormat */
  QDE_Call_SET_PIXMAP_FORMAT, /**< QDE_SetGWorld32PixmapFormat */
  QDE_CallCount               /**< how many there are */
};
/** Makes the next such call fail, before it has done anything.
 * \param call QDE_Call_...
 * \param error what it fails with; one that is not negative takes the request
 *     back. */
QDE_API void QDE_FailNextCall(int32_t call, int16_t error);

/** While on, an update that fails for any reason loses the pixels of its world:
 * its baseAddr is then null, and LockPixels returns 0 until an update
 * succeeds. Off at first.
 * \param on 1 or 0. */
QDE_API void QDE_LosePixelsInFailedUpdates(Boolean on);

/** Makes updates of live worlds replace the world's pointer, whether they succeed
 * or not. The old pointer stays valid until the world is disposed of by either:
 * both mean the same world.
 * \param updates so many of the next; 0 at first. */
QDE_API void QDE_ReplaceWorldInUpdates(uint32_t updates);

/** Counts the worlds that are alive.
 * \return their number. */
QDE_API uint64_t QDE_CountWorlds(void);

#ifdef __cplusplus
}
#endif

#endif
