// The form of translations, as K_host.h describes it.
#ifndef K_TRANSLATION_FILE_H
#define K_TRANSLATION_FILE_H

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace k {

// 8-bit texts, markup expanded, by their keys.
using TranslatedTexts = std::map<std::string, std::string, std::less<>>;

// Throws std::runtime_error with a reason in one line, which starts "line N: ".
TranslatedTexts ParseTranslation(std::string_view text);

// The content of a file. Throws std::runtime_error with a reason in one line.
std::string ReadTranslationFile(const std::string& path);

}  // namespace k

#endif
