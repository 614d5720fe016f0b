#include "memory/caught_code.h"

#include <exception>

#include "PXL.h"
#include "platform/K.h"

namespace {

// K needs memory for its report, which may be what there is none of.
std::int32_t Report(const std::exception& exception) {
  try {
    return K_TranslateAndReportException(exception);
  } catch (...) {
    return PXL_Err_NO_MEMORY;
  }
}

}  // namespace

std::int32_t PXLp_CaughtCode() {
  try {
    throw;
  } catch (const std::exception& exception) {
    return Report(exception);
  } catch (long code) {  // 32 bits wide on some systems, 64 on others
    return static_cast<std::int32_t>(code);
  } catch (...) {
    return PXL_Err_NO_MEMORY;
  }
}
