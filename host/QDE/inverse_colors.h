// A colour table the other way round: which index is nearest to a colour.
#ifndef QDE_INVERSE_COLORS_H
#define QDE_INVERSE_COLORS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "colors.h"

namespace qde {

// Finds just what a search of the whole table would find: the smallest squared
// distance, at a tie the lowest index, 0 in a table that leaves out all
// indices. The cube of all colours is cut into cells, and each cell knows those
// few indices that can be nearest to a colour within it.
class InverseColors {
 public:
  // Throws std::bad_alloc.
  explicit InverseColors(const Palette& palette);

  [[nodiscard]] std::uint8_t Nearest(Color color) const;
  [[nodiscard]] Color operator[](std::uint8_t index) const { return palette_[index]; }
  [[nodiscard]] const Palette& Table() const { return palette_; }

 private:
  // Five bits of each component choose the cell.
  static constexpr int kCellBits = 5;
  static constexpr int kCellSize = 1 << (8 - kCellBits);

  struct Box;
  struct Candidates;
  struct Cell {
    std::uint32_t start;  // in candidates_
    std::uint32_t end;    // exclusive
  };
  static std::size_t CellOf(Color color);
  [[nodiscard]] Candidates AllIndices() const;
  [[nodiscard]] Candidates Reduce(const Candidates& candidates, const Box& box) const;
  void Fill(const Candidates& candidates, const Box& box);

  Palette palette_;
  std::array<Cell, std::size_t{1} << (3 * kCellBits)> cells_{};
  std::vector<std::uint8_t> candidates_;  // of each cell, the indices in order
};

// The inverse of a table, kept for the next copies to it. Throws std::bad_alloc.
std::shared_ptr<const InverseColors> InverseOf(const Palette& palette);

}  // namespace qde

#endif
