/* Takes the reports from K and shows them as the host likes. Prints one. */
#include <stdio.h>

#include "K_host.h"
#include "PXL.h"

/* Called once for each failure, where it is found. The texts live until it
 * returns. */
static void Show(const K_Report* report, void* context) {
  (void)context;
  printf("module %d, place %d: %s\n", report->module, report->site, report->text);
}

int main(void) {
  K_SetReportSink(Show, NULL);
  PXL_Birth(0);
  PXL_Birth(0); /* one too many: reported, and without effect */
  PXL_Death();
  K_SetReportSink(NULL, NULL); /* back to standard error */
  return 0;
}
