// Runs of 16-bit channels converted between files and Worlds.
#include "tools/pxl/pictures/samples.h"

#include <cstring>

namespace pxl {

void ToWorld16(std::byte* channels, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    std::uint16_t value = 0;
    std::memcpy(&value, channels + 2 * i, sizeof value);
    value = ToWorld16(value);
    std::memcpy(channels + 2 * i, &value, sizeof value);
  }
}

void ToFile16(const std::byte* world, std::byte* file, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    std::uint16_t value = 0;
    std::memcpy(&value, world + 2 * i, sizeof value);
    value = ToFile16(value);
    std::memcpy(file + 2 * i, &value, sizeof value);
  }
}

}  // namespace pxl
