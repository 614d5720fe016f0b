// What is alive: surfaces by the addresses that callers know them by.
#ifndef QDE_REGISTRY_H
#define QDE_REGISTRY_H

#include <cstdint>

namespace qde {

class Surface;

// The surface that a port, a pixel-map handle, a pixel-map record or a device
// belongs to; null for any other address, null included.
Surface* FindSurface(const void* address);

// Throws std::bad_alloc, and has then done nothing.
void Register(const void* address, Surface* surface);
void Unregister(const void* address);
// All addresses of a surface.
void UnregisterAll(const Surface* surface);

}  // namespace qde

#endif
