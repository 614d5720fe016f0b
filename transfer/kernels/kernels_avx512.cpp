// The kernels for AVX-512.
#include "transfer/kernels/kernels_avx512.h"

#include "simd/vector_avx512.h"
#include "transfer/kernels/vector_rows.h"
#include "transfer/kernels/vector_steps.h"

namespace {

struct Vector : simd::VectorAvx512 {};

}  // namespace

constinit const PXLp_KernelSet PXLp_kAvx512Kernels = {
    PXLp_kVectorKernels<PXLp_Convert8to16<Vector>>, PXLp_kVectorKernels<PXLp_Convert8toF<Vector>>,
    PXLp_kVectorKernels<PXLp_Convert16to8<Vector>>, PXLp_kVectorKernels<PXLp_ConvertFto8<Vector>>};
