// The blit of surfaces, which the drawing layer does.
#include "bench/rows/drawing.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "QDE_host.h"
#include "bench/limits/limits.h"
#include "bench/rows/photograph.h"
#include "bench/subjects/peers.h"
#include "bench/subjects/world.h"

namespace bench {
namespace {

constexpr Size kModesSize = {1920, 1080};

// By the mode index of the blit; 15 and 16 are the same.
constexpr const char* kModes[] = {"srcCopy",    "srcOr",     "srcXor",      "srcBic",  "notSrcCopy",
                                  "notSrcOr",   "notSrcXor", "notSrcBic",   "blend",   "addPin",
                                  "addOver",    "subPin",    "addMax",      "subOver", "adMin",
                                  "ditherCopy", "",          "transparent", "hilite"};

SharedWorld Surface(int depth, const Size& size) {
  return ShareWorld(Kind::Surface, depth, size.width, size.height);
}

Work Draw(const SharedWorld& source, const SharedWorld& destination, int mode) {
  return Repeat([=] {
    PXL_Blit(source->Handle(), destination->Handle(), nullptr, nullptr,
             static_cast<std::uint16_t>(mode));
  });
}

using Limits = std::vector<Contender> (*)(const Picture& source, const Picture& destination);

std::vector<Contender> LimitsOfCopy(const Picture& source, const Picture& destination) {
  return LimitsOf(Shape::Copy, source, destination);
}

std::vector<Contender> SetUpCopy(const Size& from, const Size& to, Limits limits,
                                 Operation operation) {
  const SharedWorld source = Surface(PXL_Depth_32, from);
  const SharedWorld destination = Surface(PXL_Depth_32, to);
  const Picture sourceView = source->View();
  const Picture view = destination->View();
  std::vector<Contender> contenders = limits(sourceView, view);
  contenders.push_back({Role::Ours, "PXL", Draw(source, destination, 0)});
  contenders.push_back(
      {Role::Plain, "plain loop", Repeat([=] { DoPlainly(operation, sourceView, view); })});
  std::ranges::move(PeersAt(operation, sourceView, view), std::back_inserter(contenders));
  return contenders;
}

// Weights and limits in the middle of their range, so that no mode can skip work.
void SetOpColor(PXL_WorldHandle worldH) {
  const QDE_RGBColor grey = {0x8000, 0x9000, 0xA000};
  QDE_SetPortColor((**worldH).gworld, QDE_PortColor_OP, &grey);
}

std::vector<Contender> SetUpMode(int mode) {
  const SharedWorld source = Surface(PXL_Depth_32, kModesSize);
  const SharedWorld destination = Surface(PXL_Depth_32, kModesSize);
  SetOpColor(destination->Handle());
  std::vector<Contender> contenders = LimitsOf(Shape::Combine, source->View(), destination->View());
  contenders.push_back({Role::Ours, "PXL", Draw(source, destination, mode)});
  contenders.push_back({Role::Reference, "srcCopy", Draw(source, destination, 0)});
  return contenders;
}

std::vector<Contender> SetUpDepths(const SharedWorld& source, int to, Shape shape) {
  const SharedWorld destination = Surface(to, kModesSize);
  const SharedWorld source32 = Surface(PXL_Depth_32, kModesSize);
  const SharedWorld destination32 = Surface(PXL_Depth_32, kModesSize);
  std::vector<Contender> contenders = LimitsOf(shape, source->View(), destination->View());
  contenders.push_back({Role::Ours, "PXL", Draw(source, destination, 0)});
  contenders.push_back({Role::Reference, "32 to 32", Draw(source32, destination32, 0)});
  return contenders;
}

Size Half(const Size& size) {
  return {size.width / 2, size.height / 2};
}

}  // namespace

std::vector<Contender> SetUpDrawnCopy(const Size& size) {
  const SharedWorld source = Surface(PXL_Depth_32, size);
  const SharedWorld destination = Surface(PXL_Depth_32, size);
  std::vector<Contender> contenders = LimitsOfCopy(source->View(), destination->View());
  contenders.push_back({Role::Ours, "PXL", Draw(source, destination, 0)});
  return contenders;
}

void AddDrawing() {
  for (const Size& size : CommonSizes()) {
    AddRow(NameFor("draw 1:1", size),
           [size] { return SetUpCopy(size, size, LimitsOfCopy, Operation::Copy); });
  }
  for (const Size& size : CommonSizes()) {
    AddRow(NameFor("draw 2:1 down from", size), [size] {
      return SetUpCopy(size, Half(size), LimitsOfHalving, Operation::HalveNearest);
    });
  }
  for (const Size& size : CommonSizes()) {
    AddRow(NameFor("draw 1:2 up to", size), [size] {
      return SetUpCopy(Half(size), size, LimitsOfDoubling, Operation::DoubleNearest);
    });
  }
  for (int mode = 1; mode < int{std::size(kModes)}; ++mode) {
    if (*kModes[mode] == 0) continue;
    AddRow(NameFor(fmt::format("draw mode {}", kModes[mode]), kModesSize),
           [mode] { return SetUpMode(mode); });
  }
  AddRow(NameFor("draw 32 to 8", kModesSize), [] {
    const SharedWorld source = Surface(32, kModesSize);
    FillWithPhotograph(source->View());
    return SetUpDepths(source, 8, Shape::Narrow4);
  });
  AddRow(NameFor("draw noise 32 to 8", kModesSize),
         [] { return SetUpDepths(Surface(32, kModesSize), 8, Shape::Narrow4); });
  AddRow(NameFor("draw 8 to 32", kModesSize),
         [] { return SetUpDepths(Surface(8, kModesSize), 32, Shape::Widen4); });
}

}  // namespace bench
