#include "settings_toml.h"

#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

namespace vetrix {
namespace {

std::optional<std::string> TextOf(const toml::node& value) {
  if (const auto* boolean = value.as_boolean()) return boolean->get() ? "true" : "false";
  if (const auto* integer = value.as_integer()) return std::to_string(integer->get());
  if (const auto* string = value.as_string()) return string->get();
  return std::nullopt;
}

std::string Complaint(const std::string& name, toml::source_position where,
                      const std::string& what) {
  return "settings " + name + ", line " + std::to_string(where.line) + ": " + what;
}

}  // namespace

ParsedSettings ParseSettings(const std::string& toml, const std::string& name) {
  const toml::parse_result parsed = toml::parse(toml, name);
  if (!parsed) {
    const std::string what(parsed.error().description());
    return {std::nullopt, {Complaint(name, parsed.error().source().begin, what)}};
  }
  SettingTexts texts;
  std::vector<std::string> complaints;
  for (const auto& [key, value] : parsed.table()) {
    if (auto text = TextOf(value)) {
      texts.emplace(key.str(), *std::move(text));
    } else {
      const std::string what = std::string(key.str()) + " is no boolean, integer or string";
      complaints.push_back(Complaint(name, value.source().begin, what));
    }
  }
  return {std::move(texts), std::move(complaints)};
}

}  // namespace vetrix
