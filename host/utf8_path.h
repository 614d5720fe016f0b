// Names of files, which are UTF-8 wherever they stand in a std::string.
#ifndef HOST_UTF8_PATH_H
#define HOST_UTF8_PATH_H

#include <filesystem>
#include <string>
#include <string_view>

// A path is made of bytes here and of UTF-16 on Windows, where one made of a
// plain string would take it for some other encoding.
[[nodiscard]] inline std::filesystem::path PathOfUtf8(std::string_view name) {
  const auto* bytes = reinterpret_cast<const char8_t*>(name.data());
  return {bytes, bytes + name.size()};
}

// The other way round.
[[nodiscard]] inline std::string Utf8OfPath(const std::filesystem::path& path) {
  const auto name = path.u8string();
  return {name.begin(), name.end()};
}

#endif
