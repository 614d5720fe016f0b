// Variables of the environment.
#ifndef TESTS_SUPPORT_SYSTEM_VARIABLES_H
#define TESTS_SUPPORT_SYSTEM_VARIABLES_H

#include <string>

// In the environment of this process and of those that it starts later.
void SetVariable(const std::string& name, const std::string& value);
void UnsetVariable(const std::string& name);

// Sets a variable as long as it lives.
class ScopedVariable {
 public:
  ScopedVariable(const std::string& name, const std::string& value) : name_(name) {
    SetVariable(name, value);
  }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;
  ~ScopedVariable() { UnsetVariable(name_); }

 private:
  std::string name_;
};

#endif
