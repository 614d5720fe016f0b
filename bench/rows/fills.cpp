// Clearing a World.
#include "bench/rows/fills.h"

#include <algorithm>
#include <iterator>

#include "bench/limits/limits.h"
#include "bench/rows/rows.h"
#include "bench/subjects/peers.h"
#include "bench/subjects/world.h"

namespace bench {
namespace {

// Clearing fills the padding of the rows as well.
Picture WithPadding(Picture picture) {
  picture.width = static_cast<int>(picture.rowBytes) / picture.pixelBytes;
  return picture;
}

std::vector<Contender> SetUpFill(std::uint32_t word, const Size& size) {
  const SharedWorld world = ShareWorld(Kind::Frame, PXL_Depth_32, size.width, size.height);
  const Picture view = WithPadding(world->View());
  std::vector<Contender> contenders;
  if (word == 0) {
    contenders.push_back(LimitOfZeroFill(view));
  } else {
    contenders = LimitsOf(Shape::Fill, view, view);
    contenders.push_back(
        {Role::Plain, "plain loop", Repeat([view] { DoPlainly(Operation::Fill, view, view); })});
  }
  contenders.push_back({Role::Ours, "PXL", Repeat([world, word] {
                          PXL_ClearWorldToLong(world->Handle(), static_cast<std::int32_t>(word));
                        })});
  std::ranges::move(PeersAt(Operation::Fill, view, view), std::back_inserter(contenders));
  return contenders;
}

std::vector<Contender> SetUpSwap(const Size& size) {
  const SharedWorld world = ShareWorld(Kind::Frame, PXL_Depth_32, size.width, size.height);
  const Picture view = world->View();
  std::vector<Contender> contenders = LimitsOf(Shape::InPlace, view, view);
  contenders.push_back({Role::Ours, "PXL", [world](std::size_t calls) {
                          for (std::size_t i = 0; i < calls; ++i) {
                            const bool isStandard =
                                ((**world->Handle()).flags & PXL_Flag_ALT_ORDER) == 0;
                            PXL_SetChannelOrder(world->Handle(), isStandard ? 1 : 0);
                          }
                        }});
  contenders.push_back({Role::Plain, "plain loop",
                        Repeat([view] { DoPlainly(Operation::ReverseBytes, view, view); })});
  std::ranges::move(PeersAt(Operation::ReverseBytes, view, view), std::back_inserter(contenders));
  return contenders;
}

}  // namespace

void AddFills() {
  for (const Size& size : CommonSizes()) {
    AddRow(NameFor("clear to zero", size), [size] { return SetUpFill(0, size); });
  }
  for (const Size& size : CommonSizes()) {
    AddRow(NameFor("clear to a word", size), [size] { return SetUpFill(kFillWord, size); });
  }
  for (const Size& size : CommonSizes()) {
    AddRow(NameFor("swap channel order", size), [size] { return SetUpSwap(size); });
  }
}

}  // namespace bench
