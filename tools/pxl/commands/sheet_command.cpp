// Draws a picture at all depths, with the differences to the original.
#include "tools/pxl/commands/sheet_command.h"

#include <iomanip>
#include <sstream>

#include "PXL.h"
#include "tools/pxl/commands/depths.h"
#include "tools/pxl/module/comparison.h"
#include "tools/pxl/module/transfer.h"
#include "tools/pxl/pictures/magnifier.h"
#include "tools/pxl/pictures/resize.h"
#include "tools/pxl/sheets/contact_sheet.h"
#include "tools/pxl/system/console.h"
#include "tools/pxl/system/exit_codes.h"

namespace pxl {
namespace {

namespace fs = std::filesystem;

// A picture as read, reduced by a whole factor.
struct SmallPicture {
  PictureHeader original;
  std::int64_t reduction;
  World world;
};

SmallPicture LoadSmall(Module& module, const SheetOptions& options) {
  InputPicture input(options.picture, options.maxPixels);
  const PictureHeader header = input.header();
  MeasureWorld(module, DepthOf(header.samples), header.width, header.height);
  const std::int64_t factor = ReductionTo(kThumbnailSide, header);
  const Picture picture = input.Read();
  return {header, factor, LoadWorld(module, Reduced(picture, factor), Backing::Surface)};
}

std::vector<std::string> ChangeLabels(double change, double factor) {
  if (change == 0.0) return {"no difference"};
  std::ostringstream magnified;
  std::ostringstream largest;
  magnified << "difference \u00D7 " << std::setprecision(8) << factor;
  largest << "largest " << std::setprecision(2) << change;
  return {magnified.str(), largest.str()};
}

// A row of the conversions above a row of their differences.
class DepthsSheet {
 public:
  explicit DepthsSheet(const SmallPicture& source) : source_(source) {
    pictures_.push_back({Shown(source.world), {"as read", source.original.format}});
    changes_.push_back({{}, Notes()});
    for (const DepthName& depth : kDepths) {
      Add(ConvertWorld(source.world, depth.depth, {}),
          {std::to_string(depth.depth) + " bits a pixel", depth.channels}, Compared::AllChannels);
    }
    AddIndexed({}, "nearest of 256 colours");
    AddIndexed({.dither = true}, "256 colours, dithered");
  }

  void Write(const fs::path& path, const std::string& title) const {
    const SheetLayout layout = {static_cast<int>(pictures_.size()), kThumbnailText};
    std::vector<SheetCell> cells = pictures_;
    cells.insert(cells.end(), changes_.begin(), changes_.end());
    WriteContactSheet(path, title, cells, layout);
  }

 private:
  std::vector<std::string> Notes() const {
    std::vector<std::string> notes = {"Differences",
                                      "to the picture as read, times the factor under each. Full "
                                      "scale is 1. 8 bits hold no alpha, "
                                      "so only colours are compared there."};
    if (source_.reduction > 1) {
      notes.push_back("All are of the picture reduced " + std::to_string(source_.reduction) +
                      " times.");
    }
    return notes;
  }

  static Picture Shown(const World& world) { return Fitted(PictureOf(world), kThumbnailSide); }

  void Add(const World& world, std::vector<std::string> labels, Compared compared) {
    pictures_.push_back({Shown(world), std::move(labels)});
    const double change = LargestChange(source_.world, world, compared);
    const double factor = MagnifierFor(change);
    changes_.push_back(
        {Fitted(ChangePicture(source_.world, world, factor, compared), kThumbnailSide),
         ChangeLabels(change, factor)});
  }

  // Only 32 bits can be converted to indices.
  void AddIndexed(Route route, const std::string& label) {
    const World direct = ConvertWorld(source_.world, PXL_Depth_32, {});
    Add(ConvertWorld(direct, PXL_Depth_8, route), {"8 bits a pixel", label}, Compared::ColoursOnly);
  }

  const SmallPicture& source_;
  std::vector<SheetCell> pictures_;
  std::vector<SheetCell> changes_;
};

}  // namespace

int Sheet(const SheetOptions& options) {
  CheckSheetPlace(options.output, {options.picture});
  Module module;
  About(options.picture.string(), [&] {
    const SmallPicture picture = LoadSmall(module, options);
    const std::string name = OneLine(options.picture.filename().string());
    DepthsSheet(picture).Write(options.output, name + ", " + SizeText(picture.original));
  });
  return kExitSuccess;
}

}  // namespace pxl
