#include "settings.h"

#include <cstdio>
#include <fstream>
#include <utility>
#include <vector>

#include "environment.h"
#include "host/utf8_path.h"
#include "settings_toml.h"
#include "vetrix_host.h"

namespace vetrix {
namespace {

std::optional<std::string> ReadWholeFile(const std::string& path) {
  std::ifstream file(PathOfUtf8(path), std::ios::binary);
  std::string text;
  // Character by character: that way the stream keeps the error of what opens
  // but cannot be read, such as a directory.
  for (char c = 0; file.get(c);) text += c;
  if (!file.is_open() || file.bad()) return std::nullopt;
  return text;
}

}  // namespace

Settings::Settings() {
  const std::string path = Variable("VETRIX_SETTINGS");
  if (!path.empty()) LoadFile(path);
}

Settings& Settings::Instance() {
  // Never destroyed, so that settings can be read until the process is gone.
  static auto* const settings = new Settings;
  return *settings;
}

std::optional<std::string> Settings::Find(const std::string& key) const {
  const std::lock_guard lock(mutex_);
  const auto found = texts_.find(key);
  if (found == texts_.end()) return std::nullopt;
  return found->second;
}

SettingTexts Settings::All() const {
  const std::lock_guard lock(mutex_);
  return texts_;
}

std::string Settings::Path() const {
  const std::lock_guard lock(mutex_);
  return path_;
}

bool Settings::LoadFile(const std::string& path) {
  const std::optional<std::string> text = ReadWholeFile(path);
  if (text) return Replace(path, ParseSettings(*text, path));
  std::fprintf(stderr, "vetrix: the settings file %s cannot be read\n", path.c_str());
  return Replace(path, std::nullopt);
}

bool Settings::LoadText(const std::string& text) {
  return Replace("", ParseSettings(text, "(text)"));
}

bool Settings::Replace(const std::string& path, std::optional<SettingTexts> texts) {
  const bool good = texts.has_value();
  const std::lock_guard lock(mutex_);
  path_ = path;
  texts_ = std::move(texts).value_or(SettingTexts{});
  return good;
}

namespace host {

std::string SettingsPath() {
  return vetrix::Settings::Instance().Path();
}

std::vector<Setting> Settings() {
  std::vector<Setting> result;
  for (auto& [key, text] : vetrix::Settings::Instance().All()) result.push_back({key, text});
  return result;
}

bool LoadSettingsFile(const std::string& path) {
  return vetrix::Settings::Instance().LoadFile(path);
}

bool LoadSettingsText(const std::string& text) {
  return vetrix::Settings::Instance().LoadText(text);
}

}  // namespace host
}  // namespace vetrix
