// An offscreen surface: its pixel map, its pixels, its device and the ports
// that stand for it.
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

// What a GWorldPtr points to.
struct QDE_Port {
  qde::Surface* surface;
};

namespace qde {

// What becomes of the old pixels when a surface gets new ones.
enum class Extent { Nothing, Clipped, Stretched };
struct Carry {
  Extent extent = Extent::Nothing;
  bool dithers = false;  // where they get other colours
};

class Surface {
 public:
  // `colors` is copied, or null for the standard ones; it counts at 8 bits only.
  // `shared` is the device of another, or null for one of its own. Throws
  // std::bad_alloc.
  Surface(const Layout& layout, PixelBlock pixels, bool purgeable, CTabHandle colors,
          GDHandle shared);
  ~Surface();
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;

  // Another port of this surface. Throws std::bad_alloc.
  GWorldPtr AddPort();
  [[nodiscard]] bool HasPort(GWorldPtr port) const;

  [[nodiscard]] PixMapHandle Map() { return &map_; }
  [[nodiscard]] GDHandle Device() const { return device_; }
  [[nodiscard]] bool OwnsDevice(GDHandle device) const { return device == &ownDevice_; }
  [[nodiscard]] const Layout& GetLayout() const { return layout_; }
  // What all of its ports draw with.
  [[nodiscard]] PortColors& Colors() { return colors_; }
  // Whether its indices mean what they mean in a table, null for the standard one.
  [[nodiscard]] bool HasTable(CTabHandle colors) const;

  // Gives false, and locks nothing, when the pixels are purged or lost.
  bool Lock();
  void Unlock();
  // Where the pixels are, locked or not; null when there are none.
  Ptr Pixels();

  // Moves the bounds, keeping their size.
  void MoveBounds(const Rect& bounds);
  // Makes the pixels anew, with `colors` as when it was made. After an error, or
  // std::bad_alloc, all is as before.
  Error Rebuild(const Layout& layout, CTabHandle colors, Carry carry);
  // From now on there are none, and not even a handle.
  void LosePixels();

  [[nodiscard]] Format GetFormat() const { return format_; }
  // Converts the pixels that are there.
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
  std::unique_ptr<OwnTable> table_;  // null when shared
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
