// The memory limits of the process group.
#ifndef K_MEMORY_GROUP_H
#define K_MEMORY_GROUP_H

#include <cstdint>

namespace k {

// Stands for no limit.
inline constexpr std::uint64_t kNoLimit = ~std::uint64_t{0};

// In bytes, each the smallest among the group and the groups around it.
struct GroupMemory {
  std::uint64_t limit = kNoLimit;  // for all processes of the group together
  std::uint64_t room = kNoLimit;   // the part of a limit that is not in use
};

// Reads the system's files below the folder `root`, which is empty for the root of
// the file system. A file that is missing or unreadable sets no limit. Allocates
// nothing.
GroupMemory ReadGroupMemory(const char* root);

}  // namespace k

#endif
