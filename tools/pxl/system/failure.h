// Failures, which the user sees in one line: "NAME: reason".
#ifndef TOOLS_PXL_SYSTEM_FAILURE_H
#define TOOLS_PXL_SYSTEM_FAILURE_H

#include <stdexcept>
#include <string>

namespace pxl {

// A failure for the exit code 1. The name is the file or option concerned; a caller
// that knows the name adds it where it is empty.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& reason) : std::runtime_error(reason) {}
  Failure(std::string name, const std::string& reason)
      : std::runtime_error(reason), name_(std::move(name)) {}

  const std::string& name() const { return name_; }

 private:
  std::string name_;
};

// A failure for lack of memory.
class Shortage : public Failure {
 public:
  using Failure::Failure;
};

// The command line is unusable: exit code 2.
class UsageError : public Failure {
 public:
  using Failure::Failure;
};

// Runs the action and returns its result. Adds `name` to a failure without a name.
template <typename Action>
auto About(const std::string& name, Action action) {
  try {
    return action();
  } catch (const Failure& failure) {
    if (!failure.name().empty()) throw;
    throw Failure(name, failure.what());
  }
}

}  // namespace pxl

#endif
