#include "settings_toml.h"

#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

#include <cstdio>

#include "disguise.h"

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
               static_cast<unsigned>(where.line), Undisguised(what).c_str());
}

}  // namespace

std::optional<SettingTexts> ParseSettings(const std::string& toml, const std::string& name) {
  const std::optional<std::string> disguised = Disguised(toml);
  if (!disguised) {
    std::fprintf(stderr, "vetrix: settings %s: not UTF-8, or with private characters\n",
                 name.c_str());
    return std::nullopt;
  }
  const toml::parse_result parsed = toml::parse(*disguised, name);
  if (!parsed) {
    Complain(name, parsed.error().source().begin, std::string(parsed.error().description()));
    return std::nullopt;
  }
  SettingTexts texts;
  for (const auto& [key, value] : parsed.table()) {
    if (auto text = TextOf(value)) {
      texts.emplace(Undisguised(std::string(key.str())), Undisguised(*text));
    } else {
      Complain(name, value.source().begin,
               std::string(key.str()) + " is no boolean, integer or string");
    }
  }
  return texts;
}

}  // namespace vetrix
