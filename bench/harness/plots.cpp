#include "bench/harness/plots.h"

namespace bench {

void WritePlots(const Session& /*session*/, const std::filesystem::path& /*folder*/) {
}

}  // namespace bench
