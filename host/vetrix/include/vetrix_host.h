/// \file
/// Settings and readings of the stand-in vetrix for hosts. C++20.
///
/// The debug settings come from one TOML file of `key = value` lines. The
/// environment variable VETRIX_SETTINGS names the file, which is read once, at the
/// first access to any setting; without the variable there are no settings.
/// Booleans read as "true" or "false", integers in decimal, strings unchanged;
/// each other value is ignored with a line on standard error. The file is UTF-8,
/// without private characters from U+F0000 to U+FFFFF. A file that is missing, is
/// not a regular file, is larger than 1 MiB or cannot be parsed counts as empty,
/// with one line on standard error.
///
/// Mapped files have no name. They are made in the folder that the environment
/// variable VETRIX_MAPPED_DIR names, else in that of TMPDIR, else in /var/tmp. The
/// variables are read for each file; if a file cannot be made in the folder, no
/// other folder is tried. The names passed to Init are labels that appear only in
/// messages.
///
/// Init reserves the complete space of a file. It throws std::system_error, whose
/// code and text state the reason, when the volume is full, read-only or missing,
/// when the file exceeds the limit on file sizes, when no descriptor is left, or
/// when the size is 0; it then leaves nothing behind. None of these causes raises
/// a signal, then or when pages are written. Whether reserved space stays reserved
/// depends on the file system. ext4, XFS and tmpfs keep it. File systems that copy
/// on write or compress (btrfs, ZFS), and network file systems, may still become
/// full when pages are written; the system then raises SIGBUS, and the folder
/// should be on another volume. On file systems that cannot reserve space, each
/// block is written once, which takes longer.
///
/// All calls are safe on any thread.
#ifndef VETRIX_HOST_H
#define VETRIX_HOST_H

#include <string>
#include <vector>

#include "platform/vetrix.h"

/// Settings and readings of the stand-in vetrix for hosts.
namespace vetrix::host {

/// One debug setting.
struct Setting {
  std::string key;   ///< the key
  std::string text;  ///< the value as text
};

/// Returns the settings file in force.
/// \return the path of the file loaded last, readable or not; empty when there is
///     none.
VETRIX_API std::string SettingsPath();
/// Returns all settings in force.
/// \return the settings, sorted by key.
VETRIX_API std::vector<Setting> Settings();

/// Returns the problems that were found when the settings in force were read.
/// \return the lines that were printed on standard error.
VETRIX_API std::vector<std::string> SettingsComplaints();

/// Replaces all settings by those of another file. For tests, and for hosts that
/// find the file in another way: PXL reads its settings only once.
/// \param path the file, in UTF-8.
/// \return false when it cannot be used: then there are no settings.
VETRIX_API bool LoadSettingsFile(const std::string& path);
/// Replaces all settings by those of a text.
/// \param text the content of a settings file.
/// \return false when it cannot be used: then there are no settings.
VETRIX_API bool LoadSettingsText(const std::string& text);

/// The folder in which mapped files are made.
struct MappedFolder {
  std::string path;      ///< the folder, in UTF-8
  std::string variable;  ///< the environment variable that names it; empty when none does
};

/// Returns the folder in which the next mapped file will be made. Throws
/// std::system_error when no variable names one and the system has none.
/// \return the folder, usable or not.
VETRIX_API MappedFolder FindMappedFolder();

}  // namespace vetrix::host

#endif
