// Counts page faults, and forbids calls to the system.
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <new>

#include "tests/support/system_use/system_use.h"

namespace {

constexpr int kNone = -1;

// Where the child leaves the number of the forbidden call for its parent.
int* theSystemCall = nullptr;

void OnForbiddenCall(int, siginfo_t* info, void*) {
  *theSystemCall = info->si_syscall;
  _exit(static_cast<int>(Quiet::No));
}

// From here on each call but the one that ends the process raises a signal.
bool ForbidSystemCalls() {
  struct sigaction action = {};
  action.sa_sigaction = OnForbiddenCall;
  action.sa_flags = SA_SIGINFO;
  std::array<sock_filter, 4> program = {
      {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
       BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit_group, 0, 1),
       BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW), BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP)}};
  const sock_fprog filter = {program.size(), program.data()};
  return sigaction(SIGSYS, &action, nullptr) == 0 && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

Quiet RunInChild(const std::function<bool()>& warmUp, const std::function<bool()>& work) {
  if (!warmUp()) return Quiet::Failed;
  if (!ForbidSystemCalls()) return Quiet::Unavailable;
  return work() ? Quiet::Yes : Quiet::Failed;
}

Quiet OutcomeOf(pid_t child) {
  int status = 0;
  if (waitpid(child, &status, 0) != child || !WIFEXITED(status)) return Quiet::Failed;
  return static_cast<Quiet>(WEXITSTATUS(status));
}

}  // namespace

long PageFaults() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-union-access): how the system's header has it.
  return usage.ru_minflt + usage.ru_majflt;
}

QuietRun RunWithoutSystemCalls(const std::function<bool()>& warmUp,
                               const std::function<bool()>& work) {
  void* shared =
      mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) return {Quiet::Unavailable, kNone};
  theSystemCall = new (shared) int{kNone};
  const pid_t child = fork();
  if (child == 0) _exit(static_cast<int>(RunInChild(warmUp, work)));
  const Quiet quiet = child > 0 ? OutcomeOf(child) : Quiet::Unavailable;
  const QuietRun result{quiet, *theSystemCall};
  munmap(shared, sizeof(int));
  return result;
}
