#include "host/vetrix/settings/settings.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <utility>

#include "host/endless_file.h"
#include "host/utf8_path.h"
#include "host/vetrix/settings/settings_toml.h"
#include "host/vetrix/system/environment.h"
#include "vetrix_host.h"

namespace vetrix {
namespace {

// Keys come from the file, and a terminal obeys what it is sent.
void MakePrintable(std::string& line) {
  const auto isControl = [](unsigned char c) { return c < 0x20 || c == 0x7F; };
  std::ranges::replace_if(line, isControl, '?');
}

// Far above any list of settings.
constexpr std::size_t kLargestFile = std::size_t{1} << 20;

// The whole text, or nothing and the reason why.
std::optional<std::string> ReadWholeFile(const std::string& name, std::string& reason) {
  const std::filesystem::path path = PathOfUtf8(name);
  reason = "is not a regular file";
  if (IsEndlessFile(path)) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  std::string text;
  // Character by character: that way the stream keeps the error of what opens
  // but cannot be read, such as a directory.
  for (char c = 0; text.size() <= kLargestFile && file.get(c);) text += c;
  reason = "is too large for settings";
  if (text.size() > kLargestFile) return std::nullopt;
  reason = "cannot be read";
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

std::vector<std::string> Settings::Complaints() const {
  const std::lock_guard lock(mutex_);
  return complaints_;
}

bool Settings::LoadFile(const std::string& path) {
  std::string reason;
  const std::optional<std::string> text = ReadWholeFile(path, reason);
  if (text) return Replace(path, ParseSettings(*text, path));
  return Replace(path, {std::nullopt, {"the settings file " + path + " " + reason}});
}

bool Settings::LoadText(const std::string& text) {
  return Replace("", ParseSettings(text, "(text)"));
}

bool Settings::Replace(const std::string& path, ParsedSettings parsed) {
  for (std::string& complaint : parsed.complaints) {
    MakePrintable(complaint);
    std::fprintf(stderr, "vetrix: %s\n", complaint.c_str());
  }
  const bool good = parsed.texts.has_value();
  const std::lock_guard lock(mutex_);
  path_ = path;
  texts_ = std::move(parsed.texts).value_or(SettingTexts{});
  complaints_ = std::move(parsed.complaints);
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

std::vector<std::string> SettingsComplaints() {
  return vetrix::Settings::Instance().Complaints();
}

bool LoadSettingsFile(const std::string& path) {
  return vetrix::Settings::Instance().LoadFile(path);
}

bool LoadSettingsText(const std::string& text) {
  return vetrix::Settings::Instance().LoadText(text);
}

}  // namespace host
}  // namespace vetrix
