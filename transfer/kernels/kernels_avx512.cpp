// The kernels for AVX-512.
#include "simd/vector_avx512.h"
#include "transfer/kernels/level_kernels.h"
#include "transfer/kernels/vector_rows.h"
#include "transfer/kernels/vector_steps.h"

namespace {

struct Vector : simd::VectorAvx512 {};

}  // namespace

constinit const PXLp_KernelSet PXLp_KERNELS_AVX512 = {
    PXLp_VECTOR_ROWS<PXLp_Convert8to16<Vector>>, PXLp_VECTOR_ROWS<PXLp_Convert8toF<Vector>>,
    PXLp_VECTOR_ROWS<PXLp_Convert16to8<Vector>>, PXLp_VECTOR_ROWS<PXLp_ConvertFto8<Vector>>};
