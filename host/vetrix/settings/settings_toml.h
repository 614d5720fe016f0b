// The form of the settings file.
#ifndef VETRIX_SETTINGS_TOML_H
#define VETRIX_SETTINGS_TOML_H

#include <optional>
#include <string>
#include <vector>

#include "host/vetrix/settings/settings.h"

namespace vetrix {

// The entries of a TOML text, each as its text. Nothing when the text cannot be
// parsed; entries without a text form are left out. Either is told in one line
// of complaint, with `name` for the text's origin.
ParsedSettings ParseSettings(const std::string& toml, const std::string& name);

}  // namespace vetrix

#endif
