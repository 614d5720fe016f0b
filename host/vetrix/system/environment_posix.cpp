#include <cstdlib>

#include "host/vetrix/system/environment.h"

namespace vetrix {

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace vetrix
