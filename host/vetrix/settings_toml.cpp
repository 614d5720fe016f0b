#include "settings_toml.h"

#include <toml++/toml.h>

#include <cstdio>

namespace vetrix {
namespace {

std::optional<std::string> TextOf(const toml::node& value) {
  if (const auto* boolean = value.as_boolean()) return boolean->get() ? "true" : "false";
  if (const auto* integer = value.as_integer()) return std::to_string(integer->get());
  if (const auto* string = value.as_string()) return string->get();
  return std::nullopt;
}

void Complain(const std::string& name, toml::source_position where, const std::string& what) {
  std::fprintf(stderr, "vetrix: settings %s, line %u: %s\n", name.c_str(),
               static_cast<unsigned>(where.line), what.c_str());
}

SettingTexts TextsOf(const toml::table& table, const std::string& name) {
  SettingTexts texts;
  for (const auto& [key, value] : table) {
    if (auto text = TextOf(value)) {
      texts.emplace(key.str(), *std::move(text));
    } else {
      Complain(name, value.source().begin,
               std::string(key.str()) + " is no boolean, integer or string");
    }
  }
  return texts;
}

}  // namespace

// The parser is built with exceptions, and is not told the name: either way the
// want of memory would end the program.
std::optional<SettingTexts> ParseSettings(const std::string& toml, const std::string& name) {
  try {
    return TextsOf(toml::parse(toml), name);
  } catch (const toml::parse_error& error) {
    Complain(name, error.source().begin, std::string(error.description()));
    return std::nullopt;
  }
}

}  // namespace vetrix
