// The translation of the exception being handled.
#include "memory/caught_exception.h"

#include <exception>

#include "PXL.h"
#include "platform/K.h"

namespace {

// The report itself needs memory, which may be short.
std::int32_t Report(const std::exception& exception) {
  try {
    return K_TranslateAndReportException(exception);
  } catch (...) {
    return PXL_Err_NO_MEMORY;
  }
}

}  // namespace

std::int32_t PXLp_TranslateCaughtException() {
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
