// Converts file names between std::string, always UTF-8, and paths.
#ifndef HOST_UTF8_PATH_H
#define HOST_UTF8_PATH_H

#include <filesystem>
#include <string>
#include <string_view>

// On Windows a path made directly from a std::string would be decoded in the code
// page.
[[nodiscard]] inline std::filesystem::path PathOfUtf8(std::string_view name) {
  const auto* bytes = reinterpret_cast<const char8_t*>(name.data());
  return {bytes, bytes + name.size()};
}

// The reverse of PathOfUtf8.
[[nodiscard]] inline std::string Utf8OfPath(const std::filesystem::path& path) {
  const auto name = path.u8string();
  return {name.begin(), name.end()};
}

#endif
