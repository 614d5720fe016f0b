// Finds the nearest index of a colour by dividing the cube of all colours.
#include "host/QDE/nearest/inverse_colors.h"

#include <algorithm>
#include <limits>
#include <new>

namespace qde {
namespace {

using Components = std::array<int, 3>;

Components ComponentsOf(Color color) {
  return {color.red, color.green, color.blue};
}

int SquaredDistance(Color a, Color b) {
  const int red = a.red - b.red;
  const int green = a.green - b.green;
  const int blue = a.blue - b.blue;
  return red * red + green * green + blue * blue;
}

// Greys, and colours on the surface of the cube of all colours.
bool IsCommon(Color color) {
  const auto isEnd = [](std::uint8_t component) { return component == 0 || component == 0xFF; };
  return isEnd(color.red) || isEnd(color.green) || isEnd(color.blue) ||
         (color.red == color.green && color.green == color.blue);
}

// The first of the nearest indices; 0 without any. Distance and index share a number,
// distance above, so that its minimum is found without a branch.
std::uint8_t Search(const Palette& palette, const std::uint8_t* first, const std::uint8_t* last,
                    Color color) {
  int least = std::numeric_limits<int>::max() & ~0xFF;
  for (; first != last; ++first) {
    least = std::min(least, SquaredDistance(palette[*first], color) << 8 | *first);
  }
  return static_cast<std::uint8_t>(least & 0xFF);
}

}  // namespace

// A cube within the cube of all colours.
struct InverseColors::Box {
  Components low;
  int size;

  [[nodiscard]] Color Middle() const {
    const auto middle = [this](std::size_t k) {
      return static_cast<std::uint8_t>(low[k] + size / 2);
    };
    return {middle(0), middle(1), middle(2)};
  }
  // The minimum, over the box, of the squared distance from a less that from b. The
  // squares of the box's colour cancel out, so that the difference is linear along
  // each axis, and its minimum is at an end.
  [[nodiscard]] int LeastExcess(Color a, Color b) const {
    const Components from = ComponentsOf(a);
    const Components to = ComponentsOf(b);
    int least = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      const int slope = from[k] - to[k];
      const int end = slope > 0 ? low[k] + size - 1 : low[k];
      least += slope * (from[k] + to[k] - 2 * end);
    }
    return least;
  }
};

struct InverseColors::Candidates {
  std::array<std::uint8_t, 256> indices{};
  std::size_t count = 0;

  void Add(std::uint8_t index) { indices[count++] = index; }
  [[nodiscard]] const std::uint8_t* begin() const { return indices.data(); }
  [[nodiscard]] const std::uint8_t* end() const { return indices.data() + count; }
};

InverseColors::InverseColors(const Palette& palette) : palette_(palette) {
  Fill(AllIndices(), {{0, 0, 0}, 256});
  mask_ = RarestIndex();
  constexpr std::size_t kReadBeyond = 3;
  // Zero pages, which take no memory before the first store.
  nearest_.reset(static_cast<std::uint8_t*>(std::calloc(kColors + kReadBeyond, 1)));
  if (nearest_ == nullptr) throw std::bad_alloc();
}

InverseColors::Candidates InverseColors::AllIndices() const {
  Candidates all;
  for (int i = 0; i < 256; ++i) {
    const auto index = static_cast<std::uint8_t>(i);
    if (palette_.Has(index)) all.Add(index);
  }
  return all;
}

// Omits the indices that are nowhere in the box nearer than the one nearest to its
// middle. At a tie the lower index is chosen, so that only lower indices are kept for
// a tie.
InverseColors::Candidates InverseColors::Reduce(const Candidates& candidates,
                                                const Box& box) const {
  const std::uint8_t best = Search(palette_, candidates.begin(), candidates.end(), box.Middle());
  Candidates left;
  for (const std::uint8_t index : candidates) {
    const int excess = box.LeastExcess(palette_[index], palette_[best]);
    if (excess < 0 || (excess == 0 && index <= best)) left.Add(index);
  }
  return left;
}

// From the whole cube down to the cells: an index that cannot be nearest in a box
// cannot be nearest in any part of it.
// NOLINTNEXTLINE(misc-no-recursion): no deeper than a cell has bits.
void InverseColors::Fill(const Candidates& candidates, const Box& box) {
  const Candidates left = Reduce(candidates, box);
  if (box.size == kCellSize) {
    const auto start = static_cast<std::uint32_t>(candidates_.size());
    candidates_.insert(candidates_.end(), left.begin(), left.end());
    cells_[CellOf(box.Middle())] = {start, static_cast<std::uint32_t>(candidates_.size())};
    return;
  }
  const int half = box.size / 2;
  for (int part = 0; part < 8; ++part) {
    const auto low = [&](std::size_t k) { return box.low[k] + ((part >> k & 1) != 0 ? half : 0); };
    Fill(left, {{low(0), low(1), low(2)}, half});
  }
}

// The index that is stored as 0 takes longer to find, so it is the one in the fewest
// cells. Black, white, greys and pure colours are in few cells but are frequent in
// some pictures; they are chosen only if there is no other.
std::uint8_t InverseColors::RarestIndex() const {
  std::array<std::size_t, 256> costs{};
  for (const std::uint8_t index : candidates_) ++costs[index];
  for (std::size_t i = 0; i < costs.size(); ++i) {
    const Color color = palette_[static_cast<std::uint8_t>(i)];
    if (costs[i] != 0 && IsCommon(color)) costs[i] += candidates_.size();
  }
  return static_cast<std::uint8_t>(std::min_element(costs.begin(), costs.end()) - costs.begin());
}

std::uint8_t InverseColors::Find(Color color) const {
  if (!kept_[PlaceOf(color) / kCubeColors]) KeepCubeOf(color);
  return static_cast<std::uint8_t>(nearest_.get()[PlaceOf(color)] ^ mask_);
}

void InverseColors::KeepCubeOf(Color color) const {
  const auto& [start, end] = cells_[CellOf(color)];
  const std::uint8_t* candidates = candidates_.data();
  const auto at = [](std::uint8_t component, int place) {
    return static_cast<std::uint8_t>((component & ~(kCubeSize - 1)) | (place & (kCubeSize - 1)));
  };
  for (int i = 0; i < kCubeColors; ++i) {
    const Color each = {at(color.red, i / (kCubeSize * kCubeSize)), at(color.green, i / kCubeSize),
                        at(color.blue, i)};
    const std::uint8_t index = Search(palette_, candidates + start, candidates + end, each);
    nearest_.get()[PlaceOf(each)] = static_cast<std::uint8_t>(index ^ mask_);
  }
  kept_.set(PlaceOf(color) / kCubeColors);
}

std::shared_ptr<const InverseColors> InverseOf(const Palette& palette) {
  // At most 64 MiB together, if all colours were requested from each.
  constexpr std::size_t kKept = 4;
  using Kept = std::vector<std::shared_ptr<const InverseColors>>;
  // In the order of use. Never destroyed: worlds may be drawn to while the process
  // ends.
  static auto* const kept = new Kept;
  auto found = std::find_if(kept->begin(), kept->end(), [&palette](const auto& inverse) {
    return inverse->Table() == palette;
  });
  if (found == kept->end()) {
    auto made = std::make_shared<const InverseColors>(palette);
    kept->reserve(kKept);
    if (kept->size() == kKept) kept->erase(kept->begin());
    found = kept->insert(kept->end(), std::move(made));
  }
  std::rotate(found, found + 1, kept->end());
  return kept->back();
}

}  // namespace qde
