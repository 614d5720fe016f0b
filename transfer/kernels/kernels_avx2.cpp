// The kernels for AVX2.
#include "simd/vector_avx2.h"
#include "transfer/kernels/level_kernels.h"
#include "transfer/kernels/vector_rows.h"
#include "transfer/kernels/vector_steps.h"

namespace {

struct Vector : simd::VectorAvx2 {};

}  // namespace

constinit const PXLp_KernelSet PXLp_KERNELS_AVX2 = {
    PXLp_VECTOR_ROWS<PXLp_Convert8to16<Vector>>, PXLp_VECTOR_ROWS<PXLp_Convert8toF<Vector>>,
    PXLp_VECTOR_ROWS<PXLp_Convert16to8<Vector>>, PXLp_VECTOR_ROWS<PXLp_ConvertFto8<Vector>>};
