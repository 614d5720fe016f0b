// Whether the imported libraries were checked already.
#ifndef WORLD_VERSION_CHECK_H
#define WORLD_VERSION_CHECK_H

// Raised by the first PXL_CheckVersions of the process, never lowered.
extern bool PXLp_librariesChecked;

#endif
