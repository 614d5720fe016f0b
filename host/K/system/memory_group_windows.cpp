// No memory limits of process groups on Windows: job objects have limits, but do
// not report the memory that their processes use.
#include "host/K/system/memory_group.h"

namespace k {

GroupMemory ReadGroupMemory(const char*) {
  return {};
}

}  // namespace k
