// The kernels that blits use.
#ifndef TRANSFER_KERNELS_SELECTION_H
#define TRANSFER_KERNELS_SELECTION_H

// Lets blits go on with the fastest kernels of the processor. Birth calls it,
// after the tables are built: these kernels do not look at them.
void PXLp_SelectKernels();

#endif
