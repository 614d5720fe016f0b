// Starts child processes and sets their limits.
#include "tests/system_limits/child.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <fstream>

namespace {

// The numbers of /proc/self/statm, in bytes.
std::uint64_t PagesInUse(std::size_t field) {
  std::ifstream file("/proc/self/statm");
  std::uint64_t pages = 0;
  for (std::size_t i = 0; i <= field; ++i) file >> pages;
  return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace

pid_t StartChild(const std::function<int()>& work) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    const int code = work();
    std::fflush(nullptr);
    _exit(code);
  }
  EXPECT_GT(child, 0);
  return child;
}

int WaitForChild(pid_t child) {
  int status = -1;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return status;
}

void ExpectInChild(const std::function<void()>& body) {
  const pid_t child = StartChild([&body] {
    body();
    return testing::Test::HasFailure() ? 1 : 0;
  });
  const int status = WaitForChild(child);
  EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
  EXPECT_EQ(WEXITSTATUS(status), 0) << "see what the child told above";
}

void Limit(__rlimit_resource resource, rlim_t value) {
  rlimit limit{};
  getrlimit(resource, &limit);
  limit.rlim_cur = value;
  EXPECT_EQ(setrlimit(resource, &limit), 0);
}

void Lift(__rlimit_resource resource) {
  rlimit limit{};
  getrlimit(resource, &limit);
  Limit(resource, limit.rlim_max);
}

std::uint64_t AddressSpaceInUse() {
  return PagesInUse(0);
}

std::uint64_t DataInUse() {
  return PagesInUse(5);
}
