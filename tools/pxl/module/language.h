// The language of the module's texts.
#ifndef TOOLS_PXL_MODULE_LANGUAGE_H
#define TOOLS_PXL_MODULE_LANGUAGE_H

#include <string>

namespace pxl {

// Puts a translation file in force. Throws Failure under the file's name when
// it cannot be read or is malformed, UsageError for an empty name.
void UseLanguage(const std::string& file);

}  // namespace pxl

#endif
