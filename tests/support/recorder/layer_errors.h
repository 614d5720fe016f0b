// Errors of the drawing layer, as the recorder makes its calls fail.
#ifndef TESTS_SUPPORT_RECORDER_LAYER_ERRORS_H
#define TESTS_SUPPORT_RECORDER_LAYER_ERRORS_H

#include <cstdint>

inline constexpr std::int16_t kLayerError = -50;
inline constexpr std::int16_t kLayerMemoryFull = -108;

#endif
