// Reads the module's settings from the database of vetrix.
#include "tools/pxl/module/module_settings.h"

#include <string>

#include "platform/vetrix.h"

namespace pxl {
namespace {

std::u16string SettingText(const char* key, const char* defaultText) {
  return vetrix::utility::UTF8to16(
      vetrix::debug::DebugDatabase::Instance().GetEntry(key, defaultText));
}

}  // namespace

// A text that is not a value counts as false or zero.
bool PoolEnabled() {
  vetrix::iUTF16StringStream stream(SettingText(kPoolKey, "true"));
  stream.boolalpha();
  bool value = false;
  stream >> value;
  return value && !stream.fail();
}

std::int32_t PoolThreshold() {
  vetrix::iUTF16StringStream stream(SettingText(kThresholdKey, "300"));
  std::int32_t value = 0;
  stream >> value;
  return stream.fail() ? 0 : value;
}

}  // namespace pxl
