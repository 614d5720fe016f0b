// The live surfaces, by the addresses that callers use for them.
#ifndef QDE_REGISTRY_H
#define QDE_REGISTRY_H

#include <cstdint>

namespace qde {

class Surface;

// The surface that a port, a pixel-map handle, a pixel-map record or a device
// belongs to; null for any other address, null included.
Surface* FindSurface(const void* address);

// Without effect if it throws std::bad_alloc.
void Register(const void* address, Surface* surface);
void Unregister(const void* address);
// All addresses of a surface.
void UnregisterAll(const Surface* surface);

}  // namespace qde

#endif
