// The application's purgers: routines that free memory.
#include "host/K/limits/purgers.h"

#include <algorithm>
#include <array>
#include <mutex>

#include "K_host.h"

namespace k {
namespace {

struct Entry {
  K_Purger purger;
  void* context;
  bool operator==(const Entry&) const = default;
};

// Of a fixed size, so that a copy allocates nothing.
struct PurgerList {
  std::array<Entry, K_MostPurgers> entries{};
  std::size_t count = 0;
};

std::mutex theMutex;
PurgerList thePurgers;

thread_local bool purging = false;

// Marks the thread as running purgers until the end of the scope.
class PurgingScope {
 public:
  PurgingScope() { purging = true; }
  PurgingScope(const PurgingScope&) = delete;
  PurgingScope& operator=(const PurgingScope&) = delete;
  ~PurgingScope() { purging = false; }
};

PurgerList CopyOfPurgers() {
  const std::lock_guard lock(theMutex);
  return thePurgers;
}

}  // namespace

std::uint64_t RunPurgers(std::uint64_t bytesNeeded) {
  if (purging) return 0;
  const PurgingScope scope;
  // A copy, since purgers may add and remove purgers.
  const PurgerList list = CopyOfPurgers();
  std::uint64_t freed = 0;
  for (std::size_t i = 0; i < list.count && freed < bytesNeeded; ++i) {
    freed += list.entries[i].purger(bytesNeeded - freed, list.entries[i].context);
  }
  return freed;
}

}  // namespace k

Boolean K_AddPurger(K_Purger purger, void* context) {
  const std::lock_guard lock(k::theMutex);
  k::PurgerList& list = k::thePurgers;
  if (purger == nullptr || list.count == list.entries.size()) return 0;
  list.entries[list.count++] = {purger, context};
  return 1;
}

void K_RemovePurger(K_Purger purger, void* context) {
  const std::lock_guard lock(k::theMutex);
  k::PurgerList& list = k::thePurgers;
  k::Entry* const begin = list.entries.data();
  k::Entry* const end = begin + list.count;
  k::Entry* const found = std::find(begin, end, k::Entry{purger, context});
  if (found == end) return;
  std::copy(found + 1, end, found);
  --list.count;
}
