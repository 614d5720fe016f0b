// The inverse of a colour table: the nearest index for each colour.
#ifndef QDE_INVERSE_COLORS_H
#define QDE_INVERSE_COLORS_H

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "host/QDE/pixels/colors.h"
#include "host/QDE/rows/row_colors.h"

namespace qde {

// Has the result of a search of the whole table: the smallest squared distance, at a
// tie the lowest index, 0 in a table without indices. The cube of all colours is
// divided into cells, each with a list of the few indices that can be nearest to one
// of its colours. The first request for a colour stores the nearest indices of it and
// its neighbours.
class InverseColors {
 public:
  // Throws std::bad_alloc.
  explicit InverseColors(const Palette& palette);

  [[nodiscard]] std::uint8_t Nearest(Color color) const {
    const std::uint8_t byte = nearest_.get()[PlaceOf(color)];
    return byte != 0 ? static_cast<std::uint8_t>(byte ^ mask_) : Find(color);
  }
  // The stored indices. The address is constant; requests add entries.
  [[nodiscard]] NearestTable Kept() const { return {nearest_.get(), mask_}; }
  [[nodiscard]] Color operator[](std::uint8_t index) const { return palette_[index]; }
  [[nodiscard]] const Palette& Table() const { return palette_; }

 private:
  // Five bits of each component select the cell.
  static constexpr int kCellBits = 5;
  static constexpr int kBitsInCell = 8 - kCellBits;
  static constexpr int kCellSize = 1 << kBitsInCell;
  // The neighbours that share 64 bytes of a NearestTable.
  static constexpr int kCubeSize = 4;
  static constexpr int kCubeColors = kCubeSize * kCubeSize * kCubeSize;
  static constexpr std::size_t kColors = std::size_t{1} << 24;
  static constexpr std::size_t kCells = std::size_t{1} << (3 * kCellBits);

  struct Box;
  struct Candidates;
  struct Cell {
    std::uint32_t start;  // in candidates_
    std::uint32_t end;    // exclusive
  };
  static std::size_t CellOf(Color color) { return JoinBits(color, kBitsInCell, kCellBits); }
  [[nodiscard]] Candidates AllIndices() const;
  [[nodiscard]] Candidates Reduce(const Candidates& candidates, const Box& box) const;
  void Fill(const Candidates& candidates, const Box& box);
  [[nodiscard]] std::uint8_t RarestIndex() const;
  [[nodiscard]] std::uint8_t Find(Color color) const;
  void KeepCubeOf(Color color) const;

  Palette palette_;
  std::array<Cell, kCells> cells_{};
  std::vector<std::uint8_t> candidates_;  // of each cell, the indices in order

  // 16 MiB of addresses; the system allocates a page at its first store.
  struct Free {
    void operator()(std::uint8_t* bytes) const { std::free(bytes); }
  };
  std::unique_ptr<std::uint8_t, Free> nearest_;  // a NearestTable, filled on request
  mutable std::bitset<kColors / kCubeColors> kept_;
  std::uint8_t mask_ = 0;  // the index that is stored as 0
};

// Returns the inverse of a table, and keeps it for later copies. Throws
// std::bad_alloc.
std::shared_ptr<const InverseColors> InverseOf(const Palette& palette);

}  // namespace qde

#endif
