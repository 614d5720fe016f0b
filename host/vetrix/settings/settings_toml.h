// Parses the settings file.
#ifndef VETRIX_SETTINGS_TOML_H
#define VETRIX_SETTINGS_TOML_H

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vetrix {

using SettingTexts = std::map<std::string, std::string>;

// The result of reading settings. `texts` is empty when the source cannot be
// used. `complaints` has one line for that, or for each entry that is left out.
struct ParsedSettings {
  std::optional<SettingTexts> texts;
  std::vector<std::string> complaints;
};

// Returns the entries of a TOML text by their keys, each as text; leaves out
// values that are no boolean, integer or string. The complaints name the source
// `name`.
ParsedSettings ParseSettings(const std::string& toml, const std::string& name);

}  // namespace vetrix

#endif
