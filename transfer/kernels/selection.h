// The choice of kernels by the processor's level.
#ifndef TRANSFER_KERNELS_SELECTION_H
#define TRANSFER_KERNELS_SELECTION_H

#include "simd/processor_level.h"
#include "transfer/kernels/kernel_set.h"

// Returns the kernels of a level that the processor has; those of the baseline
// are the plain loops.
const PXLp_KernelSet& PXLp_GetKernels(simd::Level level);

// The kernels that blits use: the plain loops until Birth has built the tables,
// since a blit before Birth reads the empty tables; then those of the
// processor's level.
extern PXLp_KernelSet PXLp_selectedKernels;

// Selects the fastest kernels of the processor. Birth calls it, after it has
// built the tables: the vector kernels do not read them.
void PXLp_SelectKernels();

#endif
