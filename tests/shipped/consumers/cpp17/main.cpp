// Takes the module's reports from the stand-in of K. Prints "good".
#include <cstdio>
#include <string>
#include <vector>

#include "K_host.h"
#include "PXL.h"

namespace {

void Keep(const K_Report* report, void* context) {
  static_cast<std::vector<std::string>*>(context)->emplace_back(report->text);
}

// A second birth is reported, and does nothing else.
bool ReportsARebirth() {
  std::vector<std::string> texts;
  K_SetReportSink(Keep, &texts);
  const bool born = PXL_Birth(0) == 0 && PXL_Birth(0) == 0;
  K_SetReportSink(nullptr, nullptr);
  return born && PXL_Death() == 0 && texts.size() == 1 &&
         texts[0].find("rebirth.") != std::string::npos;
}

bool Converts() {
  const PXL_Pixel16 full{{0, 16384, 32768, 65535}};
  PXL_Pixel8 narrow{};
  PXL_Pixel16to8(&full, &narrow);
  return narrow.channel[0] == 0 && narrow.channel[1] == 128 && narrow.channel[2] == 255 &&
         narrow.channel[3] == 254;
}

}  // namespace

int main() {
  if (!ReportsARebirth()) return 1;
  if (!Converts()) return 2;
  std::puts("good");
  return 0;
}
