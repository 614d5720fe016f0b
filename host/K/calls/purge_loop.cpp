// The purge loop.
#include "host/K/calls/purge_loop.h"

#include <algorithm>
#include <limits>

#include "K_host.h"
#include "TRC_host.h"
#include "host/K/events/time_line.h"
#include "host/K/handles/handle_store.h"
#include "host/K/limits/purgers.h"
#include "host/K/pool/pool.h"

namespace k {

std::uint64_t FreeMemory(std::uint64_t bytesNeeded) {
  // The caller's last attempt failed, so that even 0 means that memory is needed.
  const std::uint64_t needed = std::max<std::uint64_t>(bytesNeeded, 1);
  TRC_Log(TRC_Level_DETAIL, "K", "purge", "memory is short");
  std::uint64_t freed = Pool::Instance().ReleaseKept(needed);
  if (freed < needed) freed += HandleStore::Instance().FreeOldPlaces();
  if (freed < needed) freed += HandleStore::Instance().PurgeAtLeast(needed - freed);
  if (freed < needed) freed += RunPurgers(needed - freed);
  NotePurge();
  return freed;
}

void FreePurgeable() {
  constexpr std::uint64_t kAll = std::numeric_limits<std::uint64_t>::max();
  Pool::Instance().ReleaseKept(kAll);
  HandleStore::Instance().PurgeAtLeast(kAll);
  NotePurge();
}

}  // namespace k

// The last argument states that the caller has no alternative. It has no effect:
// the loop always tries everything.
std::int32_t K_PurgeLoop(std::uint64_t bytesNeeded, K_PurgeAttempt attempt, void* context,
                         Boolean) {
  for (;;) {
    std::uint8_t done = 0;
    const std::int32_t result = attempt(context, &done);
    if (done != 0) return result;
    if (k::FreeMemory(bytesNeeded) == 0) return K_Err_NO_MEMORY;
  }
}
