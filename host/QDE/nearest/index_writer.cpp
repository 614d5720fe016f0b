// Writes the nearest indices of rows of colours, dithered or not.
#include "host/QDE/nearest/index_writer.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vector>

#include "host/QDE/pixels/pixel.h"
#include "simd/processor_level.h"

namespace qde {
namespace {

// Looks up known colours first, then computes the missing entries.
class Finder {
 public:
  explicit Finder(const IndexTarget& target) : colors_(*target.colors), format_(target.format) {}

  void Find(const std::uint8_t* pixels, std::uint8_t* indices, std::size_t count) const {
    const NearestTable kept = colors_.Kept();
    routine_(kept, format_, pixels, indices, count);
    const std::uint8_t* const end = indices + count;
    for (std::uint8_t* index = indices; index != end; ++index) {
      index = static_cast<std::uint8_t*>(
          std::memchr(index, kept.mask, static_cast<std::size_t>(end - index)));
      if (index == nullptr) return;
      const auto position = static_cast<std::size_t>(index - indices);
      *index = colors_.Nearest(ColorAt(pixels, position, format_));
    }
  }

 private:
  const InverseColors& colors_;
  Format format_;
  decltype(ColorRoutines::find) routine_ = ColorRoutinesOf(simd::ProcessorLevel()).find;
};

class NearestWriter : public IndexWriter {
 public:
  explicit NearestWriter(IndexTarget target) : target_(std::move(target)), finder_(target_) {}

  void Write(const std::uint8_t* pixels, std::uint8_t* indices, std::size_t count) override {
    finder_.Find(pixels, indices, count);
  }

 private:
  IndexTarget target_;
  Finder finder_;
};

// Keeps the old indices that have the colour of the new pixel.
class KeepingWriter : public IndexWriter {
 public:
  KeepingWriter(IndexTarget target, std::size_t width)
      : target_(std::move(target)),
        finder_(target_),
        components_(ToPixel(kWhite, target_.format)),
        found_(width),
        shown_(width * sizeof(Pixel32)) {
    for (std::size_t i = 0; i < colors_.size(); ++i) {
      colors_[i] = ToPixel((*target_.colors)[static_cast<std::uint8_t>(i)], target_.format);
    }
  }

  void Write(const std::uint8_t* pixels, std::uint8_t* indices, std::size_t count) override {
    finder_.Find(pixels, found_.data(), count);
    show_(colors_.data()->data(), indices, shown_.data(), count);
    const auto components = Load<std::uint32_t>(components_.data(), 0);
    const std::uint8_t* const found = found_.data();
    const std::uint8_t* const shown = shown_.data();
    for (std::size_t i = 0; i < count; ++i) {
      const auto change = Load<std::uint32_t>(pixels, i) ^ Load<std::uint32_t>(shown, i);
      const auto kept = static_cast<std::uint8_t>((change & components) == 0 ? 0xFF : 0x00);
      indices[i] = static_cast<std::uint8_t>((indices[i] & kept) | (found[i] & ~kept));
    }
  }

 private:
  IndexTarget target_;
  Finder finder_;
  decltype(ColorRoutines::show) show_ = ColorRoutinesOf(simd::ProcessorLevel()).show;
  Pixel32 components_;
  std::array<Pixel32, 256> colors_{};
  std::vector<std::uint8_t> found_;
  std::vector<std::uint8_t> shown_;
};

// The error of a pixel by component, or a sum of shares of errors.
using Miss = std::array<int, 3>;

Miss ToMiss(Color color) {
  return {color.red, color.green, color.blue};
}

std::uint8_t Limited(int component) {
  return static_cast<std::uint8_t>(std::clamp(component, 0, 0xFF));
}

class DitheringWriter : public IndexWriter {
 public:
  DitheringWriter(IndexTarget target, std::size_t count)
      : target_(std::move(target)), current_(count + 2), next_(count + 2) {}

  void Write(const std::uint8_t* pixels, std::uint8_t* indices, std::size_t count) override {
    std::swap(current_, next_);
    std::fill(next_.begin(), next_.end(), Miss{});
    for (std::size_t i = 0; i < count; ++i) {
      const Miss due = DueAt(i);
      const Color color = ColorAt(pixels, i, target_.format);
      Spread(i, IsExact(color, &indices[i]) ? due : Approach(color, due, &indices[i]));
    }
  }

 private:
  // Sums of sixteenths to the nearest whole, halves upward.
  [[nodiscard]] Miss DueAt(std::size_t position) const {
    Miss due = current_[position + 1];
    for (int& component : due) component = (component + 8) >> 4;
    return due;
  }

  // If the table has the colour: sets the index and returns true.
  bool IsExact(Color color, std::uint8_t* index) const {
    const InverseColors& colors = *target_.colors;
    if (target_.keepsIndices && color == colors[*index]) return true;
    const std::uint8_t nearest = colors.Nearest(color);
    if (color != colors[nearest]) return false;
    *index = nearest;
    return true;
  }

  // Sets the index nearest to the colour plus its received error, and returns the
  // new error. The sum is limited to the cube of colours: errors outside of it would
  // accumulate.
  Miss Approach(Color color, const Miss& due, std::uint8_t* index) const {
    const Color wanted = {Limited(color.red + due[0]), Limited(color.green + due[1]),
                          Limited(color.blue + due[2])};
    *index = target_.colors->Nearest(wanted);
    Miss miss = ToMiss(wanted);
    const Miss got = ToMiss((*target_.colors)[*index]);
    for (std::size_t k = 0; k < miss.size(); ++k) miss[k] -= got[k];
    return miss;
  }

  void Spread(std::size_t position, const Miss& miss) {
    for (std::size_t k = 0; k < miss.size(); ++k) {
      current_[position + 2][k] += 7 * miss[k];
      next_[position][k] += 3 * miss[k];
      next_[position + 1][k] += 5 * miss[k];
      next_[position + 2][k] += miss[k];
    }
  }

  IndexTarget target_;
  // Errors for this row and the next, in sixteenths, with one more element at each end
  // for shares that fall outside of the row.
  std::vector<Miss> current_;
  std::vector<Miss> next_;
};

}  // namespace

std::unique_ptr<IndexWriter> MakeNearestWriter(IndexTarget target, std::size_t width) {
  if (target.keepsIndices) return std::make_unique<KeepingWriter>(std::move(target), width);
  return std::make_unique<NearestWriter>(std::move(target));
}

std::unique_ptr<IndexWriter> MakeDitheringWriter(IndexTarget target, std::size_t count) {
  return std::make_unique<DitheringWriter>(std::move(target), count);
}

}  // namespace qde
