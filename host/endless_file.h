// Recognises files whose reading may never end.
#ifndef HOST_ENDLESS_FILE_H
#define HOST_ENDLESS_FILE_H

#include <filesystem>
#include <system_error>

// Whether opening or reading the file may block or never end, as with a pipe or a
// device. False for a folder: reading it fails at once.
[[nodiscard]] inline bool IsEndlessFile(const std::filesystem::path& path) {
  namespace fs = std::filesystem;
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  return fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

#endif
