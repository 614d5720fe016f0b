// Converts each picture to every depth and writes the results and a sheet.
#include "tools/pxl/commands/demo_command.h"

#include <iostream>
#include <set>
#include <system_error>

#include "tools/pxl/commands/depths.h"
#include "tools/pxl/formats/png/png_file.h"
#include "tools/pxl/module/comparison.h"
#include "tools/pxl/module/transfer.h"
#include "tools/pxl/pictures/resize.h"
#include "tools/pxl/sheets/contact_sheet.h"
#include "tools/pxl/system/console.h"
#include "tools/pxl/system/exit_codes.h"

namespace pxl {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kSheetPictureSide = 480;

Picture Thumbnail(const World& world) {
  return Fitted(PictureOf(world), kSheetPictureSide);
}

class Demonstration {
 public:
  Demonstration(Module& module, const fs::path& picture, const DemoOptions& options)
      : module_(module), path_(picture), options_(options) {}

  void Run() {
    InputPicture input(path_, options_.maxPixels);
    const PictureHeader header = input.header();
    for (const DepthName& depth : kDepths) {
      MeasureWorld(module_, depth.depth, header.width, header.height);
    }
    const World source = LoadWorld(module_, input);
    const std::string title = Title(header);
    std::cout << OneLine(title) << "\n";
    cells_.push_back({Thumbnail(source), {"as read", header.format}});
    for (const DepthName& depth : kDepths) Show(source, depth, header.colour);
    WriteContactSheet(Output("sheet"), OneLine(title), cells_);
    std::cout << "  all of them side by side: " << OneLine(Output("sheet").string()) << "\n";
  }

 private:
  std::string Title(const PictureHeader& header) const {
    return path_.filename().string() + ", " + SizeText(header);
  }

  fs::path Output(const std::string& suffix, FileFormat format = FileFormat::Png) const {
    fs::path output = options_.folder / path_.stem();
    output += "-" + suffix + (format == FileFormat::Png ? ".png" : ".exr");
    return output;
  }

  // Deep Worlds are written as PNG of 16 bits where the library can.
  static FileFormat FormatOf(std::int32_t depth) {
    return depth <= PXL_Depth_32 || CanWrite16BitPng() ? FileFormat::Png : FileFormat::Exr;
  }

  void Show(const World& source, const DepthName& name, const ColourTags& colour) {
    const World world = ConvertWorld(source, name.depth, {});
    const FileFormat format = FormatOf(name.depth);
    const fs::path output = Output(std::to_string(name.depth), format);
    SaveWorld(world, output, format, colour);
    const std::string change = ChangeText(LargestChange(source, world));
    cells_.push_back({Thumbnail(world), {NameOf(name), change}});
    std::cout << "  " << NameOf(name) << ": " << OneLine(output.string()) << " (" << change
              << ")\n";
  }

  Module& module_;
  const fs::path& path_;
  const DemoOptions& options_;
  std::vector<SheetCell> cells_;
};

void RefuseDuplicates(const std::vector<fs::path>& pictures) {
  std::set<fs::path> stems;
  for (const fs::path& picture : pictures) {
    if (!stems.insert(picture.stem()).second) {
      throw UsageError(picture.string(), "another picture has the same name");
    }
  }
}

void MakeFolder(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) throw Failure(folder.string(), error.message());
}

}  // namespace

int Demo(const DemoOptions& options) {
  RefuseDuplicates(options.pictures);
  MakeFolder(options.folder);
  Module module;
  for (const fs::path& picture : options.pictures) {
    About(picture.string(), [&] { Demonstration(module, picture, options).Run(); });
  }
  return kExitSuccess;
}

}  // namespace pxl
