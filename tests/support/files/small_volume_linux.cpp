// Mounts a volume in a name space of its own.
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "tests/support/files/small_volume.h"

namespace {

bool Write(const char* path, const std::string& text) {
  std::ofstream file(path);
  file << text << std::flush;
  return file.good();
}

// The way for those who are not root. Files can only be made by users and groups
// that the name space knows.
bool BecomeRootOfOwnNamespace() {
  const std::string user = std::to_string(geteuid());
  const std::string group = std::to_string(getegid());
  return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && Write("/proc/self/setgroups", "deny") &&
         Write("/proc/self/uid_map", "0 " + user + " 1") &&
         Write("/proc/self/gid_map", "0 " + group + " 1");
}

bool LeaveTheMountsOfOthers() {
  const bool own = unshare(CLONE_NEWNS) == 0 || BecomeRootOfOwnNamespace();
  return own && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

}  // namespace

bool MountVolume(const std::string& folder, Volume volume, std::uint64_t bytes) {
  const unsigned long flags =
      volume == Volume::ReadOnly ? static_cast<unsigned long>(MS_RDONLY) : 0;
  const std::string options = "size=" + std::to_string(bytes);
  return LeaveTheMountsOfOthers() &&
         mount("none", folder.c_str(), "tmpfs", flags, options.c_str()) == 0;
}

bool CanMountVolumes() {
  const pid_t child = fork();
  if (child == 0) _exit(MountVolume("/var/tmp", Volume::Writable, 4096) ? 0 : 1);
  int status = -1;
  return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}
