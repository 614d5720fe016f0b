// Collects the scripts of all plots.
#include "bench/report/plots.h"

#include "bench/plots/drawings.h"
#include "bench/report/files.h"

namespace bench {

void WritePlots(const Session& session, const std::filesystem::path& folder) {
  for (const Drawing& drawing : AllDrawings(session.results)) {
    WriteFile(folder / (drawing.name + ".gnuplot"), drawing.script);
  }
}

}  // namespace bench
