// Runs the proof of all processor levels and prints a verdict for each.
#include "tools/pxl/commands/selftest/selftest_command.h"

#include <iostream>

#include "tools/proof/digest.h"
#include "tools/proof/floats.h"
#include "tools/proof/values.h"
#include "tools/proof/verdict.h"
#include "tools/pxl/commands/selftest/shipped_blit.h"
#include "tools/pxl/system/exit_codes.h"
#include "tools/pxl/system/operating_system.h"
#include "tools/pxl/system/progress.h"
#include "transfer/kernels/conversion_tables.h"

namespace pxl {
namespace {

// Counts finished steps and shows them.
class Steps {
 public:
  explicit Steps(std::size_t total) : progress_(std::cerr, total, StandardErrorIsTerminal()) {
    progress_.Show(0);
  }
  void Advance(std::size_t count = 1) { progress_.Show(done_ += count); }

 private:
  Progress progress_;
  std::size_t done_ = 0;
};

constexpr std::uint32_t kBlocksAStep = 1024;

// The conversions of all levels without a difference so far. The baseline is left
// out: its conversion is the loop that the others are compared with.
std::vector<proof::Subject> ConversionsFromFloat(const std::vector<simd::Level>& levels,
                                                 const std::vector<proof::Verdict>& verdicts) {
  std::vector<proof::Subject> conversions;
  for (const simd::Level level : levels) {
    const bool differs = verdicts.at(static_cast<std::size_t>(level)).difference.has_value();
    if (level == simd::Level::Baseline || differs) continue;
    for (proof::Subject& subject : proof::ConversionSubjects(level)) {
      if (subject.source.elementBytes == sizeof(float)) conversions.push_back(std::move(subject));
    }
  }
  return conversions;
}

proof::Verdict ProveLevel(simd::Level level, Steps& steps) {
  proof::Verdict verdict;
  verdict.name = simd::NameOf(level);
  const std::vector<proof::Subject> subjects = proof::SubjectsOf(level);
  for (const proof::Subject& subject : subjects) {
    if (!verdict.difference) verdict.difference = proof::Check(subject);
    steps.Advance();
  }
  verdict.digest = proof::DigestOf(subjects);
  return verdict;
}

// All floats through all levels.
void ProveFloats(const std::vector<proof::Subject>& conversions,
                 std::vector<proof::Verdict>& levels, Steps& steps) {
  std::uint32_t shown = 0;
  const auto findings =
      proof::CheckFloats(conversions, proof::kAllFloats, [&](std::uint32_t blocks) {
        steps.Advance((blocks / kBlocksAStep) - shown);
        shown = blocks / kBlocksAStep;
      });
  for (std::size_t i = 0; i < findings.size(); ++i) {
    proof::Verdict& level = levels.at(static_cast<std::size_t>(conversions[i].level));
    if (!level.difference) level.difference = findings[i];
  }
}

std::vector<proof::Verdict> ProveAll(const SelftestOptions& options) {
  PXLp_BuildConversionTables();
  const std::vector<simd::Level> here = proof::LevelsHere();
  const std::size_t ofLevels = here.size() * proof::SubjectsOf(here.front()).size();
  const std::size_t ofFloats = options.quick ? 0 : proof::kAllFloats.count / kBlocksAStep;
  Steps steps(ofLevels + ofFloats + kShippedBlits);

  std::vector<proof::Verdict> verdicts;
  verdicts.reserve(simd::kAllLevels.size() + 1);
  for (const simd::Level level : here) verdicts.push_back(ProveLevel(level, steps));
  proof::CompareDigests(verdicts);
  if (!options.quick) ProveFloats(ConversionsFromFloat(here, verdicts), verdicts, steps);
  for (const simd::Level level : simd::kAllLevels) {
    if (level > here.back()) verdicts.push_back({simd::NameOf(level), "", std::nullopt});
  }
  verdicts.push_back(ProveShippedBlit([&steps] { steps.Advance(); }));
  return verdicts;
}

}  // namespace

int Selftest(const SelftestOptions& options) {
  const std::vector<proof::Verdict> verdicts = ProveAll(options);
  for (const proof::Verdict& verdict : verdicts) std::cout << proof::Line(verdict) << "\n";
  return proof::AllEqual(verdicts) ? kExitSuccess : kExitFailure;
}

}  // namespace pxl
