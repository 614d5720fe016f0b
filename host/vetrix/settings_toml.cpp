#include "settings_toml.h"

#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

#include <cstdio>

#include "toml_characters.h"

namespace vetrix {
namespace {

std::optional<std::string> TextOf(const toml::node& value) {
  if (const auto* boolean = value.as_boolean()) return boolean->get() ? "true" : "false";
  if (const auto* integer = value.as_integer()) return std::to_string(integer->get());
  if (const auto* string = value.as_string()) return string->get();
  return std::nullopt;
}

void Complain(const std::string& name, unsigned line, const std::string& what) {
  std::fprintf(stderr, "vetrix: settings %s, line %u: %s\n", name.c_str(), line, what.c_str());
}

}  // namespace

std::optional<SettingTexts> ParseSettings(const std::string& toml, const std::string& name) {
  if (const auto line = LineOfStrayCharacter(toml)) {
    Complain(name, *line, "a character beyond ASCII outside of a string");
    return std::nullopt;
  }
  const toml::parse_result parsed = toml::parse(toml, name);
  if (!parsed) {
    Complain(name, parsed.error().source().begin.line, std::string(parsed.error().description()));
    return std::nullopt;
  }
  SettingTexts texts;
  for (const auto& [key, value] : parsed.table()) {
    if (auto text = TextOf(value)) {
      texts.emplace(key.str(), *std::move(text));
    } else {
      Complain(name, value.source().begin.line,
               std::string(key.str()) + " is no boolean, integer or string");
    }
  }
  return texts;
}

}  // namespace vetrix
