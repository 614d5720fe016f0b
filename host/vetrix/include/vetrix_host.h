// What a host may ask of the stand-in vetrix. C++20.
//
// The debug settings come from one small file of `key = value` lines in TOML,
// named by the environment variable VETRIX_SETTINGS and read once, at the first
// look at any setting. Booleans read as "true" or "false", integers in decimal,
// strings as they are; other values are left out with a line on standard error.
// The file is UTF-8, with no private characters from U+F0000 to U+FFFFF.
// No variable: no settings. A file that is missing or cannot be parsed is told
// in one line on standard error and counts as empty.
//
// Mapped files lie, without a name, in the folder that the environment variable
// VETRIX_MAPPED_DIR names, else in TMPDIR, else in /var/tmp; the variables are
// looked at for each file, and a folder that will not do is not replaced by
// another. The names given to Init are labels that only messages show.
//
// Init reserves the whole of a file's space, so that a volume too full, like one
// that is read-only or not there, a limit on the size of files, no descriptor
// left or a size of 0, is a std::system_error there, whose text and code say
// which; it leaves nothing behind, and no signal comes from any of them, then or
// when pages are written. Whether space that is reserved stays so depends on
// the file system: ext4, XFS and tmpfs keep it; those that copy on write or
// compress (btrfs, ZFS), and network file systems, may still run full when
// pages are written, which the system answers with SIGBUS. Put the folder on
// another volume then. File systems that cannot reserve at all get every block
// written once, which takes longer.
//
// All calls are safe on any thread.
#ifndef VETRIX_HOST_H
#define VETRIX_HOST_H

#include <string>
#include <vector>

#include "platform/vetrix.h"

namespace vetrix::host {

// One debug setting, as the database holds it.
struct Setting {
  std::string key;
  std::string text;
};

// The settings file in force: the one last loaded, whether it could be read or
// not; empty when there is none.
VETRIX_API std::string SettingsPath();
// All settings in force, sorted by key.
VETRIX_API std::vector<Setting> Settings();

// Replace all settings by those of another file, or of a text in the same
// form. False, and no settings, when it cannot be read. For a host that has its
// own way of finding the file, and for tests: PXL reads its settings once.
VETRIX_API bool LoadSettingsFile(const std::string& path);
VETRIX_API bool LoadSettingsText(const std::string& text);

}  // namespace vetrix::host

#endif
