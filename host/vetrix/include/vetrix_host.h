/// \file
/// What a host may ask of the stand-in vetrix. C++20.
///
/// The debug settings come from one small file of `key = value` lines in TOML,
/// named by the environment variable VETRIX_SETTINGS and read once, at the first
/// look at any setting. Booleans read as "true" or "false", integers in decimal,
/// strings as they are; other values are left out with a line on standard error.
/// The file is UTF-8, with no private characters from U+F0000 to U+FFFFF.
/// No variable: no settings. A file that is missing, no regular file, larger than
/// 1 MiB or cannot be parsed is told in one line on standard error and counts as
/// empty.
///
/// Mapped files lie, without a name, in the folder that the environment variable
/// VETRIX_MAPPED_DIR names, else in TMPDIR, else in /var/tmp; the variables are
/// looked at for each file, and a folder that will not do is not replaced by
/// another. The names given to Init are labels that only messages show.
///
/// Init reserves the whole of a file's space, so that a volume too full, like one
/// that is read-only or not there, a limit on the size of files, no descriptor
/// left or a size of 0, is a std::system_error there, whose text and code say
/// which; it leaves nothing behind, and no signal comes from any of them, then or
/// when pages are written. Whether space that is reserved stays so depends on
/// the file system: ext4, XFS and tmpfs keep it; those that copy on write or
/// compress (btrfs, ZFS), and network file systems, may still run full when
/// pages are written, which the system answers with SIGBUS. Put the folder on
/// another volume then. File systems that cannot reserve at all get every block
/// written once, which takes longer.
///
/// All calls are safe on any thread.
#ifndef VETRIX_HOST_H
#define VETRIX_HOST_H

#include <string>
#include <vector>

#include "platform/vetrix.h"

/// What a host may ask of the stand-in vetrix.
namespace vetrix::host {

/// One debug setting, as the database holds it.
struct Setting {
  std::string key;   ///< its name
  std::string text;  ///< its value
};

/// Tells which settings file is in force.
/// \return the one last loaded, whether it could be read or not; empty when
///     there is none.
VETRIX_API std::string SettingsPath();
/// Tells all settings in force.
/// \return sorted by key.
VETRIX_API std::vector<Setting> Settings();

/// Tells what was wrong with the settings in force when they were read.
/// \return the lines that were on standard error; none when all was well.
VETRIX_API std::vector<std::string> SettingsComplaints();

/// Replaces all settings by those of another file. For a host that has its own
/// way of finding the file, and for tests: PXL reads its settings once.
/// \param path the file, in UTF-8.
/// \return false, with no settings, when it cannot be read.
VETRIX_API bool LoadSettingsFile(const std::string& path);
/// Replaces all settings by those of a text in the same form.
/// \param text lines in TOML.
/// \return false, with no settings, when it cannot be read.
VETRIX_API bool LoadSettingsText(const std::string& text);

/// Where mapped files are made.
struct MappedFolder {
  std::string path;      ///< the folder, in UTF-8
  std::string variable;  ///< the environment variable that names it; or empty
};

/// Tells where the next mapped file will be made.
/// \return the folder, whether it will do or not. Throws std::system_error where
///     no variable names one and the system knows none.
VETRIX_API MappedFolder FindMappedFolder();

}  // namespace vetrix::host

#endif
