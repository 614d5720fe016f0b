// Checks the outputs of pxl convert and assigns one to each input.
#include "tools/pxl/commands/convert_plan.h"

#include <map>
#include <system_error>

#include "tools/pxl/formats/png/png_file.h"
#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/output_file.h"

namespace pxl {
namespace {

namespace fs = std::filesystem;

// Bits a pixel that a PNG file keeps.
std::int32_t DeepestPng() {
  return CanWrite16BitPng() ? 64 : 32;
}

// Whether the output is a folder; throws if it must be one and is not.
bool WantsFolder(const ConvertOptions& options) {
  std::error_code error;
  if (fs::is_directory(options.output, error)) return true;
  const std::string name = options.output.string();
  if (options.inputs.size() == 1 && options.output.has_filename()) return false;
  if (fs::exists(options.output, error)) {
    throw UsageError(name, "is not a folder; several pictures need one");
  }
  throw Failure(name, "no such folder");
}

ConvertJob JobInFolder(const fs::path& input, const ConvertOptions& options) {
  const bool exr = options.depth > DeepestPng();
  fs::path output = options.output / input.stem();
  output += exr ? ".exr" : ".png";
  return {input, output, exr ? FileFormat::Exr : FileFormat::Png};
}

ConvertJob SingleJob(const ConvertOptions& options) {
  const auto format = FormatOfName(options.output);
  if (!format) throw UsageError(options.output.string(), "the ending must be .png or .exr");
  return {options.inputs.front(), options.output, *format};
}

void RefuseDuplicates(const std::vector<ConvertJob>& jobs) {
  std::map<fs::path, const ConvertJob*> seen;
  for (const ConvertJob& job : jobs) {
    const auto [place, isNew] = seen.emplace(job.output, &job);
    if (isNew) continue;
    throw UsageError(job.output.string(), "would be the output of both " +
                                              place->second->input.string() + " and " +
                                              job.input.string());
  }
}

void RefuseOverwritingInputs(const std::vector<ConvertJob>& jobs) {
  for (const ConvertJob& writer : jobs) {
    for (const ConvertJob& reader : jobs) RefuseInput(writer.output, reader.input);
  }
}

}  // namespace

std::vector<ConvertJob> PlanConversion(const ConvertOptions& options) {
  std::vector<ConvertJob> jobs;
  if (WantsFolder(options)) {
    for (const fs::path& input : options.inputs) jobs.push_back(JobInFolder(input, options));
  } else {
    jobs.push_back(SingleJob(options));
  }
  RefuseDuplicates(jobs);
  RefuseOverwritingInputs(jobs);
  if (jobs.size() == 1) CheckOutputPlace(jobs.front().output);
  return jobs;
}

}  // namespace pxl
