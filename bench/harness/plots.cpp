#include "bench/harness/plots.h"

#include "bench/harness/files.h"
#include "bench/plots/drawings.h"

namespace bench {

void WritePlots(const Session& session, const std::filesystem::path& folder) {
  for (const Drawing& drawing : AllDrawings(session.results)) {
    WriteFile(folder / (drawing.name + ".gnuplot"), drawing.script);
  }
}

}  // namespace bench
