// Converts pictures one by one by way of Worlds, and reports failures and losses.
#include "tools/pxl/commands/convert_command.h"

#include <algorithm>
#include <iostream>

#include "PXL.h"
#include "tools/pxl/commands/convert_plan.h"
#include "tools/pxl/module/transfer.h"
#include "tools/pxl/system/console.h"
#include "tools/pxl/system/exit_codes.h"
#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/operating_system.h"
#include "tools/pxl/system/progress.h"

namespace pxl {
namespace {

// The depths that a picture of depth `depth` is converted to, one after the other.
// Conversions from and to 8 bits go through 32.
std::vector<std::int32_t> StepsFrom(std::int32_t depth, const ConvertOptions& options) {
  std::vector<std::int32_t> steps;
  const auto go = [&steps, &depth](std::int32_t to) {
    const bool detour =
        (depth == PXL_Depth_8 && to > PXL_Depth_32) || (to == PXL_Depth_8 && depth > PXL_Depth_32);
    if (detour) steps.push_back(PXL_Depth_32);
    steps.push_back(to);
    depth = to;
  };
  for (const std::int32_t to : options.via) go(to);
  go(options.depth);
  return steps;
}

std::vector<std::int32_t> StepsOf(const PictureHeader& header, const ConvertOptions& options) {
  return StepsFrom(DepthOf(header.samples), options);
}

// Checks the size of a World of each depth before the first row is decoded.
void MeasureAll(Module& module, const PictureHeader& header,
                const std::vector<std::int32_t>& steps) {
  MeasureWorld(module, DepthOf(header.samples), header.width, header.height);
  for (const std::int32_t depth : steps) MeasureWorld(module, depth, header.width, header.height);
}

bool HasDepth8(const ConvertOptions& options) {
  return options.depth == PXL_Depth_8 ||
         std::find(options.via.begin(), options.via.end(), PXL_Depth_8) != options.via.end();
}

// Only the drawing layer makes pixels of 8 bits.
ConvertOptions WithBacking(ConvertOptions options) {
  const bool indexed = HasDepth8(options);
  if (options.dither && !indexed) throw UsageError("--dither", "is for --depth 8 or --via 8");
  if (!indexed) return options;
  if (options.backing == Backing::MappedFile) {
    throw UsageError("--mapped", "excludes 8 bits, which only the drawing layer makes");
  }
  options.backing = Backing::Surface;
  return options;
}

// The drawing layer owns the memory of a surface; the record does not have its size.
std::uint64_t BytesOf(const PXL_World& record) {
  if (record.hasGWorld == 0) return record.pixels.frameSize;
  return static_cast<std::uint64_t>(record.pixels.rowBytes) *
         static_cast<std::uint64_t>(record.height);
}

const char* OriginOf(const PXL_World& record) {
  if (record.hasGWorld != 0) return "of a drawing surface";
  if (record.pixels.provider != nullptr) return "of a mapped file";
  return K_IsRecycledPtr(record.pixels.frame) != 0 ? "from the pool" : "from the heap";
}

// Converts the pictures one after the other and reports failures, losses and, on
// request, memory.
class Batch {
 public:
  Batch(const ConvertOptions& options, std::size_t count)
      : options_(options), progress_(std::cerr, count, count > 1 && StandardErrorIsTerminal()) {}

  // Returns whether all were converted.
  bool Run(const std::vector<ConvertJob>& jobs) {
    bool allDone = true;
    for (std::size_t i = 0; i < jobs.size(); ++i) {
      progress_.Show(i);
      allDone = TryJob(jobs[i]) && allDone;
    }
    return allDone;
  }

 private:
  bool TryJob(const ConvertJob& job) {
    const std::string input = job.input.string();
    try {
      RunJob(job);
      return true;
    } catch (const Failure& failure) {
      progress_.Clear();
      PrintFailure(failure.name().empty() ? input : failure.name(), failure.what());
    } catch (const std::bad_alloc&) {
      progress_.Clear();
      PrintFailure(input, "not enough memory");
    }
    return false;
  }

  void RunJob(const ConvertJob& job) {
    const std::string name = job.input.string();
    InputPicture picture(job.input, options_.maxPixels);
    const ColourTags& colour = picture.header().colour;
    const std::vector<std::int32_t> steps = StepsOf(picture.header(), options_);
    MeasureAll(module_, picture.header(), steps);
    const World world = TakeSteps(LoadWorld(module_, picture, options_.backing), steps, name);
    SaveWorld(world, job.output, job.format, colour);
    const std::string lost = ColourTagsLost(job.format, colour);
    if (lost.empty()) return;
    ReportLoss(name, lost);
  }

  World TakeSteps(World world, const std::vector<std::int32_t>& steps, const std::string& name) {
    PrintMemory(name, world);
    bool opaque = true;
    for (const std::int32_t depth : steps) {
      if (depth == world.Record().depth && options_.backing != Backing::Surface) continue;
      if (depth == PXL_Depth_8 && world.Record().depth == PXL_Depth_32) {
        opaque = opaque && IsOpaque(world);
      }
      world = ConvertWorld(world, depth, {options_.blitOnly, options_.dither && depth == 8});
      PrintMemory(name, world);
    }
    if (!opaque) ReportLoss(name, "transparency");
    return world;
  }

  void ReportLoss(const std::string& name, const std::string& lost) {
    progress_.Clear();
    PrintNote(name, "not kept in the output: " + lost);
  }

  void PrintMemory(const std::string& name, const World& world) {
    if (!options_.verbose) return;
    progress_.Clear();
    const PXL_World record = world.Record();
    std::cout << OneLine(name) << ": " << record.depth << " bits, " << record.width << " x "
              << record.height << ", " << BytesOf(record) << " bytes " << OriginOf(record) << ", "
              << record.pixels.rowBytes << " a row\n";
  }

  const ConvertOptions& options_;
  Module module_;
  Progress progress_;
};

}  // namespace

int Convert(const ConvertOptions& options) {
  const ConvertOptions settled = WithBacking(options);
  const std::vector<ConvertJob> jobs = PlanConversion(settled);
  return Batch(settled, jobs.size()).Run(jobs) ? kExitSuccess : kExitFailure;
}

}  // namespace pxl
