// Moving pixels between channel widths and between Worlds.
#ifndef TRANSFER_TRANSFER_H
#define TRANSFER_TRANSFER_H

// Builds the two tables that widen 8-bit channels. Birth calls it; until then
// the tables hold zeros. Every call writes the same values.
void PXLp_BuildConversionTables();

#endif
