// The debug settings of the process: the file they come from, the calls of hosts
// and the database that modules import.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <memory>
#include <mutex>
#include <utility>

#include "host/endless_file.h"
#include "host/utf8_path.h"
#include "host/vetrix/settings/settings_toml.h"
#include "host/vetrix/system/environment.h"
#include "vetrix_host.h"

namespace vetrix {
namespace {

constexpr std::size_t kLargestFile = std::size_t{1} << 20;

// Keys come from the file, and control characters would act on a terminal.
void MakePrintable(std::string& line) {
  const auto isControl = [](unsigned char c) { return c < 0x20 || c == 0x7F; };
  std::ranges::replace_if(line, isControl, '?');
}

// The whole text; or none, and the reason.
std::optional<std::string> ReadWholeFile(const std::string& name, std::string& reason) {
  const std::filesystem::path path = PathOfUtf8(name);
  reason = "is not a regular file";
  if (IsEndlessFile(path)) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  std::string text;
  // Character by character: this way the stream keeps the error of a source that
  // opens but cannot be read, such as a directory.
  for (char c = 0; text.size() <= kLargestFile && file.get(c);) text += c;
  reason = "is too large for settings";
  if (text.size() > kLargestFile) return std::nullopt;
  reason = "cannot be read";
  if (!file.is_open() || file.bad()) return std::nullopt;
  return text;
}

ParsedSettings ReadFile(const std::string& path) {
  std::string reason;
  const std::optional<std::string> text = ReadWholeFile(path, reason);
  if (text) return ParseSettings(*text, path);
  return {std::nullopt, {"the settings file " + path + " " + reason}};
}

struct Store {
  std::mutex mutex;
  std::string path;
  SettingTexts texts;
  std::vector<std::string> complaints;
};

// Returns false, and leaves the store without settings, when the source could
// not be used.
bool Replace(Store& store, const std::string& path, ParsedSettings parsed) {
  for (std::string& complaint : parsed.complaints) {
    MakePrintable(complaint);
    std::fprintf(stderr, "vetrix: %s\n", complaint.c_str());
  }
  const bool good = parsed.texts.has_value();
  const std::lock_guard lock(store.mutex);
  store.path = path;
  store.texts = std::move(parsed.texts).value_or(SettingTexts{});
  store.complaints = std::move(parsed.complaints);
  return good;
}

Store* MakeStore() {
  auto store = std::make_unique<Store>();
  const std::string path = Variable("VETRIX_SETTINGS");
  if (!path.empty()) Replace(*store, path, ReadFile(path));
  return store.release();
}

// Made at the first use, and never destroyed: settings can be read until the
// process ends.
Store& TheStore() {
  static Store* const store = MakeStore();
  return *store;
}

// A copy of one member.
template <typename Member>
Member Copy(Member Store::*member) {
  Store& store = TheStore();
  const std::lock_guard lock(store.mutex);
  return store.*member;
}

}  // namespace

namespace host {

std::string SettingsPath() {
  return Copy(&Store::path);
}

std::vector<Setting> Settings() {
  std::vector<Setting> result;
  for (auto& [key, text] : Copy(&Store::texts)) result.push_back({key, text});
  return result;
}

std::vector<std::string> SettingsComplaints() {
  return Copy(&Store::complaints);
}

bool LoadSettingsFile(const std::string& path) {
  return Replace(TheStore(), path, ReadFile(path));
}

bool LoadSettingsText(const std::string& text) {
  return Replace(TheStore(), "", ParseSettings(text, "(text)"));
}

}  // namespace host

namespace debug {

struct DebugDatabase::Impl {
  Store& store = TheStore();
};

DebugDatabase::DebugDatabase() : impl_(new Impl) {
}

DebugDatabase::~DebugDatabase() {
  delete impl_;
}

DebugDatabase& DebugDatabase::Instance() {
  static auto* const database = new DebugDatabase;
  return *database;
}

std::string DebugDatabase::GetEntry(std::string const& key, std::string const& defaultText) {
  const std::lock_guard lock(impl_->store.mutex);
  const auto found = impl_->store.texts.find(key);
  return found != impl_->store.texts.end() ? found->second : defaultText;
}

}  // namespace debug
}  // namespace vetrix
