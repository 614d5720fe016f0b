// Moving pixels between channel widths and between Worlds.
#ifndef TRANSFER_TRANSFER_H
#define TRANSFER_TRANSFER_H

// Builds the two tables that widen 8-bit channels. Birth calls it; until then
// the tables hold zeros. Every call writes the same values.
void PXLp_BuildConversionTables();

// Lets blits go on with the fastest kernels of the processor. Birth calls it,
// after the tables are built: these kernels do not look at them.
void PXLp_SelectKernels();

#endif
