// Puts a translation file in force in K.
#include "tools/pxl/module/language.h"

#include <array>

#include "K_host.h"
#include "tools/pxl/system/failure.h"

namespace pxl {

void UseLanguage(const std::string& file) {
  if (file.empty()) throw UsageError("--language", "is no file name");
  std::array<char, 256> problem{};
  const bool good = K_SetTranslationFile(file.c_str(), problem.data(), problem.size()) != 0;
  if (!good) throw Failure(file, problem.data());
}

}  // namespace pxl
