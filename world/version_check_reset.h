// The reset of the check of the imported libraries, for tests alone.
#ifndef WORLD_VERSION_CHECK_RESET_H
#define WORLD_VERSION_CHECK_RESET_H

// Makes the next PXL_CheckVersions check the libraries, as the first one of the
// process does.
void PXLp_ForgetLibraryCheck();

#endif
