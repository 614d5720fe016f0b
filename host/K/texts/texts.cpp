// The calls of hosts on texts and translations.
#include <algorithm>
#include <cstring>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "K_host.h"
#include "host/K/texts/mac_roman.h"
#include "host/K/texts/translation_file.h"
#include "host/K/texts/translations.h"
#include "host/utf8_path.h"

namespace {

bool StartsCharacter(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
}

// Copies as many whole characters of a UTF-8 text as fit, and a zero byte.
void CopyThatFits(const std::string& text, char* target, std::uint64_t size) {
  if (size == 0) return;
  std::size_t length = std::min<std::size_t>(text.size(), size - 1);
  while (length > 0 && length < text.size() && !StartsCharacter(text[length])) --length;
  std::memcpy(target, text.data(), length);
  target[length] = '\0';
}

// Sets the translation that `read` returns. The text of an exception becomes the
// problem.
template <typename Read>
Boolean Replace(Read read, char* problem, std::uint64_t size) {
  try {
    k::Translations::Instance().Replace(read());
    CopyThatFits("", problem, size);
    return 1;
  } catch (const std::exception& failure) {
    CopyThatFits(failure.what(), problem, size);
    return 0;
  }
}

k::TranslatedTexts ReadFile(const std::string& path) {
  return k::ParseTranslation(k::ReadTranslationFile(path));
}

bool IsTagCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
}

// The tag, then shorter ones: de-AT, de. None for a text that is not a tag, since
// it could be a path out of the folder.
std::vector<std::string> TagsToTry(std::string tag) {
  std::vector<std::string> tags;
  if (!std::ranges::all_of(tag, IsTagCharacter)) return tags;
  while (!tag.empty()) {
    tags.push_back(tag);
    const std::size_t hyphen = tag.rfind('-');
    tag.resize(hyphen == std::string::npos ? 0 : hyphen);
  }
  return tags;
}

k::TranslatedTexts ReadLanguage(const std::filesystem::path& folder, const std::string& tag) {
  for (const std::string& name : TagsToTry(tag)) {
    const std::filesystem::path path = folder / (name + ".txt");
    if (std::filesystem::exists(path)) return ReadFile(Utf8OfPath(path));
  }
  return {};
}

}  // namespace

std::uint64_t K_TextToUTF8(const char* text, char* utf8, std::uint64_t size) {
  const std::string decoded = text != nullptr ? k::MacRomanToUTF8(text) : std::string();
  CopyThatFits(decoded, utf8, size);
  return decoded.size();
}

Boolean K_SetTranslationFile(const char* path, char* problem, std::uint64_t size) {
  const auto read = [path] { return path != nullptr ? ReadFile(path) : k::TranslatedTexts(); };
  return Replace(read, problem, size);
}

Boolean K_SetTranslation(const char* text, char* problem, std::uint64_t size) {
  const auto parse = [text] {
    return text != nullptr ? k::ParseTranslation(text) : k::TranslatedTexts();
  };
  return Replace(parse, problem, size);
}

Boolean K_SetLanguage(const char* folder, const char* language, char* problem, std::uint64_t size) {
  const auto read = [folder, language] {
    const bool named = folder != nullptr && language != nullptr;
    return named ? ReadLanguage(PathOfUtf8(folder), language) : k::TranslatedTexts();
  };
  return Replace(read, problem, size);
}
