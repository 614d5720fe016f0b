// Lists the texts of the module's catalogue.
#include "tools/pxl/commands/messages_command.h"

#include <iomanip>
#include <iostream>

#include "K_host.h"
#include "PXL.h"
#include "tools/pxl/system/console.h"
#include "tools/pxl/system/exit_codes.h"
#include "tools/pxl/system/json_output.h"

namespace pxl {
namespace {

// The catalogue's last entry holds no text.
std::int32_t CountMessages() {
  return static_cast<std::int32_t>(PXL_G_zref->count) - 1;
}

std::string Message(std::int32_t index) {
  return K_TextToUTF8(K_ZLookupLStrCache(PXL_G_zref, index, 0, 0));
}

void PrintList() {
  Json list = Json::array();
  for (std::int32_t i = 0; i < CountMessages(); ++i) {
    list.push_back({{"index", i}, {"text", Message(i)}});
  }
  PrintJson(std::cout, list);
}

void PrintLines() {
  for (std::int32_t i = 0; i < CountMessages(); ++i) {
    std::cout << std::setw(2) << i << "  " << OneLine(Message(i)) << "\n";
  }
}

}  // namespace

int Messages(const MessagesOptions& options) {
  options.json ? PrintList() : PrintLines();
  return kExitSuccess;
}

}  // namespace pxl
