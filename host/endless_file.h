// Files that might never end.
#ifndef HOST_ENDLESS_FILE_H
#define HOST_ENDLESS_FILE_H

#include <filesystem>
#include <system_error>

// Whether it opens like a file and may be waited for or read for ever, as a pipe
// or a device. A folder is none: reading it fails at once.
[[nodiscard]] inline bool IsEndlessFile(const std::filesystem::path& path) {
  namespace fs = std::filesystem;
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  return fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

#endif
