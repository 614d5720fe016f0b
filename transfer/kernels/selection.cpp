#include "transfer/kernels/Kernels.h"

namespace {

constexpr PXLp_KernelSet PLAIN = {
    {PXLp_Row8to16, PXLp_Row8to16},
    {PXLp_Row8toF, PXLp_Row8toF},
    {PXLp_Row16to8, PXLp_Row16to8},
    {PXLp_RowFto8, PXLp_RowFto8},
};

}  // namespace

constinit PXLp_KernelSet PXLp_kernels = PLAIN;

const PXLp_KernelSet& PXLp_KernelsOf(simd::Level /*level*/) {
  return PLAIN;
}

void PXLp_SelectKernels() {
  PXLp_kernels = PXLp_KernelsOf(simd::ProcessorLevel());
}
