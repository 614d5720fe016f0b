// Sets variables of the environment.
#include <cstdlib>

#include "tests/support/system/variables.h"

void SetVariable(const std::string& name, const std::string& value) {
  setenv(name.c_str(), value.c_str(), 1);
}

void UnsetVariable(const std::string& name) {
  unsetenv(name.c_str());
}
