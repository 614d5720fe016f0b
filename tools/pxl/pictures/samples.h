// 16-bit channels: picture files hold 0..65535, Worlds 0..32768.
#ifndef TOOLS_PXL_PICTURES_SAMPLES_H
#define TOOLS_PXL_PICTURES_SAMPLES_H

#include <cstddef>
#include <cstdint>

namespace pxl {

// v * 32768 / 65535, rounded to nearest. There are no ties: 65535 is odd.
constexpr std::uint16_t ToWorld16(std::uint16_t file) {
  return static_cast<std::uint16_t>((file * 32768U + 32767U) / 65535U);
}

// v * 65535 / 32768, rounded to nearest, halves upward; values above full scale
// become 65535. ToWorld16 inverts it exactly; it does not invert ToWorld16, which
// maps 65536 values to 32769.
constexpr std::uint16_t ToFile16(std::uint16_t world) {
  const std::uint32_t scaled = (world * 65535U + 16384U) >> 15;
  return static_cast<std::uint16_t>(scaled > 65535U ? 65535U : scaled);
}

// The same for `count` channels in a row.
void ToWorld16(std::byte* channels, std::size_t count);
void ToFile16(const std::byte* world, std::byte* file, std::size_t count);

}  // namespace pxl

#endif
