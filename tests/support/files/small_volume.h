// Small volumes that only the calling process sees, to test one that is full or
// read-only.
#ifndef TESTS_SUPPORT_FILES_SMALL_VOLUME_H
#define TESTS_SUPPORT_FILES_SMALL_VOLUME_H

#include <cstdint>
#include <string>

enum class Volume { Writable, ReadOnly };

// Mounts an empty volume of so many bytes, in memory, over a folder. For a
// process of one thread that will not need its rights again, such as the child
// of a death test: it is moved to a name space of its own, with which the
// volume goes. False where the system does not allow that.
bool MountVolume(const std::string& folder, Volume volume, std::uint64_t bytes);

// Whether a child can do so.
bool CanMountVolumes();

#endif
