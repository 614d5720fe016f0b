// The kernel set of each level.
#include "transfer/kernels/selection.h"

#include "transfer/kernels/kernels_avx2.h"
#include "transfer/kernels/kernels_avx512.h"
#include "transfer/kernels/kernels_sse41.h"
#include "transfer/kernels/plain_rows.h"

namespace {

constexpr PXLp_KernelSet kPlainKernels = {
    {PXLp_ConvertRow8to16, PXLp_ConvertRow8to16},
    {PXLp_ConvertRow8toF, PXLp_ConvertRow8toF},
    {PXLp_ConvertRow16to8, PXLp_ConvertRow16to8},
    {PXLp_ConvertRowFto8, PXLp_ConvertRowFto8},
};

}  // namespace

constinit PXLp_KernelSet PXLp_selectedKernels = kPlainKernels;

const PXLp_KernelSet& PXLp_GetKernels(simd::Level level) {
  switch (level) {
    case simd::Level::Sse41:
      return PXLp_kSse41Kernels;
    case simd::Level::Avx2:
      return PXLp_kAvx2Kernels;
    case simd::Level::Avx512:
      return PXLp_kAvx512Kernels;
    default:
      return kPlainKernels;
  }
}

void PXLp_SelectKernels() {
  PXLp_selectedKernels = PXLp_GetKernels(simd::ProcessorLevel());
}
