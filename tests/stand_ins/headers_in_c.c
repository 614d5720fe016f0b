/* Uses each C header of the stand-in host from C11. Compiled, not run. */
#include "K_host.h"
#include "QDE_host.h"
#include "Q_host.h"
#include "TRC_host.h"
#include "TXT_host.h"

int32_t SumOfVersions(void);

int32_t SumOfVersions(void) {
  TRC_SetLevel(TRC_Level_SILENT);
  return K_HeaderVersion() + Q_HeaderVersion() + TXT_HeaderVersion() + QDE_Error();
}
