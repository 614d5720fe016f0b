// Prints versions, settings and the geometry of a picture's World.
#include "tools/pxl/commands/info_command.h"

#include <iostream>

#include "K_host.h"
#include "PXL.h"
#include "Q_host.h"
#include "TXT_host.h"
#include "tools/pxl/formats/picture_file.h"
#include "tools/pxl/module/module.h"
#include "tools/pxl/module/module_settings.h"
#include "tools/pxl/module/world.h"
#include "tools/pxl/system/console.h"
#include "tools/pxl/system/exit_codes.h"
#include "tools/pxl/system/json_output.h"
#include "vetrix_host.h"

namespace pxl {
namespace {

Json ModuleInfo() {
  return {{"package", PackageVersion()},
          {"interface", PXL_PkgObjectVersion() >> 16},
          {"libraries",
           {{"K", K_HeaderVersion()}, {"Q", Q_HeaderVersion()}, {"TXT", TXT_HeaderVersion()}}},
          {"settings",
           {{"file", vetrix::host::SettingsPath()},
            {kPoolKey, PoolEnabled()},
            {kThresholdKey, PoolThreshold()}}}};
}

Json PictureInfo(const InfoOptions& options) {
  const std::filesystem::path& path = *options.file;
  const InputPicture picture(path, options.maxPixels);
  const PictureHeader& header = picture.header();
  Module module;
  try {
    const PXL_World world = MeasureWorld(module, options.depth.value_or(DepthOf(header.samples)),
                                         header.width, header.height);
    return {{"file", path.string()},
            {"format", header.format},
            {"width", world.width},
            {"height", world.height},
            {"depth", world.depth},
            {"rowBytes", world.pixels.rowBytes},
            {"frameSize", world.pixels.frameSize}};
  } catch (const Failure& failure) {
    throw Failure(path.string(), failure.what());
  }
}

void PrintModule(const Json& info) {
  const Json& libraries = info["libraries"];
  const Json& settings = info["settings"];
  const auto file = settings["file"].get<std::string>();
  std::cout << "PXL " << info["package"].get<std::string>() << ", interface " << info["interface"]
            << "\nlibraries      K " << libraries["K"] << ", Q " << libraries["Q"] << ", TXT "
            << libraries["TXT"] << "\nsettings file  " << (file.empty() ? "none" : OneLine(file))
            << "\n  " << kPoolKey << " = " << settings[kPoolKey] << "\n  " << kThresholdKey << " = "
            << settings[kThresholdKey] << "\n";
}

void PrintPicture(const Json& info) {
  std::cout << OneLine(info["file"].get<std::string>()) << "\n  "
            << info["format"].get<std::string>() << "\n  width       " << info["width"]
            << " pixels\n  height      " << info["height"] << " pixels\n  depth       "
            << info["depth"] << " bits a pixel\n  row bytes   " << info["rowBytes"]
            << "\n  frame size  " << info["frameSize"] << " bytes\n";
}

}  // namespace

int Info(const InfoOptions& options) {
  Json info = {{"module", ModuleInfo()}};
  if (options.file) info["picture"] = PictureInfo(options);
  if (options.json) {
    PrintJson(std::cout, info);
    return kExitSuccess;
  }
  PrintModule(info["module"]);
  if (options.file) PrintPicture(info["picture"]);
  return kExitSuccess;
}

}  // namespace pxl
