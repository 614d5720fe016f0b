// The system has no variables without a value: to set one to nothing takes it
// away.
#include <cstdlib>

#include "host/utf8_path.h"
#include "tests/support/system/variables.h"

namespace {

std::wstring Wide(const std::string& utf8) {
  return PathOfUtf8(utf8).wstring();
}

}  // namespace

void SetVariable(const std::string& name, const std::string& value) {
  _wputenv_s(Wide(name).c_str(), Wide(value).c_str());
}

void UnsetVariable(const std::string& name) {
  SetVariable(name, "");
}
