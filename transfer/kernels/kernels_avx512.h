// The kernels of the level AVX-512.
#ifndef TRANSFER_KERNELS_KERNELS_AVX512_H
#define TRANSFER_KERNELS_KERNELS_AVX512_H

#include "transfer/kernels/kernel_set.h"

extern const PXLp_KernelSet PXLp_kAvx512Kernels;

#endif
