// The map of addresses to surfaces.
#include "host/QDE/surfaces/registry.h"

#include <unordered_map>

#include "host/immortal.h"

namespace qde {
namespace {

using Addresses = std::unordered_map<const void*, Surface*>;

// Never destroyed: worlds may be disposed of while the process ends.
Addresses& All() {
  static Immortal<Addresses> addresses;
  return *addresses;
}
// Created while the library is loaded: later there may be no memory for it.
[[maybe_unused]] const Addresses& kLoadedAddresses = All();

}  // namespace

Surface* FindSurface(const void* address) {
  const auto found = All().find(address);
  return found != All().end() ? found->second : nullptr;
}

void Register(const void* address, Surface* surface) {
  All().emplace(address, surface);
}

void Unregister(const void* address) {
  All().erase(address);
}

void UnregisterAll(const Surface* surface) {
  std::erase_if(All(), [surface](const auto& entry) { return entry.second == surface; });
}

}  // namespace qde
