// The debug settings of the process, and where they came from.
#ifndef VETRIX_SETTINGS_H
#define VETRIX_SETTINGS_H

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace vetrix {

using SettingTexts = std::map<std::string, std::string>;

// What was read: no texts when the source is bad, and a line of complaint for
// that, or for each entry that was left out.
struct ParsedSettings {
  std::optional<SettingTexts> texts;
  std::vector<std::string> complaints;
};

// Safe on any thread.
class Settings {
 public:
  // The one instance. The first call reads the file that the environment names.
  static Settings& Instance();

  std::optional<std::string> Find(const std::string& key) const;
  SettingTexts All() const;
  std::string Path() const;
  std::vector<std::string> Complaints() const;

  // Both replace what was there, by nothing when the source is bad: then they
  // give false. Complaints are lines on standard error too.
  bool LoadFile(const std::string& path);
  bool LoadText(const std::string& text);

 private:
  Settings();
  bool Replace(const std::string& path, ParsedSettings parsed);

  mutable std::mutex mutex_;
  std::string path_;
  SettingTexts texts_;
  std::vector<std::string> complaints_;
};

}  // namespace vetrix

#endif
