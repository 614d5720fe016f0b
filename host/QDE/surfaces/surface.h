// An offscreen surface: its pixel map, its pixels, its device and its ports.
#ifndef QDE_SURFACE_H
#define QDE_SURFACE_H

#include <memory>
#include <vector>

#include "host/QDE/pixels/colors.h"
#include "host/QDE/pixels/errors.h"
#include "host/QDE/pixels/image.h"
#include "host/QDE/pixels/port_colors.h"
#include "host/QDE/surfaces/pixel_block.h"

namespace qde {

class Surface;

}  // namespace qde

// The record behind a GWorldPtr.
struct QDE_Port {
  qde::Surface* surface;
};

namespace qde {

// How an update transfers the old pixels to the new ones.
enum class Extent { Nothing, Clipped, Stretched };
struct Carry {
  Extent extent = Extent::Nothing;
  bool dithers = false;  // if their colours change
};

class Surface {
 public:
  // `colors`, used at 8 bits only, is copied; null for the standard table. `shared` is
  // the device of another surface; null for an own device. Throws std::bad_alloc.
  Surface(const Layout& layout, PixelBlock pixels, bool purgeable, CTabHandle colors,
          GDHandle shared);
  ~Surface();
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;

  // Adds a port to this surface. Throws std::bad_alloc.
  GWorldPtr AddPort();
  [[nodiscard]] bool HasPort(GWorldPtr port) const;

  [[nodiscard]] PixMapHandle Map() { return &map_; }
  [[nodiscard]] GDHandle Device() const { return device_; }
  [[nodiscard]] bool OwnsDevice(GDHandle device) const { return device == &ownDevice_; }
  [[nodiscard]] const Layout& GetLayout() const { return layout_; }
  // The colours of all of its ports.
  [[nodiscard]] PortColors& Colors() { return colors_; }
  // Whether its indices have the colours of a table, null for the standard one.
  [[nodiscard]] bool HasTable(CTabHandle colors) const;

  // Returns false, without a lock, if the pixels are purged or lost.
  bool Lock();
  void Unlock();
  // The address of the pixels, locked or not; null without pixels.
  Ptr Pixels();

  // Moves the bounds, keeping their size.
  void MoveBounds(const Rect& bounds);
  // Allocates new pixels, with `colors` as in the constructor. After an error, or
  // std::bad_alloc, the surface is unchanged.
  Error Rebuild(const Layout& layout, CTabHandle colors, Carry carry);
  // Frees the pixels and their handle.
  void LosePixels();

  [[nodiscard]] Format GetFormat() const { return format_; }
  // Converts the pixels.
  void SetFormat(Format format);

 private:
  [[nodiscard]] bool IsLocked() const;
  void AdoptStoredHandle();
  [[nodiscard]] Image ImageAt(Ptr pixels) const;
  void CarryOver(const Image& destination, Carry carry);
  void UpdateDevice();

  Layout layout_;
  Format format_ = kARGB;
  bool purgeable_;
  PixelBlock pixels_;                // null when lost
  std::unique_ptr<OwnTable> table_;  // null: the shared table
  std::unique_ptr<PixMap> record_;
  PixMap* map_;  // the record; a PixMapHandle is the address of this
  QDE_Device deviceRecord_{};
  QDE_Device* ownDevice_ = &deviceRecord_;  // a GDHandle is the address of this
  GDHandle device_;
  PortColors colors_ = kInitialColors;
  std::vector<std::unique_ptr<QDE_Port>> ports_;
};

}  // namespace qde

#endif
