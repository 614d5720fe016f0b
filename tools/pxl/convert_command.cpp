#include <iostream>

#include "PXL.h"
#include "tools/pxl/commands.h"
#include "tools/pxl/console.h"
#include "tools/pxl/convert_plan.h"
#include "tools/pxl/progress.h"
#include "tools/pxl/transfer.h"

namespace pxl {
namespace {

// The depths a picture goes through after its own.
std::vector<std::int32_t> StepsOf(const ConvertOptions& options) {
  std::vector<std::int32_t> steps = options.via;
  steps.push_back(options.depth);
  return steps;
}

void TellMemory(const std::string& name, const World& world) {
  const PXL_World record = world.Record();
  const bool pooled = K_IsRecycledPtr(record.pixels.frame) != 0;
  std::cout << OneLine(name) << ": " << record.depth << " bits, " << record.width << " x "
            << record.height << ", " << record.pixels.frameSize << " bytes from the "
            << (pooled ? "pool" : "heap") << ", " << record.pixels.rowBytes << " a row\n";
}

// A World of each depth is measured before the first row is decoded.
void MeasureAll(Module& module, const PictureHeader& header,
                const std::vector<std::int32_t>& steps) {
  MeasureWorld(module, DepthOf(header.samples), header.width, header.height);
  for (const std::int32_t depth : steps) MeasureWorld(module, depth, header.width, header.height);
}

World TakeSteps(World world, const ConvertOptions& options, const std::string& name) {
  const Route route = options.blitOnly ? Route::BlitOnly : Route::AnyWay;
  if (options.verbose) TellMemory(name, world);
  for (const std::int32_t depth : StepsOf(options)) {
    if (depth == world.Record().depth) continue;
    world = ConvertWorld(world, depth, route);
    if (options.verbose) TellMemory(name, world);
  }
  return world;
}

void RunJob(Module& module, const ConvertJob& job, const ConvertOptions& options) {
  const std::string name = job.input.string();
  InputPicture picture(job.input);
  const ColourTags& colour = picture.header().colour;
  MeasureAll(module, picture.header(), StepsOf(options));
  const World world = TakeSteps(LoadWorld(module, picture), options, name);
  SaveWorld(world, job.output, job.format, colour);
  const std::string lost = ColourTagsLost(job.format, colour);
  if (!lost.empty()) TellNote(name, "not kept in the output: " + lost);
}

// Whether the job was done; tells why not. Only the picture's own name tells
// several pictures' failures apart.
bool TryJob(Module& module, const ConvertJob& job, const ConvertOptions& options) {
  const std::string input = job.input.string();
  try {
    RunJob(module, job, options);
    return true;
  } catch (const Failure& failure) {
    TellFailure(failure.name().empty() ? input : failure.name(), failure.what());
  } catch (const std::bad_alloc&) {
    TellFailure(input, "not enough memory");
  }
  return false;
}

}  // namespace

int Convert(const ConvertOptions& options) {
  const std::vector<ConvertJob> jobs = PlanConversion(options);
  Module module;
  Progress progress(std::cerr, jobs.size(), jobs.size() > 1 && StandardErrorIsTerminal());
  bool allDone = true;
  for (std::size_t i = 0; i < jobs.size(); ++i) {
    progress.Show(i);
    allDone = TryJob(module, jobs[i], options) && allDone;
  }
  return allDone ? kExitSuccess : kExitFailure;
}

}  // namespace pxl
