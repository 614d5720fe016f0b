#include <iomanip>
#include <iostream>
#include <nlohmann/json.hpp>

#include "K_host.h"
#include "PXL.h"
#include "tools/pxl/commands/commands.h"
#include "tools/pxl/system/console.h"

namespace pxl {
namespace {

// The catalogue's last entry holds no text.
std::int32_t CountMessages() {
  return static_cast<std::int32_t>(PXL_G_zref->count) - 1;
}

std::string Message(std::int32_t index) {
  return K_TextToUTF8(K_ZLookupLStrCache(PXL_G_zref, index, 0, 0));
}

void PrintJson() {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (std::int32_t i = 0; i < CountMessages(); ++i) {
    list.push_back({{"index", i}, {"text", Message(i)}});
  }
  std::cout << list.dump(2) << "\n";
}

void PrintLines() {
  for (std::int32_t i = 0; i < CountMessages(); ++i) {
    std::cout << std::setw(2) << i << "  " << OneLine(Message(i)) << "\n";
  }
}

}  // namespace

int Messages(const MessagesOptions& options) {
  options.json ? PrintJson() : PrintLines();
  return kExitSuccess;
}

}  // namespace pxl
