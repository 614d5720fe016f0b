// The database of debug settings: a view of the settings of the process.
#include "host/vetrix/settings/settings.h"
#include "platform/vetrix.h"

namespace vetrix::debug {

struct DebugDatabase::Impl {
  Settings& settings = Settings::Instance();
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
  return impl_->settings.Find(key).value_or(defaultText);
}

}  // namespace vetrix::debug
