// The debug settings of the process, and where they came from.
#ifndef VETRIX_SETTINGS_H
#define VETRIX_SETTINGS_H

#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace vetrix {

using SettingTexts = std::map<std::string, std::string>;

// Safe on any thread.
class Settings {
 public:
  // The one instance. The first call reads the file that the environment names.
  static Settings& Instance();

  std::optional<std::string> Find(const std::string& key) const;
  SettingTexts All() const;
  std::string Path() const;

  // Both replace what was there, by nothing when the source is bad: then they
  // give false after a line on standard error.
  bool LoadFile(const std::string& path);
  bool LoadText(const std::string& text);

 private:
  Settings();
  bool Replace(const std::string& path, std::optional<SettingTexts> texts);

  mutable std::mutex mutex_;
  std::string path_;
  SettingTexts texts_;
};

}  // namespace vetrix

#endif
