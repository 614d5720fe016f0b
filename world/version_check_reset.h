// The state of the check of the imported libraries, for tests alone.
#ifndef WORLD_VERSION_CHECK_RESET_H
#define WORLD_VERSION_CHECK_RESET_H

// Whether the libraries have been checked. The first PXL_CheckVersions of the
// process sets it.
[[nodiscard]] bool& PXLp_AccessLibrariesChecked();

#endif
