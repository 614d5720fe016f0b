// The limits of memory that the system sets for the group of processes that
// this one belongs to.
#ifndef K_MEMORY_GROUP_H
#define K_MEMORY_GROUP_H

#include <cstdint>

namespace k {

// A number of bytes that nothing reaches.
inline constexpr std::uint64_t kNoLimit = ~std::uint64_t{0};

// Of the group and all groups around it, the tightest of each.
struct GroupMemory {
  std::uint64_t limit = kNoLimit;  // what the processes of the group may use together
  std::uint64_t room = kNoLimit;   // what they could use beside what they do now
};

// Reads it from the system's files below the folder `root`, the empty text for
// the real ones. What is missing or cannot be read limits nothing. Needs no
// memory.
GroupMemory ReadGroupMemory(const char* root);

}  // namespace k

#endif
