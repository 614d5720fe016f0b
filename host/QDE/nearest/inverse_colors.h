// A colour table the other way round: which index is nearest to a colour.
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

// Finds just what a search of the whole table would find: the smallest squared
// distance, at a tie the lowest index, 0 in a table that leaves out all
// indices. The cube of all colours is cut into cells, and each cell knows those
// few indices that can be nearest to a colour within it. The nearest to one
// and to its neighbours are kept when it is asked for.
class InverseColors {
 public:
  // Throws std::bad_alloc.
  explicit InverseColors(const Palette& palette);

  [[nodiscard]] std::uint8_t Nearest(Color color) const {
    const std::uint8_t byte = nearest_.get()[PlaceOf(color)];
    return byte != 0 ? static_cast<std::uint8_t>(byte ^ mask_) : Find(color);
  }
  // What is kept. Stays where it is, and grows with what is asked for.
  [[nodiscard]] NearestTable Kept() const { return {nearest_.get(), mask_}; }
  [[nodiscard]] Color operator[](std::uint8_t index) const { return palette_[index]; }
  [[nodiscard]] const Palette& Table() const { return palette_; }

 private:
  // Five bits of each component choose the cell.
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

  // All colours would take 16 MiB, of which the system gives what is written.
  struct Free {
    void operator()(std::uint8_t* bytes) const { std::free(bytes); }
  };
  std::unique_ptr<std::uint8_t, Free> nearest_;  // a NearestTable; as it is asked for
  mutable std::bitset<kColors / kCubeColors> kept_;
  std::uint8_t mask_ = 0;  // the index that a kept byte of 0 stands for
};

// The inverse of a table, kept for the next copies to it. Throws std::bad_alloc.
std::shared_ptr<const InverseColors> InverseOf(const Palette& palette);

}  // namespace qde

#endif
