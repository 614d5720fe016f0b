// Collects the scripts of all plots.
#include "bench/report/plots.h"

#include "bench/plots/bars.h"
#include "bench/plots/lines.h"
#include "bench/report/files.h"

namespace bench {
namespace {

std::vector<Drawing> AllDrawings(const Results& results) {
  std::vector<Drawing> drawings;
  DrawOperations(results, drawings);
  DrawModes(results, drawings);
  DrawGrowth(results, drawings);
  DrawThresholds(results, drawings);
  return drawings;
}

}  // namespace

void WritePlots(const Session& session, const std::filesystem::path& folder) {
  for (const Drawing& drawing : AllDrawings(session.results)) {
    WriteFile(folder / (drawing.name + ".gnuplot"), drawing.script);
  }
}

}  // namespace bench
