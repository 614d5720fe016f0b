// The blit of deep Worlds: conversions between depths, and copies.
#include "bench/rows/conversions.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "bench/limits/limits.h"
#include "bench/subjects/peers.h"
#include "bench/subjects/world.h"

namespace bench {
namespace {

struct Blit {
  int from;
  int to;
  Operation operation;
  Shape shape;
};

constexpr Blit kBlits[] = {
    {32, 64, Operation::From8to16, Shape::Widen2},  {32, 128, Operation::From8toF, Shape::Widen4},
    {64, 32, Operation::From16to8, Shape::Narrow2}, {128, 32, Operation::FromFto8, Shape::Narrow4},
    {64, 64, Operation::Copy, Shape::Copy},         {128, 128, Operation::Copy, Shape::Copy},
};

const Blit& BlitBetween(int from, int to) {
  return *std::find_if(std::begin(kBlits), std::end(kBlits),
                       [from, to](const Blit& blit) { return blit.from == from && blit.to == to; });
}

}  // namespace

std::vector<Contender> SetUpBlit(int from, int to, const Size& size, bool withPeers) {
  const Blit& blit = BlitBetween(from, to);
  const SharedWorld source = ShareWorld(Kind::Frame, from, size.width, size.height);
  const SharedWorld destination = ShareWorld(Kind::Frame, to, size.width, size.height);
  const Picture sourceView = source->View();
  const Picture view = destination->View();

  std::vector<Contender> contenders = LimitsOf(blit.shape, sourceView, view);
  contenders.push_back({Role::Ours, "PXL", Repeat([source, destination] {
                          PXL_Blit(source->Handle(), destination->Handle(), nullptr, nullptr, 0);
                        })});
  if (!withPeers) return contenders;
  if (from != to) {
    contenders.push_back({Role::Plain, "plain loop", Repeat([sourceView, view, &blit] {
                            DoPlainly(blit.operation, sourceView, view);
                          })});
  }
  std::ranges::move(PeersAt(blit.operation, sourceView, view), std::back_inserter(contenders));
  return contenders;
}

void AddConversions() {
  for (const Blit& blit : kBlits) {
    for (const Size& size : CommonSizes()) {
      AddRow(NameFor(fmt::format("blit {} to {} bits", blit.from, blit.to), size),
             [&blit, size] { return SetUpBlit(blit.from, blit.to, size, true); });
    }
  }
}

}  // namespace bench
