#include "host/vetrix/settings/settings_toml.h"

#include <toml++/toml.h>

#include "host/vetrix/settings/disguise.h"

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
  return "settings " + name + ", line " + std::to_string(where.line) + ": " + Undisguised(what);
}

ParsedSettings TextsOf(const toml::table& table, const std::string& name) {
  SettingTexts texts;
  std::vector<std::string> complaints;
  for (const auto& [key, value] : table) {
    if (auto text = TextOf(value)) {
      texts.emplace(Undisguised(std::string(key.str())), Undisguised(*text));
    } else {
      const std::string what = std::string(key.str()) + " is no boolean, integer or string";
      complaints.push_back(Complaint(name, value.source().begin, what));
    }
  }
  return {std::move(texts), std::move(complaints)};
}

}  // namespace

// The parser is built with exceptions, and is not told the name: either way the
// want of memory would end the program.
ParsedSettings ParseSettings(const std::string& toml, const std::string& name) {
  const std::optional<std::string> disguised = Disguised(toml);
  if (!disguised) {
    return {std::nullopt, {"settings " + name + ": not UTF-8, or with private characters"}};
  }
  try {
    return TextsOf(toml::parse(*disguised), name);
  } catch (const toml::parse_error& error) {
    const std::string what(error.description());
    return {std::nullopt, {Complaint(name, error.source().begin, what)}};
  }
}

}  // namespace vetrix
