// Child processes, and the limits that the system sets them.
#ifndef TESTS_SYSTEM_LIMITS_CHILD_H
#define TESTS_SYSTEM_LIMITS_CHILD_H

#include <sys/resource.h>
#include <sys/types.h>

#include <cstdint>
#include <functional>

// Starts a child that does the work and exits with its result.
pid_t StartChild(const std::function<int()>& work);
// Returns the status that waitpid reports.
int WaitForChild(pid_t child);

// Runs the body, with its expectations, in a child; a failure in it fails the
// test, and so does a crash.
void ExpectInChild(const std::function<void()>& body);

// Sets the limit in force, of this process.
void Limit(__rlimit_resource resource, rlim_t value);
void Lift(__rlimit_resource resource);

// The bytes of address space and of private memory that the process uses now.
std::uint64_t AddressSpaceInUse();
std::uint64_t DataInUse();

#endif
