// Combines rows of any two depths, and chooses the way to do it.
#include "host/QDE/copy/row_combiner.h"

#include <array>
#include <utility>
#include <vector>

#include "host/QDE/copy/pixel_rows.h"
#include "host/QDE/nearest/index_writer.h"
#include "host/QDE/nearest/inverse_colors.h"

namespace qde {
namespace {

// ---- The operands of the routines

bool IsPlain(const PortColors& colors) {
  return ToColor(colors[QDE_PortColor_FORE]) == kBlack &&
         ToColor(colors[QDE_PortColor_BACK]) == kWhite;
}

// Whether the copy does not change colours.
bool KeepsColors(const Drawing& drawing) {
  constexpr std::int16_t kSrcCopy = 0;
  return drawing.mode.number == kSrcCopy && IsPlain(drawing.colors);
}

RowRoutine Choose(const RowRoutines& routines, const PortColors& colors) {
  return IsPlain(colors) ? routines.plain : routines.colored;
}

std::array<std::uint32_t, 4> WeightsOf(const QDE_RGBColor& color, Format format) {
  if (format == kBGRA) return {color.blue, color.green, color.red, 0};
  return {0, color.red, color.green, color.blue};
}

Operands MakeOperands(const Mode& mode, const PortColors& colors, Format format) {
  const auto pixelOf = [&](std::size_t which, std::uint8_t fourth) {
    return ToPixel(ToColor(colors[which]), format, fourth);
  };
  Operands operands{};
  operands.components = ToPixel(kWhite, format);
  operands.fore = pixelOf(QDE_PortColor_FORE, 0);
  operands.back = pixelOf(QDE_PortColor_BACK, 0xFF);
  operands.hilite = pixelOf(QDE_PortColor_HILITE, 0);
  operands.ground = pixelOf(QDE_PortColor_BACK, 0);
  operands.ceiling = pixelOf(QDE_PortColor_OP, 0xFF);
  operands.floor = pixelOf(QDE_PortColor_OP, 0);
  operands.weights = WeightsOf(colors[QDE_PortColor_OP], format);
  constexpr std::int16_t kBlend = 32;
  if (mode.number == kBlend) operands.blend = FindBlendFactors(operands.weights);
  return operands;
}

void SetVisible(Operands* operands, const Palette& palette, Color back) {
  for (std::size_t i = 0; i < operands->visible.size(); ++i) {
    const bool visible = palette[static_cast<std::uint8_t>(i)] != back;
    operands->visible[i] = visible ? 0xFF : 0x00;
  }
}

// The table may lack the two colours that hilite swaps. Their nearest colours are
// swapped instead, so that a second hilite undoes the first.
void TakeSwapFrom(Operands* operands, const InverseColors& table, const PortColors& colors,
                  Format format) {
  const auto shown = [&](std::size_t which) {
    return ToPixel(table[table.Nearest(ToColor(colors[which]))], format);
  };
  operands->hilite = shown(QDE_PortColor_HILITE);
  operands->ground = shown(QDE_PortColor_BACK);
}

// ---- The ways to combine

// Indices of one table.
class IndexCombiner : public RowCombiner {
 public:
  IndexCombiner(RowRoutine routine, const Image& source, const PortColors& colors)
      : routine_(routine) {
    SetVisible(&operands_, Palette(*source.colors), ToColor(colors[QDE_PortColor_BACK]));
  }

  void Combine(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) override {
    routine_(operands_, source, destination, count);
  }

 private:
  RowRoutine routine_;
  Operands operands_{};
};

// Into rows of 32-bit pixels.
class PixelCombiner : public RowCombiner {
 public:
  PixelCombiner(const Image& source, const Image& destination, const Drawing& drawing,
                std::size_t width)
      : source_(MakePixelRows(source, destination.format, width)),
        keeps_(KeepsColors(drawing)),
        routine_(Choose(drawing.mode.direct, drawing.colors)),
        operands_(MakeOperands(drawing.mode, drawing.colors, destination.format)) {}

  void Combine(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) override {
    if (keeps_) {
      source_->Copy(source, destination, count);
    } else {
      routine_(operands_, source_->Read(source, count), destination, count);
    }
  }

 private:
  std::unique_ptr<PixelRows> source_;
  bool keeps_;
  RowRoutine routine_;
  Operands operands_;
};

// Into rows of indices, with the mode applied to their colours.
class ColorCombiner : public RowCombiner {
 public:
  ColorCombiner(const Image& source, const Image& destination, const Drawing& drawing,
                std::size_t width)
      : source_(MakePixelRows(source, source.format, width)),
        keeps_(KeepsColors(drawing)),
        routine_(Choose(drawing.mode.direct, drawing.colors)),
        operands_(MakeOperands(drawing.mode, drawing.colors, source.format)),
        pixels_(width * sizeof(Pixel32)) {
    const bool reads = drawing.mode.readsDestination;
    if (reads) destination_ = MakePixelRows(destination, source.format, width);
    auto colors = InverseOf(Palette(*destination.colors));
    TakeSwapFrom(&operands_, *colors, drawing.colors, source.format);
    IndexTarget target = {std::move(colors), source.format, reads};
    writer_ = drawing.dithers ? MakeDitheringWriter(std::move(target), width)
                              : MakeNearestWriter(std::move(target), width);
  }

  void Combine(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) override {
    if (keeps_) {
      writer_->Write(source_->Read(source, count), destination, count);
      return;
    }
    if (destination_ != nullptr) destination_->Copy(destination, pixels_.data(), count);
    routine_(operands_, source_->Read(source, count), pixels_.data(), count);
    writer_->Write(pixels_.data(), destination, count);
  }

 private:
  std::unique_ptr<PixelRows> source_;
  std::unique_ptr<PixelRows> destination_;  // null if the mode does not read it
  bool keeps_;
  RowRoutine routine_;
  Operands operands_;
  std::vector<std::uint8_t> pixels_;  // a row of the destination
  std::unique_ptr<IndexWriter> writer_;
};

// Indices to those of another table, in modes that depend on the source alone:
// computed once for each index.
class Translator : public RowCombiner {
 public:
  Translator(const Image& source, const Image& destination, const Drawing& drawing) {
    std::array<std::uint8_t, 256> all{};
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint8_t>(i);
    ColorCombiner(source, destination, drawing, all.size())
        .Combine(all.data(), indices_.data(), all.size());
  }

  void Combine(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) override {
    for (std::size_t i = 0; i < count; ++i) destination[i] = indices_[source[i]];
  }

 private:
  std::array<std::uint8_t, 256> indices_{};
};

bool ArePixelsAlike(const Image& source, const Image& destination) {
  return source.layout.depth == 32 && destination.layout.depth == 32 &&
         source.format == destination.format;
}

// The routine for indices of one table; null without one, or with two tables.
RowRoutine FindIndexRoutine(const Image& source, const Image& destination, const Drawing& drawing) {
  if (source.layout.depth != 8 || destination.layout.depth != 8) return nullptr;
  const RowRoutine routine = Choose(drawing.mode.indexed, drawing.colors);
  return routine != nullptr && AreSame(*source.colors, *destination.colors) ? routine : nullptr;
}

}  // namespace

bool TakesLongRuns(const Image& source, const Image& destination, const Drawing& drawing) {
  if (ArePixelsAlike(source, destination)) return true;
  const bool reordered = source.layout.depth == 32 && destination.layout.depth == 32;
  return !reordered && !drawing.dithers && KeepsColors(drawing);
}

bool KeepsPixels(const Image& source, const Image& destination, const Drawing& drawing) {
  if (!KeepsColors(drawing)) return false;
  return ArePixelsAlike(source, destination) ||
         FindIndexRoutine(source, destination, drawing) != nullptr;
}

std::unique_ptr<RowCombiner> MakeRowCombiner(const Image& source, const Image& destination,
                                             const Drawing& drawing, std::size_t width) {
  if (destination.layout.depth == 32) {
    return std::make_unique<PixelCombiner>(source, destination, drawing, width);
  }
  if (const RowRoutine routine = FindIndexRoutine(source, destination, drawing)) {
    return std::make_unique<IndexCombiner>(routine, source, drawing.colors);
  }
  if (source.layout.depth == 8 && !drawing.mode.readsDestination && !drawing.dithers) {
    return std::make_unique<Translator>(source, destination, drawing);
  }
  return std::make_unique<ColorCombiner>(source, destination, drawing, width);
}

}  // namespace qde
