// Draws one picture onto another in all transfer modes.
#include "tools/pxl/commands/modes_command.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "QDE_host.h"
#include "tools/pxl/module/comparison.h"
#include "tools/pxl/module/drawing.h"
#include "tools/pxl/module/transfer.h"
#include "tools/pxl/pictures/opaque.h"
#include "tools/pxl/pictures/resize.h"
#include "tools/pxl/sheets/contact_sheet.h"
#include "tools/pxl/system/console.h"
#include "tools/pxl/system/exit_codes.h"

namespace pxl {
namespace {

namespace fs = std::filesystem;

constexpr QDE_RGBColor kBlack = {0, 0, 0};
constexpr QDE_RGBColor kHalf = {0x8000, 0x8000, 0x8000};
constexpr QDE_RGBColor kWhite = {0xFFFF, 0xFFFF, 0xFFFF};
constexpr QDE_RGBColor kOrange = {0xFFFF, 0x8000, 0x0000};

constexpr std::uint16_t kSrcCopy = 0;
// The first row has the pictures and the notes; below it, the first four modes are
// above their inverses.
constexpr SheetLayout kLayout = {4, kThumbnailText};

enum class Way { Direct, ToIndices };

struct Mode {
  const char* name = nullptr;
  const char* effect = nullptr;
  QDE_RGBColor opColour = kBlack;
  Way way = Way::Direct;
};

// By the blit's index.
constexpr std::array<Mode, 19> kModes = {{
    {"srcCopy", "A in place of B"},
    {"srcOr", "A and B, bit by bit"},
    {"srcXor", "not (A xor B), bit by bit"},
    {"srcBic", "B or not A, bit by bit"},
    {"notSrcCopy", "A inverted"},
    {"notSrcOr", "B and not A, bit by bit"},
    {"notSrcXor", "A xor B, bit by bit"},
    {"notSrcBic", "A or B, bit by bit"},
    {"blend", "50 % A, 50 % B", kHalf},
    {"addPin", "A + B, up to white", kWhite},
    {"addOver", "A + B, wrapped"},
    {"subPin", "B \u2212 A, down to black", kBlack},
    {"addMax", "the larger of A and B"},
    {"subOver", "B \u2212 A, wrapped"},
    {"adMin", "the smaller of A and B"},
    {"ditherCopy", "A dithered to 8 bits", kBlack, Way::ToIndices},
    {"ditherCopy", "the same as 15", kBlack, Way::ToIndices},
    {"transparent", "A where A is not white"},
    {"hilite", "white of B to orange, where A is not white"},
}};

const std::vector<std::string> kColourNotes = {
    "Colours",
    "Foreground black, background white, highlight orange. Op colour: half of full scale in "
    "blend, white in addPin, black in subPin."};
const std::vector<std::string> kReadingNotes = {
    "How to read them",
    "Modes 1 to 7 are named for black as 1: srcOr is an and of channels. 15 and 16 draw into a "
    "World of 8 bits, all others into one of 32."};

// The picture in a World of 32 bits, over white.
Picture OpaquePicture(Module& module, const fs::path& path, std::uint64_t maxPixels) {
  InputPicture input(path, maxPixels);
  MeasureWorld(module, PXL_Depth_32, input.header().width, input.header().height);
  World world = LoadWorld(module, input);
  if (world.Record().depth != PXL_Depth_32) {
    world = ConvertWorld(world, PXL_Depth_32, {});
  }
  Picture picture = PictureOf(world);
  LayOverWhite(picture);
  return picture;
}

bool SameSize(const PictureHeader& a, const PictureHeader& b) {
  return a.width == b.width && a.height == b.height;
}

// The largest part from the middle of the picture with the proportions of `shape`.
Picture MiddleOf(const Picture& picture, const PictureHeader& shape) {
  const std::int64_t width = picture.header.width;
  const std::int64_t height = picture.header.height;
  return Cropped(picture, std::clamp<std::int64_t>(height * shape.width / shape.height, 1, width),
                 std::clamp<std::int64_t>(width * shape.height / shape.width, 1, height));
}

// The picture on a surface of that size. A much larger picture is reduced first,
// since the drawing layer's scaling skips pixels.
World FittedSurface(Module& module, const Picture& picture, const PictureHeader& size) {
  const Picture middle = MiddleOf(picture, size);
  const std::int64_t factor =
      std::min(middle.header.width / size.width, middle.header.height / size.height);
  const World source =
      LoadWorld(module, Reduced(middle, std::max<std::int64_t>(factor, 1)), Backing::Surface);
  World fitted(module, PXL_Depth_32, size.width, size.height, Backing::Surface);
  Draw(source, fitted, kSrcCopy);
  return fitted;
}

// The results of all modes, in the size of the sheet.
class Results {
 public:
  Results(Module& module, const Picture& a, const Picture& b)
      : module_(module),
        reduction_(ReductionTo(kThumbnailSide, b.header)),
        destination_(Reduced(b, reduction_)),
        source_(SameSize(a.header, b.header)
                    ? LoadWorld(module, Reduced(a, reduction_), Backing::Surface)
                    : FittedSurface(module, a, destination_.header)) {}

  Picture Source() const { return Shown(source_); }
  Picture Destination() const { return Fitted(destination_, kThumbnailSide); }
  Picture Of(std::uint16_t index) const {
    const Mode& mode = kModes.at(index);
    return Shown(mode.way == Way::ToIndices ? Indices(index)
                                            : DrawnOnDestination(index, mode.opColour));
  }

 private:
  World DrawnOnDestination(std::uint16_t index, const QDE_RGBColor& opColour) const {
    World result = LoadWorld(module_, destination_, Backing::Surface);
    SetPortColour(result, QDE_PortColor_FORE, kBlack);
    SetPortColour(result, QDE_PortColor_BACK, kWhite);
    SetPortColour(result, QDE_PortColor_HILITE, kOrange);
    SetPortColour(result, QDE_PortColor_OP, opColour);
    Draw(source_, result, index);
    return result;
  }

  // The source drawn into a World of 8 bits.
  World Indices(std::uint16_t index) const {
    const PXL_World record = source_.Record();
    World indices(module_, PXL_Depth_8, record.width, record.height, Backing::Surface);
    Draw(source_, indices, index);
    return indices;
  }

  // The modes change the fourth byte too; it is no alpha.
  static Picture Shown(const World& world) {
    Picture picture = PictureOf(world);
    DropAlpha(picture);
    return Fitted(picture, kThumbnailSide);
  }

  Module& module_;
  std::int64_t reduction_;
  Picture destination_;
  World source_;
};

struct NamedPicture {
  std::string name;
  Picture picture;
};

NamedPicture Named(Module& module, const fs::path& path, std::uint64_t maxPixels) {
  return {path.filename().string(),
          About(path.string(), [&] { return OpaquePicture(module, path, maxPixels); })};
}

// Role, name and size of the picture, and its change of size.
std::vector<std::string> LabelsOf(const std::string& role, const NamedPicture& picture,
                                  const PictureHeader& b) {
  const PictureHeader& header = picture.picture.header;
  std::vector<std::string> labels = {role, OneLine(picture.name), SizeText(header)};
  const std::int64_t factor = ReductionTo(kThumbnailSide, header);
  if (!SameSize(header, b)) {
    labels.emplace_back("its middle scaled to B");
  } else if (factor > 1) {
    labels.push_back("reduced " + std::to_string(factor) + " times");
  }
  return labels;
}

std::vector<SheetCell> CellsOf(const Results& results, const NamedPicture& a,
                               const NamedPicture& b) {
  const PictureHeader& size = b.picture.header;
  std::vector<SheetCell> cells = {{results.Source(), LabelsOf("A, the source", a, size)},
                                  {results.Destination(), LabelsOf("B, the destination", b, size)},
                                  {{}, kColourNotes},
                                  {{}, kReadingNotes}};
  for (std::uint16_t i = 0; const Mode& mode : kModes) {
    cells.push_back({results.Of(i), {std::to_string(i) + "  " + mode.name, mode.effect}});
    ++i;
  }
  return cells;
}

}  // namespace

int Modes(const ModesOptions& options) {
  CheckSheetPlace(options.output, {options.source, options.destination});
  Module module;
  const NamedPicture a = Named(module, options.source, options.maxPixels);
  const NamedPicture b = Named(module, options.destination, options.maxPixels);
  About(options.output.string(), [&] {
    const Results results(module, a.picture, b.picture);
    WriteContactSheet(options.output, "The transfer modes of the blit, A onto B",
                      CellsOf(results, a, b), kLayout);
  });
  return kExitSuccess;
}

}  // namespace pxl
