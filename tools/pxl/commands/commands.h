// The verbs. Each prints its results to standard output, throws Failure for
// what keeps it from doing anything, and gives the exit code.
#ifndef TOOLS_PXL_COMMANDS_COMMANDS_H
#define TOOLS_PXL_COMMANDS_COMMANDS_H

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tools/pxl/module/world.h"

namespace pxl {

constexpr int kExitSuccess = 0;
constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;
// Those of a comparison, as users know them from others.
constexpr int kExitSame = 0;
constexpr int kExitDifferent = 1;
constexpr int kExitNotCompared = 2;

struct ConvertOptions {
  std::vector<std::filesystem::path> inputs;
  std::filesystem::path output;  // a file, or a folder that exists
  std::int32_t depth = 0;
  std::vector<std::int32_t> via;
  Backing backing = Backing::Frame;
  bool blitOnly = false;
  bool dither = false;
  bool verbose = false;
  std::uint64_t maxPixels = kMostPixels;  // of a picture
};
// Pictures that fail are told one by one; the others are converted.
int Convert(const ConvertOptions& options);

struct InfoOptions {
  std::optional<std::filesystem::path> file;
  std::optional<std::int32_t> depth;      // with a file; the picture's own if none
  std::uint64_t maxPixels = kMostPixels;  // of a picture
  bool json = false;
};
int Info(const InfoOptions& options);

struct MessagesOptions {
  bool json = false;
};
int Messages(const MessagesOptions& options);

struct DemoOptions {
  std::vector<std::filesystem::path> pictures;
  std::filesystem::path folder;           // made if it is not there
  std::uint64_t maxPixels = kMostPixels;  // of a picture
};
int Demo(const DemoOptions& options);

struct DiffOptions {
  std::filesystem::path first;
  std::filesystem::path second;
  std::uint64_t tolerance = 0;            // steps of the files' samples; ULPs of floats
  bool anyChannels = false;               // compare what a file lacks as it is made up
  std::uint64_t maxPixels = kMostPixels;  // of a picture
  std::optional<std::filesystem::path> output;
  bool json = false;
};
// Gives kExitSame or kExitDifferent.
int Diff(const DiffOptions& options);

struct ModesOptions {
  std::filesystem::path source;
  std::filesystem::path destination;
  std::filesystem::path output;
  std::uint64_t maxPixels = kMostPixels;  // of a picture
};
// A sheet of all transfer modes.
int Modes(const ModesOptions& options);

struct SheetOptions {
  std::filesystem::path picture;
  std::filesystem::path output;
  std::uint64_t maxPixels = kMostPixels;  // of a picture
};
// A sheet of all depths, and what each changes.
int Sheet(const SheetOptions& options);

struct SoakOptions {
  double minutes = 0.0;
  std::optional<std::uint64_t> budget;  // bytes
  std::optional<std::filesystem::path> plot;
  std::optional<std::uint64_t> seed;
};
int RunSoak(const SoakOptions& options);

struct SelftestOptions {
  bool quick = false;  // without all floats
};
// A line for each level of processor and one for the library's blit.
int Selftest(const SelftestOptions& options);

struct DoctorOptions {
  bool json = false;
  std::optional<std::string> language;  // the translation's file
};
// What PXL needs and finds on this machine; a failure if something is lacking.
int Doctor(const DoctorOptions& options);

}  // namespace pxl

#endif
