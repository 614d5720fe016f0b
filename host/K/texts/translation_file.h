// Reads and parses translations; K_host.h describes their form.
#ifndef K_TRANSLATION_FILE_H
#define K_TRANSLATION_FILE_H

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace k {

// 8-bit texts, markup expanded, by their keys.
using TranslatedTexts = std::map<std::string, std::string, std::less<>>;

// Throws std::runtime_error whose text is one line that starts "line N: ".
TranslatedTexts ParseTranslation(std::string_view text);

// Returns the content of a file. Throws std::runtime_error whose text is one line.
std::string ReadTranslationFile(const std::string& path);

}  // namespace k

#endif
