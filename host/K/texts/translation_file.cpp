// Reads and parses translations.
#include "host/K/texts/translation_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <utility>

#include "K_host.h"
#include "host/K/system/streams.h"
#include "host/K/texts/mac_roman.h"
#include "host/K/texts/zstring.h"
#include "host/endless_file.h"
#include "host/utf8_path.h"
#include "platform/vetrix.h"

namespace k {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t";
constexpr std::size_t kLargestFile = std::size_t{4} << 20;

// The reason why a line is malformed.
class Malformed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view Unquoted(std::string_view text) {
  const bool quoted = text.size() > 1 && text.starts_with('"') && text.ends_with('"');
  return quoted ? text.substr(1, text.size() - 2) : text;
}

std::u16string Decoded(std::string_view text) {
  const std::string bytes(text);
  std::u16string decoded = vetrix::utility::UTF8to16(bytes);
  // Converting ill-formed text replaces characters.
  if (vetrix::utility::UTF16to8(decoded) != bytes) throw Malformed("is not UTF-8");
  return decoded;
}

bool IsControl(char16_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

std::string KeyBefore(std::string_view line, std::size_t equals) {
  const std::string_view key = Trimmed(line.substr(0, equals));
  if (!key.starts_with(kKeyPrefix)) throw Malformed("the key does not start with $$$/");
  if (key.find_first_of(kBlanks) != std::string_view::npos)
    throw Malformed("the key contains blanks");
  if (std::ranges::any_of(Decoded(key), IsControl)) {
    throw Malformed("the key contains a control character");
  }
  return std::string(key);
}

std::string TextAfter(std::string_view line, std::size_t equals) {
  const std::u16string text = Decoded(Unquoted(Trimmed(line.substr(equals + 1))));
  if (std::ranges::any_of(text, IsControl))
    throw Malformed("the text contains a control character");
  std::string result = ExpandMarkup(UTF16ToMacRoman(text));
  if (result.size() > K_LongestTranslation) throw Malformed("the text is too long for a report");
  return result;
}

void ParseLine(std::string_view line, TranslatedTexts& texts) {
  Decoded(line);
  const std::string_view content = Trimmed(line);
  if (content.empty() || content.starts_with('#')) return;
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) throw Malformed("there is no '='");
  const auto [entry, added] = texts.emplace(KeyBefore(line, equals), TextAfter(line, equals));
  if (!added) throw Malformed("the key occurs twice: " + entry->first);
}

// Removes the first line from the text and returns it.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// A type, since compilers warn that fclose as a template argument loses its
// attributes.
struct Close {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

[[noreturn]] void ThrowSystemError() {
  throw std::runtime_error(std::strerror(errno));
}

}  // namespace

TranslatedTexts ParseTranslation(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  TranslatedTexts texts;
  for (int number = 1; !text.empty(); ++number) {
    try {
      ParseLine(TakeLine(text), texts);
    } catch (const Malformed& problem) {
      throw std::runtime_error("line " + std::to_string(number) + ": " + problem.what());
    }
  }
  return texts;
}

std::string ReadTranslationFile(const std::string& path) {
  if (IsEndlessFile(PathOfUtf8(path))) throw std::runtime_error("is not a regular file");
  const File file(OpenFile(path));
  if (file == nullptr) ThrowSystemError();
  std::string text;
  std::array<char, 65536> block{};
  while (const std::size_t count = std::fread(block.data(), 1, block.size(), file.get())) {
    text.append(block.data(), count);
    if (text.size() > kLargestFile) throw std::runtime_error("is too large for a translation");
  }
  if (std::ferror(file.get()) != 0) ThrowSystemError();
  return text;
}

}  // namespace k
