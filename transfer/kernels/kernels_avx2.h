// The kernels of the level AVX2.
#ifndef TRANSFER_KERNELS_KERNELS_AVX2_H
#define TRANSFER_KERNELS_KERNELS_AVX2_H

#include "transfer/kernels/kernel_set.h"

extern const PXLp_KernelSet PXLp_kAvx2Kernels;

#endif
