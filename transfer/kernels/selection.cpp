#include "transfer/kernels/selection.h"

#include "simd/processor_level.h"
#include "transfer/kernels/Kernels.h"
#include "transfer/kernels/level_kernels.h"

namespace {

constexpr PXLp_KernelSet PLAIN = {
    {PXLp_Row8to16, PXLp_Row8to16},
    {PXLp_Row8toF, PXLp_Row8toF},
    {PXLp_Row16to8, PXLp_Row16to8},
    {PXLp_RowFto8, PXLp_RowFto8},
};

}  // namespace

constinit PXLp_KernelSet PXLp_kernels = PLAIN;

const PXLp_KernelSet& PXLp_KernelsOf(simd::Level level) {
  switch (level) {
    case simd::Level::Sse41:
      return PXLp_KERNELS_SSE41;
    case simd::Level::Avx2:
      return PXLp_KERNELS_AVX2;
    case simd::Level::Avx512:
      return PXLp_KERNELS_AVX512;
    default:
      return PLAIN;
  }
}

void PXLp_SelectKernels() {
  PXLp_kernels = PXLp_KernelsOf(simd::ProcessorLevel());
}
