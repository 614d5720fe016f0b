// Creates, locks, rebuilds and converts a surface.
#include "host/QDE/surfaces/surface.h"

#include <algorithm>
#include <utility>

#include "K_host.h"
#include "host/QDE/copy/transfer.h"
#include "host/QDE/pixels/colors.h"
#include "host/QDE/surfaces/registry.h"
#include "host/QDE/surfaces/reverse_pixels.h"

namespace qde {
namespace {

constexpr std::int32_t kSeventyTwoDotsPerInch = 72 << 16;
constexpr std::int16_t kIndexedPixels = 0;
constexpr std::int16_t kDirectPixels = 16;

// Null: use the shared table.
std::unique_ptr<OwnTable> CopyTable(const Layout& layout, CTabHandle colors) {
  if (layout.depth != 8 || colors == nullptr || colors == StandardColors()) return nullptr;
  return std::make_unique<OwnTable>(**colors);
}

CTabHandle SharedTable(const Layout& layout) {
  return layout.depth == 8 ? StandardColors() : DirectColors();
}

// Unlocked, with the handle of its pixels.
PixMap MakeRecord(const Layout& layout, Handle pixels, OwnTable* table) {
  const bool indexed = layout.depth == 8;
  PixMap map{};
  map.baseAddr = reinterpret_cast<Ptr>(pixels);
  map.rowBytes = static_cast<std::int16_t>(layout.rowBytes | kPixMapFlag);
  map.bounds = layout.bounds;
  map.hRes = kSeventyTwoDotsPerInch;
  map.vRes = kSeventyTwoDotsPerInch;
  map.pixelType = indexed ? kIndexedPixels : kDirectPixels;
  map.pixelSize = layout.depth;
  map.cmpCount = indexed ? 1 : 3;
  map.cmpSize = 8;
  map.pmTable = table != nullptr ? table->Handle() : SharedTable(layout);
  return map;
}

// The common size of `from` and `to`, at the upper left corner of `place`.
Rect CommonPart(const Rect& from, const Rect& to, const Rect& place) {
  const std::int32_t width = std::min(Width(from), Width(to));
  const std::int32_t height = std::min(Height(from), Height(to));
  return {place.top, place.left, static_cast<std::int16_t>(place.top + height),
          static_cast<std::int16_t>(place.left + width)};
}

}  // namespace

Surface::Surface(const Layout& layout, PixelBlock pixels, bool purgeable, CTabHandle colors,
                 GDHandle shared)
    : layout_(layout),
      purgeable_(purgeable),
      pixels_(std::move(pixels)),
      table_(CopyTable(layout, colors)),
      record_(std::make_unique<PixMap>(MakeRecord(layout, pixels_.get(), table_.get()))),
      map_(record_.get()),
      device_(shared != nullptr ? shared : &ownDevice_) {
  UpdateDevice();
  try {
    Register(record_.get(), this);
    Register(&map_, this);
    Register(&ownDevice_, this);
  } catch (...) {
    UnregisterAll(this);
    throw;
  }
}

Surface::~Surface() {
  AdoptStoredHandle();
  UnregisterAll(this);
}

GWorldPtr Surface::AddPort() {
  auto port = std::make_unique<QDE_Port>(QDE_Port{this});
  ports_.reserve(ports_.size() + 1);
  Register(port.get(), this);
  return ports_.emplace_back(std::move(port)).get();
}

bool Surface::HasPort(GWorldPtr port) const {
  return std::any_of(ports_.begin(), ports_.end(),
                     [port](const auto& mine) { return mine.get() == port; });
}

bool Surface::HasTable(CTabHandle colors) const {
  return AreSame(**record_->pmTable, colors != nullptr ? **colors : **StandardColors());
}

// The surface takes ownership of a handle that a caller stored.
void Surface::AdoptStoredHandle() {
  const Handle stored = HandleIn(record_->baseAddr);
  if (stored != nullptr && stored != pixels_.get()) pixels_.reset(stored);
}

// The master pointer is read only while the block is locked: otherwise memory
// pressure on another thread may be changing it.
bool Surface::IsLocked() const {
  return record_->baseAddr != nullptr && K_IsHandleLocked(pixels_.get()) != 0 &&
         record_->baseAddr == *pixels_;
}

bool Surface::Lock() {
  AdoptStoredHandle();
  if (IsLocked()) return true;
  // Locked first: memory pressure on another thread may purge unlocked pixels.
  K_LockHandle(pixels_.get());
  const Ptr pixels = Pixels();
  if (pixels == nullptr) {
    K_UnlockHandle(pixels_.get());
    return false;
  }
  record_->baseAddr = pixels;
  return true;
}

void Surface::Unlock() {
  AdoptStoredHandle();
  if (!IsLocked()) return;
  record_->baseAddr = reinterpret_cast<Ptr>(pixels_.get());
  K_UnlockHandle(pixels_.get());
}

Ptr Surface::Pixels() {
  AdoptStoredHandle();
  const Pin pin(pixels_.get());
  const bool stored = pixels_ != nullptr && HandleIn(record_->baseAddr) == pixels_.get();
  return stored || IsLocked() ? PixelsOf(pixels_.get(), ByteCount(layout_)) : nullptr;
}

void Surface::MoveBounds(const Rect& bounds) {
  layout_.bounds = bounds;
  record_->bounds = bounds;
  UpdateDevice();
}

void Surface::UpdateDevice() {
  deviceRecord_ = {static_cast<std::int16_t>(layout_.depth == 8 ? QDE_DeviceType_INDEXED
                                                                : QDE_DeviceType_DIRECT),
                   &map_, layout_.bounds};
}

Image Surface::ImageAt(Ptr pixels) const {
  return {reinterpret_cast<std::uint8_t*>(pixels), layout_, format_, *record_->pmTable};
}

void Surface::CarryOver(const Image& destination, Carry carry) {
  const Pin pin(pixels_.get());
  const Ptr old = Pixels();
  if (old == nullptr || carry.extent == Extent::Nothing) return;
  const Rect& from = layout_.bounds;
  const Rect& to = destination.layout.bounds;
  const Ink ink{.mode = carry.dithers ? kDither : std::int16_t{0}};
  if (carry.extent == Extent::Stretched) {
    Transfer(ImageAt(old), destination, from, to, ink);
  } else {
    Transfer(ImageAt(old), destination, CommonPart(from, to, from), CommonPart(from, to, to), ink);
  }
}

Error Surface::Rebuild(const Layout& layout, CTabHandle colors, Carry carry) {
  PixelBlock pixels = NewPixelBlock(ByteCount(layout), purgeable_);
  if (pixels == nullptr) return kMemoryFull;
  auto table = CopyTable(layout, colors);
  auto record = std::make_unique<PixMap>(MakeRecord(layout, pixels.get(), table.get()));
  const Format format = layout.depth == layout_.depth ? format_ : kARGB;
  {
    const Pin pin(pixels.get());
    auto* base = reinterpret_cast<std::uint8_t*>(PixelsOf(pixels.get(), ByteCount(layout)));
    if (base != nullptr) CarryOver({base, layout, format, *record->pmTable}, carry);
  }
  Register(record.get(), this);

  Unregister(record_.get());
  AdoptStoredHandle();
  layout_ = layout;
  format_ = format;
  pixels_ = std::move(pixels);
  record_ = std::move(record);
  table_ = std::move(table);
  map_ = record_.get();
  UpdateDevice();
  return kNoError;
}

void Surface::LosePixels() {
  AdoptStoredHandle();
  pixels_.reset();
  record_->baseAddr = nullptr;
}

void Surface::SetFormat(Format format) {
  if (format == format_) return;
  format_ = format;
  const Pin pin(pixels_.get());
  const Ptr pixels = Pixels();
  if (pixels == nullptr) return;
  ReversePixels(pixels, Height(layout_.bounds), Width(layout_.bounds), layout_.rowBytes);
}

}  // namespace qde
