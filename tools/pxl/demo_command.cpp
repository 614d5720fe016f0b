#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iomanip>
#include <iostream>
#include <set>
#include <sstream>
#include <system_error>

#include "PXL.h"
#include "tools/pxl/commands.h"
#include "tools/pxl/console.h"
#include "tools/pxl/contact_sheet.h"
#include "tools/pxl/transfer.h"

namespace pxl {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kSheetPictureSide = 480;

struct DepthName {
  std::int32_t depth;
  const char* channels;
};
constexpr std::array<DepthName, 3> kDepths = {{{PXL_Depth_32, "8-bit integers"},
                                               {PXL_Depth_64, "16-bit integers"},
                                               {PXL_Depth_128, "floats"}}};

std::vector<float> RowAsFloats(const PXL_World& record, const std::byte* row) {
  const auto width = static_cast<std::size_t>(record.width);
  std::vector<float> values(4 * width);
  RowToFloat(record.depth, row, reinterpret_cast<std::byte*>(values.data()), width);
  return values;
}

// The largest difference between channels of two Worlds of one size, where
// full scale is 1. Values that are no number in one of them are passed over.
double LargestChange(const World& before, const World& after) {
  const PXL_World first = before.Record();
  const PXL_World second = after.Record();
  const PixelLock lockBefore(before);
  const PixelLock lockAfter(after);
  double largest = 0.0;
  for (std::int64_t y = 0; y < first.height; ++y) {
    const std::vector<float> a = RowAsFloats(first, lockBefore.Rows().Row(y));
    const std::vector<float> b = RowAsFloats(second, lockAfter.Rows().Row(y));
    for (std::size_t i = 0; i < a.size(); ++i) {
      const double change = std::fabs(double{a[i]} - double{b[i]});
      if (change > largest) largest = change;
    }
  }
  return largest;
}

std::string ChangeText(double change) {
  if (change == 0.0) return "nothing changed";
  std::ostringstream text;
  text << "largest change " << std::setprecision(2) << change;
  return text.str();
}

// What a screen shows of the World, for the sheet.
Picture PictureFor(const World& world) {
  const PXL_World record = world.Record();
  const PixelLock lock(world);
  Picture picture = NewPicture(record.width, record.height, SampleType::Integer8);
  for (std::int64_t y = 0; y < record.height; ++y) {
    RowTo8(record.depth, lock.Rows().Row(y), picture.Rows().Row(y),
           static_cast<std::size_t>(record.width));
  }
  return Fitted(picture, kSheetPictureSide);
}

void SaveSheet(const fs::path& path, const std::string& title,
               const std::vector<SheetCell>& cells) {
  const fs::path file = FontFile();
  const Picture sheet =
      MakeContactSheet(title, cells, Font(file, kTitleSize), Font(file, kLabelSize));
  WritePictureFile(path, FileFormat::Png, sheet.header,
                   [&](std::int64_t y) { return sheet.Row(y); });
}

class Demonstration {
 public:
  Demonstration(Module& module, const fs::path& picture, const fs::path& folder)
      : module_(module), path_(picture), folder_(folder) {}

  void Run() {
    InputPicture input(path_);
    const PictureHeader header = input.header();
    for (const DepthName& depth : kDepths) {
      MeasureWorld(module_, depth.depth, header.width, header.height);
    }
    const World source = LoadWorld(module_, input);
    const std::string title = Title(header);
    std::cout << OneLine(title) << "\n";
    cells_.push_back({PictureFor(source), {"as read", header.format}});
    for (const DepthName& depth : kDepths) Show(source, depth, header.colour);
    SaveSheet(Output("sheet"), OneLine(title), cells_);
    std::cout << "  all of them side by side: " << OneLine(Output("sheet").string()) << "\n";
  }

 private:
  std::string Title(const PictureHeader& header) const {
    return path_.filename().string() + ", " + std::to_string(header.width) + " x " +
           std::to_string(header.height) + " pixels";
  }

  fs::path Output(const std::string& suffix) const {
    return folder_ / (path_.stem().string() + "-" + suffix + ".png");
  }

  void Show(const World& source, const DepthName& name, const ColourTags& colour) {
    const World world = ConvertWorld(source, name.depth, {});
    const fs::path output = Output(std::to_string(name.depth));
    SaveWorld(world, output, FileFormat::Png, colour);
    const std::string change = ChangeText(LargestChange(source, world));
    const std::string bits = std::to_string(name.depth) + " bits a pixel, " + name.channels;
    cells_.push_back({PictureFor(world), {bits, change}});
    std::cout << "  " << bits << ": " << OneLine(output.string()) << " (" << change << ")\n";
  }

  Module& module_;
  const fs::path& path_;
  const fs::path& folder_;
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
    try {
      Demonstration(module, picture, options.folder).Run();
    } catch (const Failure& failure) {
      throw Failure(failure.name().empty() ? picture.string() : failure.name(), failure.what());
    }
  }
  return kExitSuccess;
}

}  // namespace pxl
