// The kernels of the level SSE4.1.
#ifndef TRANSFER_KERNELS_KERNELS_SSE41_H
#define TRANSFER_KERNELS_KERNELS_SSE41_H

#include "transfer/kernels/kernel_set.h"

extern const PXLp_KernelSet PXLp_kSse41Kernels;

#endif
