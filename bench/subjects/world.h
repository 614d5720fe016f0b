// A locked World for as long as it lives.
#ifndef BENCH_SUBJECTS_WORLD_H
#define BENCH_SUBJECTS_WORLD_H

#include <memory>

#include "PXL.h"
#include "bench/subjects/picture.h"

namespace bench {

enum class Kind { Frame, Surface };

inline Rect Bounds(int width, int height) {
  return {0, 0, static_cast<std::int16_t>(height), static_cast<std::int16_t>(width)};
}

// Checks the status of PXL_NewWorld: throws std::runtime_error.
PXL_WorldHandle MakeWorld(Kind kind, int depth, int width, int height, std::uint32_t flags = 0);

class World {
 public:
  // Filled with random channels: floats from 0 to 1, 16-bit ones to full scale.
  World(Kind kind, int depth, int width, int height);
  ~World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  PXL_WorldHandle Handle() const { return handle_; }
  Picture View() const;

 private:
  PXL_WorldHandle handle_;
};

// Contenders share the Worlds that they work on.
using SharedWorld = std::shared_ptr<World>;

inline SharedWorld ShareWorld(Kind kind, int depth, int width, int height) {
  return std::make_shared<World>(kind, depth, width, height);
}

}  // namespace bench

#endif
